// A panel that runs out of memory at any place of its work: its file stays whole, it ends by no fault of its own, and
// with memory again everything works as before.
#include "FailingNew.h"
#include "LastPlace.h"

#include "document/Elements.h"
#include "support/FakeSite.h"
#include "surface/forms/RecordingForms.h"
#include "trellis/SchemeFile.h"
#include "window/ActionEngine.h"
#include "window/BenchWindow.h"
#include "window/PanelEditor.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace zan::window {

namespace {

using test::FailingNew;
using test::Shortage;
using trellis::SchemeFile;

constexpr const char* Captions[] = {"Level", "Flow", "Press", "Auto", "Manual"};

/// One control of each family, and a button with a script.
QByteArray schemeText()
{
    QByteArray text =
        "<SCHEME><NAME>Weir</NAME><WINDOW><KEY>A</KEY><CHANNEL><KEY>X</KEY><LABEL>Stage</LABEL><UNITS>m"
        "</UNITS><FORMAT>0.00</FORMAT></CHANNEL><CONTAINER><BACKCOLOR>16777215</BACKCOLOR></CONTAINER>";
    const auto control = [&](const char* type, const QByteArray& more) {
        text += QByteArray("<CONTROL><TYPE>") + type +
                "</TYPE><LEFT>300</LEFT><TOP>300</TOP><WIDTH>900</WIDTH>"
                "<HEIGHT>300</HEIGHT>" +
                more + "</CONTROL>";
    };
    control("VB.Label", "<CAPTION>Level</CAPTION><BINDTO>A|X</BINDTO><SHOWLABELS>-1</SHOWLABELS>");
    control("VB.Label", "<CAPTION>Flow</CAPTION><FONT><NAME>Arial</NAME><SIZE>9</SIZE></FONT>");
    control("VB.CommandButton", "<CAPTION>Press</CAPTION><ACTION><TYPE>SCRIPT</TYPE><SCRIPT>Control.ToolTipText = "
                                "\"pressed \" &amp; Window.Controls.Count</SCRIPT></ACTION>");
    control("VB.CheckBox", "<CAPTION>Auto</CAPTION><BINDTO>A|X</BINDTO>");
    control("VB.OptionButton", "<CAPTION>Manual</CAPTION>");
    control("VB.TextBox", "<BINDTO>A|X</BINDTO>");
    control("VB.Shape", "<SHAPE>3</SHAPE>");
    control("ZanBenchWindow.StatusLight",
            "<BINDTO>A|X</BINDTO><COMPARISON>&gt;</COMPARISON><COMPAREVALUE>2</COMPAREVALUE>");
    control("ZanBenchWindow.ValueBar", "<BINDTO>A|X</BINDTO><MAX>5</MAX>");
    return text + "</WINDOW></SCHEME>";
}

class FileLogger final : public fake::FakeLogger
{
public:
    values::Ref<SchemeFile> file;
    values::Ref<site::Scheme> Scheme() override { return file; }
};

/// A day of a panel: opened, shown, scanned, pressed, edited, saved. Each step may end with an exception, which its
/// caller takes, and the next one is tried all the same.
class Day
{
public:
    explicit Day(QString path)
        : m_path(std::move(path))
    {}

    void live()
    {
        step([this] {
            const trellis::OpenResult opened = SchemeFile::open(m_path);
            m_logger = values::make<FileLogger>();
            m_logger->file = opened.scheme;
            m_logger->link->state = site::LinkState::Connected;
        });
        step([this] {
            m_panel = std::make_unique<BenchWindow>();
            m_panel->setForms(&m_forms);
            m_panel->InitProperties();
            m_panel->setShowSiteMap(false);
            m_panel->resize(300, 200);
        });
        if (!m_logger || !m_logger->file || !m_panel)
            return;
        step([this] { m_panel->setLogger(m_logger); });
        step([this] { m_panel->LoadWindow(QStringLiteral("A")); });
        step([this] { m_panel->show(); });
        step([] { QCoreApplication::processEvents(); });
        step([this] { scan(1.5); });
        step([this] { m_panel->actions().RunAction(control(3)); });
        step([this] { m_panel->setLockPositions(false); });
        step([this] { edit(); });
        step([this] { scan(2.5); });
        step([] { QCoreApplication::processEvents(); });
        step([this] { m_panel->SaveWindow(); });
    }

    /// What is on the panel's disk in the end.
    QByteArray fileText() const { return textOf(m_path); }
    static QByteArray textOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    template <class Step>
    static void step(Step&& what)
    {
        try {
            what();
        } catch (const std::bad_alloc&) {
        } catch (const values::RuntimeError&) {
        }
    }

    values::Ref<wrappers::iBenchControl> control(int place)
    {
        return m_panel->Controls()->Control(binding::Variant(place));
    }

    void scan(double value)
    {
        const auto window = m_logger->file->Windows()->Item(binding::Variant(QStringLiteral("A")));
        window->Item(binding::Variant(QStringLiteral("X")))->setValue(binding::Variant(value));
        Q_EMIT m_logger->NewBenchData();
    }

    void edit()
    {
        const auto command = [this](auto&& run) { m_panel->edit(run); };
        command([](PanelEditor& editor) { editor.newControl(QStringLiteral("VB.Label")); });
        command([this](PanelEditor& editor) { editor.setCurrentControl(control(2)); });
        command([](PanelEditor& editor) { editor.copy(); });
        command([](PanelEditor& editor) { editor.paste(); });
        command([](PanelEditor& editor) { editor.sendToBack(); });
        step([this] { m_panel->Undo(); });
        step([this] { m_panel->Undo(); });
        step([this] { m_panel->Redo(); });
        step([this] { control(1)->Move(450, 450.0F, {}, {}); });
    }

