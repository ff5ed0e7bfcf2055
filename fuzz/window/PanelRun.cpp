// A panel that lives through anything: a random scheme is loaded and scanned, every member of every object that can be
// reached is called by name with random arguments, pressed, dragged, edited and undone. What it then saves can be read,
// and loading that and saving again changes nothing.

#include "Dice.h"
#include "Grammar.h"

#include "fuzz/support/Require.h"
#include "support/FakeSite.h"
#include "support/PointerScript.h"
#include "surface/forms/RecordingForms.h"
#include "trellis/SchemeFile.h"
#include "values/Array.h"
#include "window/ActionEngine.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"
#include "window/PanelEditor.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

using namespace zan;
using binding::Access;
using binding::Object;
using fuzz::Dice;
using fuzz::Grammar;
using fuzz::require;
using trellis::SchemeFile;
using values::Ref;
using values::Variant;
using window::BenchWindow;
using window::PanelEditor;

namespace {

/// A logger whose scheme is a file.
class SiteLogger final : public fake::FakeLogger
{
public:
    explicit SiteLogger(const Ref<SchemeFile>& file)
        : stored(file)
    {
        link->onConnect = [this] { link->enter(site::LinkState::Connected); };
        link->onDisconnect = [this] { link->enter(site::LinkState::NotConnected); };
    }
    Ref<site::Scheme> Scheme() override { return stored; }
    Ref<SchemeFile> stored;
};

/// The program around the panels: made once, because it is dear, and never ended.
struct Program
{
    Program()
        : folder(fastFolder() + QStringLiteral("/zan-fuzz-XXXXXX"))
        , application(count, arguments)
        , grammar({file("picture.bmp"), file("map.xml"), folder.path(), file("missing.bmp")})
    {
        QImage picture(20, 10, QImage::Format_RGB32);
        picture.fill(Qt::darkGreen);
        QFile map(file("map.xml"));
        require(
            picture.save(file("picture.bmp")) && map.open(QIODevice::WriteOnly) &&
                map.write("<SITEMAP><SITE><NAME>One</NAME><SCHEME>1</SCHEME><SITE><NAME>Two</NAME></SITE></SITE>"
                          "</SITEMAP>") > 0,
            "the fuzzer has its files");
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        std::atexit([] { get().folder.remove(); });
    }
    static Program& get()
    {
        static Program* const program = new Program;
        return *program;
    }
    /// In memory where the system has that: a save waits for its disk.
    static QString fastFolder()
    {
        const QFileInfo memory(QStringLiteral("/dev/shm"));
        return memory.isWritable() ? memory.filePath() : QDir::tempPath();
    }
    QString file(const char* inFolder) const { return folder.filePath(QString::fromLatin1(inFolder)); }
    QString scheme() const { return file("panel.scheme"); }

    int count = 1;
    char name[5] = "fuzz";
    char* arguments[2] = {name, nullptr};
    QTemporaryDir folder;
    QApplication application;
    Grammar grammar;
};

/// One panel with its site, and whatever a caller can get hold of by name.
class Bench
{
public:
    Bench(Dice& dice, const Ref<SchemeFile>& scheme)
        : m_dice(dice)
        , m_grammar(Program::get().grammar)
        , m_logger(values::make<SiteLogger>(scheme))
    {
        panel.setForms(&m_forms);
        panel.InitProperties();
        panel.setLogger(m_logger);
        panel.resize(320, 240);
        m_roots = {panel.object(), m_logger, scheme};
    }

    void load(const QString& key)
    {
        attempt([&] { panel.LoadWindow(key); });
    }

    /// One thing that a user, a logger, a script or a host does.
    void step()
    {
        switch (m_dice.below(13)) {
        case 0:
            return newData();
        case 1:
            return m_logger->link->enter(site::LinkState(m_dice.below(5)));
        case 2:
        case 3:
        case 4:
        case 5:
            return callMember();
        case 6:
            return usePointer();
        case 7:
            return attempt([&] { tests::PointerScript(panel).key(m_dice.pick(Keys)).play(); });
        case 8:
            return panel.edit([this](PanelEditor& editor) { edit(editor); });
        case 9:
            return chooseFromMenu();
        case 10:
            return answer();
        case 11:
            return attempt([&] {
                if (const auto control = anyControl())
                    panel.actions().RunAction(control);
            });
        default:
            return attempt([&] { callPanel(); });
        }
    }

    BenchWindow panel;

private:
    static constexpr Qt::Key Keys[] = {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space, Qt::Key_Tab,
                                       Qt::Key_Left,   Qt::Key_A,      Qt::Key_Delete};

    /// Run-time errors are an answer; whatever else is thrown is a finding.
    template <class Call>
    void attempt(Call&& call)
    {
        try {
            call();
        } catch (const values::RuntimeError&) {
        }
    }

