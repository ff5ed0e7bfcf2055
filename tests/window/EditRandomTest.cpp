// Ten thousand random edits of a panel whose scheme is a file: after each of them the panel is whole, now and then the
// file gives the same panel again, and taking all of them back gives the first file byte for byte.

#include "EditFixture.h"

#include "trellis/SchemeFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <random>
#include <set>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::Name;
using values::Ref;

namespace {

constexpr int EditsPerSeed = 2000;
constexpr int EditsPerReload = 200;

/// A logger whose scheme is a file.
struct FileLogger : fake::FakeLogger
{
    Ref<trellis::SchemeFile> file;
    Ref<site::Scheme> Scheme() override { return file; }
};

class EditRandom : public EditTest, public testing::WithParamInterface<int>
{
protected:
    EditRandom()
        : path(folder.filePath(QStringLiteral("panel.scheme")))
        , random(std::mt19937::result_type(GetParam()))
    {
        writeScheme();
        fileLogger->file = trellis::SchemeFile::open(path).scheme;
        panel->setLogger(fileLogger);
        panel->LoadWindow(QStringLiteral("A"));
        panel->SaveWindow();
        panel->setLockPositions(false);
        panel->resize(800, 600);
        panel->show();
        settle();
    }

    void writeScheme()
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const QStringList all{control("VB.CommandButton", 600, 600, 1200, 400, "<CAPTION>Go</CAPTION>"),
                              control("VB.Label", 3000, 600, 1200, 400, "<BINDTO>RTD|L</BINDTO>"),
                              control("VB.TextBox", 600, 3000, 1200, 400, "<BINDTO>RTD|L</BINDTO>"),
                              control("VB.Shape", 4000, 3000, 2000, 2000),
                              control("ZanBenchWindow.StatusLight", 6000, 600, 1200, 400),
                              control("VB.CheckBox", 6000, 5000, 1200, 400),
                              control("VB.Picture", 8000, 600, 1200, 1000),
                              control("MSComctlLib.ProgressBar", 8000, 3000, 400, 2000)};
        file.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SCHEME><NAME>Random</NAME><WINDOW><KEY>RTD</KEY>"
                   "<CHANNEL><KEY>L</KEY></CHANNEL></WINDOW><WINDOW><KEY>A</KEY>");
        file.write(all.join(QString()).toUtf8());
        file.write("</WINDOW></SCHEME>\n");
    }
    QByteArray saved()
    {
        panel->SaveWindow();
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    int number(int low, int high) { return std::uniform_int_distribution(low, high)(random); }
    QPoint somewhere() { return {number(0, 700), number(0, 500)}; }
    /// The nearest place that can be pressed.
    static QPoint inside(QPoint place) { return {std::clamp(place.x(), 0, 799), std::clamp(place.y(), 0, 599)}; }
    int someControl() { return number(1, panel->Controls()->Count()); }
    void chooseAt(QPoint place, const QString& caption)
    {
        press(place, Qt::RightButton);
        if (forms.menu()) // a handle has none
            choose(caption);
    }
    void edit()
    {
        static const QStringList types{u"&Label"_qs, u"&Text Box"_qs, u"&Command Button"_qs, u"&Shape"_qs,
                                       u"S&tatus Light"_qs};
        const int count = panel->Controls()->Count();
        switch (number(0, 9)) {
        case 0:
            chooseAt(somewhere(), count < 40 ? types[number(0, 4)] : u"&Delete"_qs);
            break;
        case 1:
            chooseAt(somewhere(), count < 40 ? u"&Paste"_qs : u"&Delete"_qs);
            break;
        case 2:
            chooseAt(somewhere(), u"&Copy"_qs);
            break;
        case 3:
            if (count > 4)
                chooseAt(inside(live(someControl())->bounds().center()), u"&Delete"_qs);
            break;
        case 4:
            chooseAt(inside(live(someControl())->bounds().center()), u"&Send to Back"_qs);
            break;
        case 5: {
            const QRect bounds = live(someControl())->bounds();
            drag(inside(bounds.topLeft() + QPoint(bounds.width() + 2, bounds.height() + 2)), somewhere());
            break;
        }
        case 6:
            panel->Undo();
            if (number(0, 1) == 0)
                panel->Redo();
            break;
        default:
            drag(inside(live(someControl())->bounds().center()), somewhere());
        }
        forms.closeMenu();
    }

    void checkPanel()
    {
        const auto list = panel->Controls();
        const document::Node tree = panel->CurrentWindow()->XML();
        ASSERT_EQ(std::int32_t(tree.children(Name("CONTROL")).size()), list->Count());
        std::set<QString> listKeys;
        for (std::int32_t place = 1; place <= list->Count(); ++place) {
            const auto held = wrapper(place);
            ASSERT_EQ(held->Index(), place);
            ASSERT_EQ(live(place)->tag(), QString::number(place));
            ASSERT_TRUE(live(place)->isLoaded());
            ASSERT_EQ(held->XMLNode().parent(), tree);
            ASSERT_EQ(list->placeOfControl(*held), place);
            if (const QString key = held->Key(); !key.isEmpty()) {
                ASSERT_EQ(list->Control(Variant(key.toLower()))->Key(), key) << "the first of that key is found";
            }
            const QString listKey = list->placedAt(place).listKey;
            ASSERT_TRUE(listKey.isEmpty() || listKeys.insert(listKey).second) << "a list key is given once";
        }
        ASSERT_FALSE(hasMarker() && panel->LockPositions());
    }
    void checkNodeOf(int place)
    {
        wrapper(place)->UpdateNode();
        const QRectF at = twips(place);
        ASSERT_EQ(stored(place, "LEFT").toDouble(), at.x());
        ASSERT_EQ(stored(place, "TOP").toDouble(), at.y());
        ASSERT_EQ(stored(place, "WIDTH").toDouble(), at.width());
        ASSERT_EQ(stored(place, "HEIGHT").toDouble(), at.height());
    }
    /// What a user sees of the controls.
    static QString shown(BenchWindow& window)
    {
        QString text;
        for (int place = 1; place <= window.Controls()->Count(); ++place) {
            const auto held = window.Controls()->Control(Variant(place));
            text += QStringLiteral("%1 %2,%3 %4x%5 %6 %7\n")
                        .arg(held->ControlType())
                        .arg(double(held->Left()))
                        .arg(double(held->Top()))
                        .arg(double(held->Width()))
                        .arg(double(held->Height()))
                        .arg(held->BindTo(), held->XMLNode().child(Name("CAPTION")).text());
        }
        return text;
    }
    void checkFile()
    {
        panel->SaveWindow();
        const auto other = values::make<FileLogger>();
        other->file = trellis::SchemeFile::open(path).scheme;
        ASSERT_TRUE(other->file);
        BenchWindow again;
        again.InitProperties();
        again.setShowSiteMap(false);
        again.setLogger(other);
        again.LoadWindow(QStringLiteral("A"));
        ASSERT_EQ(shown(again).toStdString(), shown(*panel).toStdString());
    }

    QTemporaryDir folder;
    const QString path;
    Ref<FileLogger> fileLogger = values::make<FileLogger>();
    std::mt19937 random;
};

} // namespace

TEST_P(EditRandom, EveryEditLeavesAWholePanelAndAllCanBeTakenBackToTheFirstFile)
{
    const QByteArray first = saved();
    for (int done = 1; done <= EditsPerSeed; ++done) {
        edit();
        ASSERT_NO_FATAL_FAILURE(checkPanel()) << done;
        ASSERT_NO_FATAL_FAILURE(checkNodeOf(someControl())) << done;
        if (done % EditsPerReload == 0) {
            ASSERT_NO_FATAL_FAILURE(checkFile()) << done;
        }
    }
    ASSERT_GT(panel->EditCount(), EditsPerSeed / 4);
    while (panel->CanRedo()) // the last edit may have been an undo
        panel->Redo();
    const QByteArray last = saved();
    ASSERT_NE(last, first);
    while (panel->CanUndo()) {
        panel->Undo();
        ASSERT_NO_FATAL_FAILURE(checkPanel());
    }
    EXPECT_EQ(saved().toStdString(), first.toStdString());
    while (panel->CanRedo())
        panel->Redo();
    EXPECT_EQ(saved().toStdString(), last.toStdString());
}

INSTANTIATE_TEST_SUITE_P(Seeds, EditRandom, testing::Values(1, 2, 3, 4, 5));