    QString m_path;
    surface::RecordingForms m_forms;
    values::Ref<FileLogger> m_logger;
    std::unique_ptr<BenchWindow> m_panel;
};

class PanelAllocation : public testing::Test
{
protected:
    PanelAllocation()
    {
        reset();
        // Once for everything that is made when it is first needed and then stays.
        Day(path()).live();
        reset();
        Day day(path());
        {
            const FailingNew counting(0);
            day.live();
            m_allocations = counting.count();
        }
        m_whole = day.fileText();
    }
    QString path() const { return m_folder.filePath(QStringLiteral("weir.scheme")); }
    void reset()
    {
        for (const QString& name : QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden))
            QFile::remove(m_folder.filePath(name));
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(schemeText()) > 0);
    }

    /// Runs a day in a process of its own in which the n-th allocation fails. What is wrong afterwards, or nothing.
    std::string complaint(std::uint64_t failing, Shortage shortage)
    {
        reset();
        int ends[2];
        if (pipe(ends) != 0)
            return "no pipe";
        const pid_t child = fork();
        if (child == 0) {
            test::reportLastPlace(ends[1]);
            test::limitTime(); // one that has no end is a finding too
            const std::string wrong = dayInChild(failing, shortage);
            static_cast<void>(::write(ends[1], wrong.data(), wrong.size()));
            _exit(wrong.empty() ? 0 : 1);
        }
        close(ends[1]);
        std::string told;
        std::array<char, 4096> piece{};
        for (ssize_t length = 0; (length = ::read(ends[0], piece.data(), piece.size())) > 0;)
            told.append(piece.data(), std::size_t(length));
        close(ends[0]);
        int status = 0;
        waitpid(child, &status, 0);
        if (!WIFEXITED(status))
            return "died of signal " + std::to_string(WTERMSIG(status));
        const std::string wrong = fileComplaint();
        if (WEXITSTATUS(status) == test::Died && told.starts_with("toolkit")) {
            ++m_endsInToolkit;
            return wrong;
        }
        return WEXITSTATUS(status) == 0 ? wrong : told;
    }

    std::uint64_t m_allocations = 0;
    int m_endsInToolkit = 0;

private:
    std::string dayInChild(std::uint64_t failing, Shortage shortage)
    {
        {
            Day day(path());
            FailingNew failure(failing, shortage);
            day.live();
            if (!failure.hasFailed())
                return "the allocation was not reached";
        }
        if (const std::string wrong = fileComplaint(); !wrong.empty())
            return wrong;
        // With memory again: nothing is locked, switched off or half under way.
        QFile::remove(path());
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write(schemeText()) <= 0)
            return "no file";
        file.close();
        Day again(path());
        again.live();
        return again.fileText() == m_whole
                   ? std::string()
                   : "a day afterwards ends with another file:\n" + again.fileText().toStdString();
    }

    /// The file holds every control that it held, whatever was done to it; nothing but its backup lies beside it.
    std::string fileComplaint() const
    {
        const trellis::OpenResult opened = SchemeFile::open(path());
        if (!opened)
            return "the file cannot be read: " + opened.error.text().toStdString();
        const QByteArray text = Day::textOf(path());
        for (const char* caption : Captions) {
            if (!text.contains(QByteArray("<CAPTION>") + caption + "</CAPTION>"))
                return std::string("the file has lost ") + caption + ":\n" + text.toStdString();
        }
        if (text.count("<CONTROL>") < schemeText().count("<CONTROL>"))
            return "the file has lost a control:\n" + text.toStdString();
        const QStringList names = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
        for (const QString& name : names) {
            if (name != u"weir.scheme" && name != u"weir.scheme.bak")
                return "left behind: " + name.toStdString();
        }
        return {};
    }

    QTemporaryDir m_folder;
    QByteArray m_whole;
};

/// The sanitizers have an allocator and crash handlers of their own, and a crash in the toolkit cannot be told from one
/// of ours by the places that they leave.
constexpr bool IsSanitized =
#ifdef __SANITIZE_ADDRESS__
    true;
#else
    false;
#endif

/// Every so many of the allocations are tried, so that a run takes some seconds; ZAN_ALLOCATION_STEP=1 tries all.
std::uint64_t stepOf(std::uint64_t allocations, int tries)
{
    const int wanted = qEnvironmentVariableIntValue("ZAN_ALLOCATION_STEP");
    return wanted > 0 ? std::uint64_t(wanted) : std::max<std::uint64_t>(1, allocations / std::uint64_t(tries));
}

} // namespace

TEST_F(PanelAllocation, AnAllocationThatFailsCostsNoControlAndNothingAfterIt)
{
    if (IsSanitized)
        GTEST_SKIP() << "not under the sanitizers, which stand between a failed allocation and its end";
    ASSERT_GT(m_allocations, 1000u);
    for (std::uint64_t place = 1; place <= m_allocations; place += stepOf(m_allocations, 80))
        EXPECT_EQ(complaint(place, Shortage::Once), "") << "allocation " << place << " of " << m_allocations;
    RecordProperty("EndsInTheToolkit", m_endsInToolkit);
}

TEST_F(PanelAllocation, MemoryThatRunsOutForGoodCostsNoControlAndNothingOnceItIsBack)
{
    if (IsSanitized)
        GTEST_SKIP() << "not under the sanitizers, which stand between a failed allocation and its end";
    for (std::uint64_t place = 1; place <= m_allocations; place += stepOf(m_allocations, 40))
        EXPECT_EQ(complaint(place, Shortage::ForGood), "") << "allocation " << place << " of " << m_allocations;
    RecordProperty("EndsInTheToolkit", m_endsInToolkit);
}

} // namespace zan::window