    void newData()
    {
        for (const QString& key : {QStringLiteral("X"), QStringLiteral("Y")}) {
            attempt([&] {
                const auto window = m_logger->stored->Windows()->Item(Variant(QStringLiteral("A")));
                const auto channel = window ? window->Item(Variant(key)) : nullptr;
                if (channel && m_dice.oneIn(2))
                    channel->setValue(plainValue());
            });
        }
        if (m_dice.oneIn(4))
            Q_EMIT m_logger->NewENTData();
        Q_EMIT m_logger->NewBenchData();
    }

    Variant plainValue()
    {
        switch (m_dice.below(12)) {
        case 0:
            return {};
        case 1:
            return Variant::null();
        case 2:
            return Variant(m_dice.oneIn(2));
        case 3:
            return Variant(std::int16_t(m_dice.byte() * 256 + m_dice.byte()));
        case 4:
            return Variant(std::int32_t(m_dice.byte()) - 3);
        case 5:
            return Variant(m_dice.pick(Numbers));
        case 6:
            return Variant(float(m_dice.byte()) * 15);
        case 7:
            return Variant(values::Date{double(m_dice.byte()) * 200.5});
        case 8:
            return Variant(values::Currency{std::int64_t(m_dice.byte()) << m_dice.below(56)});
        case 9:
            return m_dice.oneIn(2) ? Variant::missing() : Variant::nothing();
        case 10:
            return Variant(values::Array::fromValues({Variant(1), Variant(QStringLiteral("A"))}));
        default:
            return Variant(m_grammar.text(m_dice));
        }
    }
    static constexpr double Numbers[] = {0.5, -0.0, 1e300, -1e300, 2147483648.0, 32767.5, 1e-320, 100, 0.1};

    Variant value() { return m_dice.oneIn(4) ? Variant(anyObject()) : plainValue(); }

    Ref<wrappers::iBenchControl> anyControl()
    {
        const auto list = panel.Controls();
        if (!list || list->Count() == 0)
            return {};
        return list->Control(Variant(std::int32_t(1 + m_dice.below(std::size_t(list->Count())))));
    }

    Ref<Object> anyObject()
    {
        switch (m_dice.below(6)) {
        case 0:
            return m_dice.pick(m_roots);
        case 1:
            return panel.Controls();
        case 2:
        case 3:
            if (const auto control = anyControl())
                return m_dice.oneIn(2) ? Ref<Object>(control) : control->Control();
            return {};
        default:
            return m_found.empty() ? m_roots.front() : m_dice.pick(m_found);
        }
    }

    void keep(const Variant& result)
    {
        const Ref<Object> object(result.isObject() ? dynamic_cast<Object*>(result.object()) : nullptr);
        if (!object)
            return;
        if (m_found.size() < 32)
            m_found.push_back(object);
        else
            m_found[m_dice.below(m_found.size())] = object;
    }

    void callMember()
    {
        const Ref<Object> object = anyObject();
        if (!object)
            return;
        const auto& members = object->members().members();
        if (members.empty())
            return;
        const binding::Member& member = m_dice.pick(members);
        const std::size_t choice = m_dice.below(4);
        if (member.put && choice == 3) {
            static_cast<void>(object->tryPutText(member.name, m_grammar.text(m_dice)));
            return;
        }
        const Access access = !member.put || choice == 0                                 ? Access::Get
                              : member.type == binding::ValueType::Object && choice == 1 ? Access::PutReference
                                                                                         : Access::Put;
        std::vector<Variant> arguments;
        for (std::size_t left = m_dice.below(std::size_t(member.allowedArguments) + 1); left > 0; --left)
            arguments.push_back(value());
        if (access != Access::Get)
            arguments.push_back(member.type == binding::ValueType::Object ? Variant(anyObject()) : value());
        attempt([&] { keep(object->invoke(member.name, access, arguments)); });
        if (m_dice.oneIn(8))
            attempt([&] { walk(*object); });
    }

    void walk(Object& object)
    {
        const auto items = object.enumerate();
        for (int left = 5; items && left > 0; --left) {
            const auto item = items->next();
            if (!item)
                return;
            keep(*item);
        }
    }

    QPoint anyPlace()
    {
        // On a control, on one of its edges (where its handles are), or anywhere.
        if (const auto control = anyControl(); control && !m_dice.oneIn(3)) {
            const Ref<surface::LiveControl> live(dynamic_cast<surface::LiveControl*>(control->Control().get()));
            if (live) {
                const QRect bounds = live->bounds() & panel.rect();
                if (!bounds.isEmpty())
                    return m_dice.oneIn(3) ? bounds.bottomRight() : bounds.center();
            }
        }
        return {int(m_dice.byte()), int(m_dice.below(240))};
    }

    void usePointer()
    {
        const Qt::MouseButton button = m_dice.oneIn(4) ? Qt::RightButton : Qt::LeftButton;
        tests::PointerScript script(panel);
        const QPoint from = anyPlace();
        script.move(from).press(from, button);
        for (std::size_t left = m_dice.below(3); left > 0; --left)
            script.move(anyPlace());
        if (m_dice.oneIn(6))
            script.key(Qt::Key_Escape);
        if (m_dice.oneIn(6))
            script.then([this] { attempt([this] { callPanel(); }); });
        if (m_dice.oneIn(8))
            script.then([this] { callMember(); });
        script.release(anyPlace(), button);
        if (m_dice.oneIn(6))
            script.press(from, button).release(from, button);
        script.play();
    }

    void edit(PanelEditor& editor)
    {
        switch (m_dice.below(9)) {
        case 0:
            return editor.newControl(m_grammar.type(m_dice));
        case 1:
            return editor.paste();
        case 2:
            return editor.copy();
        case 3:
            return editor.remove();
        case 4:
            return editor.sendToBack();
        case 5:
            return editor.toggleLockPositions();
        case 6:
            return editor.setCurrentControl(anyControl());
        case 7:
            return QGuiApplication::clipboard()->setText(m_grammar.control(m_dice));
        default:
            if (const auto control = anyControl()) {
                if (const Ref<surface::LiveControl> live{
                        dynamic_cast<surface::LiveControl*>(control->Control().get())})
                    editor.PlaceControl(*live, float(m_dice.byte()) * 20, float(m_dice.byte()) * 20);
            }
        }
    }

    void callPanel()
    {
        switch (m_dice.below(10)) {
        case 0:
            return panel.setLockPositions(false);
        case 1:
            return panel.LoadWindow(QString::fromLatin1(m_dice.pick(Grammar::WindowKeys)));
        case 2:
            return panel.SaveWindow();
        case 3:
            return panel.Undo();
        case 4:
            return panel.Redo();
        case 5:
            return panel.Clear();
        case 6:
            panel.UpdateDocument();
            return;
        case 7: {
            binding::PropertyBag bag;
            panel.WriteProperties(bag);
            return panel.ReadProperties(bag);
        }
        case 8:
            return panel.resize(int(m_dice.byte()) * 3, int(m_dice.byte()) * 3);
        default:
            return panel.setLogger(m_logger);
        }
    }

    void chooseFromMenu()
    {
        std::shared_ptr<surface::PopupMenu> menu = m_forms.menu();
        m_forms.closeMenu();
        while (menu && !menu->items.empty()) {
            const surface::MenuItem item = m_dice.pick(menu->items);
            if (item.choose)
                item.choose();
            menu = item.menu;
        }
    }

    void answer()
    {
        static constexpr const char* Answers[] = {"OK", "Cancel", "Yes", "No", "1.5", "-1", "x"};
        m_forms.answer(QString::fromLatin1(m_dice.pick(Answers)));
    }

    Dice& m_dice;
    const Grammar& m_grammar;
    surface::RecordingForms m_forms;
    Ref<SiteLogger> m_logger;
    std::vector<Ref<Object>> m_roots;
    std::vector<Ref<Object>> m_found;
};

QByteArray textOf(const SchemeFile& scheme)
{
    return document::toXml(scheme.document());
}

Ref<SchemeFile> reopened()
{
    const trellis::OpenResult again = SchemeFile::open(Program::get().scheme());
    if (!again)
        std::fprintf(stderr, "%s\n", qPrintable(again.error.text()));
    require(bool(again), "what was saved can be read");
    return again.scheme;
}

/// Loads every window of the file and saves it as it comes; the text of the file then.
QByteArray savedAgain(const QString& key)
{
    Dice none(nullptr, 0);
    const Ref<SchemeFile> scheme = reopened();
    Bench bench(none, scheme);
    bench.load(key);
    bench.panel.UpdateDocument();
    scheme->saveOver();
    return textOf(*scheme);
}

/// Whether doing it again changes nothing. Of several children of one name the first alone counts, and a write of nothing
/// takes that one away: a text that repeats them may grow shorter a few times before.
template <class Again>
bool settles(Again again)
{
    QByteArray last = again();
    for (;;) {
        const QByteArray next = again();
        if (next == last)
            return true;
        if (next.size() >= last.size())
            return false;
        last = next;
    }
}

void run(Dice& dice)
{
    QFile file(Program::get().scheme());
    const QByteArray text = Program::get().grammar.scheme(dice).toUtf8();
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size(),
            "the scheme is written");
    file.close();
    const trellis::OpenResult opened = SchemeFile::open(file.fileName());
    if (!opened)
        return;
    QString key;
    {
        Bench bench(dice, opened.scheme);
        bench.panel.show();
        bench.load(QStringLiteral("A"));
        for (int left = 40; left > 0 && !dice.isUsedUp(); --left) {
            bench.step();
            if (dice.oneIn(4))
                QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
        if (const auto window = bench.panel.CurrentWindow())
            key = window->Key();
        const auto updated = [&] {
            bench.panel.UpdateDocument();
            return textOf(*opened.scheme);
        };
        require(settles(updated), "a second update of the document changes nothing");
        opened.scheme->saveOver();
    }
    require(settles([&] { return savedAgain(key); }), "a second save is like the first");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Program::get();
    QGuiApplication::clipboard()->clear();
    Dice dice(data, size);
    run(dice);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    return 0;
}
