// Windows of older terminals: the command, and the entry of the File menu.

#include "ProgramFixture.h"

#include "document/XMLOps.h"
#include "surface/host/Surface.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"

#include <QListWidget>

using namespace zan;
using host::MainWindow;
using values::Name;

namespace {

constexpr char Old[] = "KEEL\n2,3,\"Level \",m,16\n0,0,Weir\n";

/// Texts of the elements of this name in the scheme's window of this key.
QStringList texts(const QByteArray& scheme, const QString& key, const char* parent, const char* name)
{
    QStringList found;
    for (const document::Node& window :
         document::XMLOps::LoadDocument(QString::fromUtf8(scheme)).children(Name("WINDOW")))
        if (window.child(Name("KEY")).text() == key)
            for (const document::Node& element : window.children(Name(parent)))
                found << element.child(Name(name)).text();
    return found;
}

} // namespace

class ImportCommandTest : public ProgramFixture
{
protected:
    ImportCommandTest() { write("old.kel", Old); }
    Outcome import(const QStringList& options, const QString& file = QStringLiteral("old.kel")) const
    {
        return run(QStringList{"import", path(file)} + options);
    }
};

TEST_F(ImportCommandTest, WithoutASchemeTheFileIsOnlyReadAndCounted)
{
    const Outcome outcome = import({});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, path("old.kel") + ": 2 rows, 1 of them with an address.\n");
}

TEST_F(ImportCommandTest, IntoASchemeItIsSavedThereAsItsWindowKeel)
{
    const Outcome outcome = import({"--scheme", schemePath()});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.contains("KEEL of " + schemePath())) << outcome.out.toStdString();
    const QByteArray saved = read("site.scheme");
    EXPECT_EQ(texts(saved, "KEEL", "CONTROL", "CAPTION"), (QStringList{"&Connect", "Level ", "Weir"}));
    EXPECT_EQ(texts(saved, "KEEL", "CHANNEL", "LABEL"), (QStringList{"Level ", "Weir"}));
    EXPECT_EQ(texts(saved, "KEEL", "CONTAINER", "BACKCOLOR"), QStringList{"8388608"});
    EXPECT_EQ(texts(saved, "First", "CONTROL", "BINDTO"), QStringList{"First|A"}) << "the others are as they were";
    EXPECT_EQ(import({"--scheme", schemePath()}).code, 0);
    EXPECT_EQ(texts(read("site.scheme"), "KEEL", "CHANNEL", "LABEL").size(), 2) << "replaced, not added";
}

TEST_F(ImportCommandTest, OutTakesTheSchemeToANewFile)
{
    const QByteArray before = read("site.scheme");
    EXPECT_EQ(import({"--scheme", schemePath(), "--out", path("new.scheme")}).code, 0);
    EXPECT_EQ(read("site.scheme"), before);
    EXPECT_EQ(run({"windows", path("new.scheme")}).out, "First\nSecond\nKEEL\n");
    const Outcome alone = import({"--out", path("alone.scheme")});
    EXPECT_EQ(alone.code, 0) << alone.err.toStdString();
    EXPECT_EQ(run({"windows", path("alone.scheme")}).out, "KEEL\n");
    EXPECT_TRUE(read("alone.scheme").contains("<NAME>old</NAME>"));
}

TEST_F(ImportCommandTest, ASchemeThatIsThereIsNotWrittenOverUnnamed)
{
    const QByteArray before = read("site.scheme");
    const Outcome outcome = import({"--out", schemePath()});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains("there already"));
    EXPECT_EQ(read("site.scheme"), before);
}

TEST_F(ImportCommandTest, AFileThatIsRefusedIsToldWithItsPlaceAndChangesNothing)
{
    write("bad.kel", "KEEL\n0,0,a\n0,x,b\n");
    const QByteArray before = read("site.scheme");
    const Outcome outcome = import({"--scheme", schemePath()}, "bad.kel");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.startsWith("zanbench: " + path("bad.kel") + ":3:3: ")) << outcome.err.toStdString();
    EXPECT_EQ(read("site.scheme"), before);
    EXPECT_EQ(import({}, "none.kel").code, 1);
    EXPECT_EQ(run({"import"}).code, 2);
}

class ImportMenuTest : public HostTest
{
protected:
    ImportMenuTest()
        : window(settings, dialogs)
    {
        write("old.kel", Old);
        dialogs.chosenOlderWindow = path("old.kel");
    }
    void open() { ASSERT_TRUE(window.openScheme(offline())); }
    QAction* action() const { return window.findChild<QAction*>(QStringLiteral("importOlder")); }
    QStringList listed() const
    {
        const auto* list = window.findChild<QListWidget*>(QStringLiteral("windowList"));
        QStringList keys;
        for (int i = 0; i < list->count(); ++i)
            keys << (list->item(i) == list->currentItem() ? QLatin1Char('*') : QLatin1Char(' ')) +
                        list->item(i)->text();
        return keys;
    }

    MainWindow window;
};

TEST_F(ImportMenuTest, NeedsASchemeAndNoKiosk)
{
    EXPECT_FALSE(action()->isEnabled());
    open();
    EXPECT_TRUE(action()->isEnabled());
    window.enterKiosk();
    EXPECT_FALSE(action()->isEnabled());
}

TEST_F(ImportMenuTest, ShowsTheWindowListsItAndMarksTheSchemeChanged)
{
    open();
    EXPECT_FALSE(window.hasUnsavedChanges());
    action()->trigger();
    EXPECT_EQ(dialogs.errors, QStringList());
    EXPECT_EQ(listed(), (QStringList{" First", " Second", "*KEEL"}));
    EXPECT_EQ(window.currentPanel()->Controls()->Count(), 3);
    EXPECT_TRUE(window.currentPanel()->surface().updatesEnabled());
    EXPECT_FALSE(window.currentPanel()->CanUndo()) << "another window has begun";
    EXPECT_TRUE(window.isWindowModified());
    ASSERT_TRUE(window.save());
    EXPECT_EQ(texts(read("site.scheme"), "First", "CONTROL", "BINDTO"), QStringList{"First|A"})
        << "the window that the panel left keeps what it had";
    EXPECT_EQ(texts(read("site.scheme"), "KEEL", "CONTROL", "CAPTION").size(), 3);
    EXPECT_FALSE(window.hasUnsavedChanges());
}

TEST_F(ImportMenuTest, IsKeptLikeAnyEditUntilItIsSaved)
{
    open();
    action()->trigger();
    const auto kept = [this] { return read(".site.scheme.edits").contains("KEEL"); };
    EXPECT_TRUE(QTest::qWaitFor(kept, DeadlineMilliseconds));
}

TEST_F(ImportMenuTest, AsksBeforeItReplacesTheWindowOfBefore)
{
    open();
    action()->trigger();
    ASSERT_TRUE(window.save());
    write("old.kel", "KEEL\n0,0,New\n");
    action()->trigger();
    ASSERT_EQ(dialogs.replaceQuestions.size(), 1);
    EXPECT_TRUE(dialogs.replaceQuestions[0].contains("KEEL"));
    EXPECT_EQ(window.currentPanel()->Controls()->Count(), 3) << "the user turned away";
    EXPECT_FALSE(window.hasUnsavedChanges());
    dialogs.replaceAnswer = true;
    window.showWindow("First");
    action()->trigger();
    EXPECT_EQ(listed(), (QStringList{" First", " Second", "*KEEL"}));
    EXPECT_EQ(window.currentPanel()->Controls()->Count(), 2);
    EXPECT_TRUE(window.hasUnsavedChanges()) << "as many windows as before, and another one among them";
    window.showWindow("First");
    EXPECT_EQ(window.currentPanel()->Controls()->Count(), 1);
}

TEST_F(ImportMenuTest, AFileThatIsRefusedIsToldWithItsPlaceAndNothingChanges)
{
    open();
    write("old.kel", "KEEL\n0,x,b\n");
    action()->trigger();
    ASSERT_EQ(dialogs.errors.size(), 1);
    EXPECT_TRUE(dialogs.errors[0].contains(path("old.kel") + ":2:3: ")) << dialogs.errors[0].toStdString();
    EXPECT_EQ(listed(), (QStringList{"*First", " Second"}));
    EXPECT_EQ(window.currentPanel()->Controls()->Count(), 1);
    EXPECT_FALSE(window.hasUnsavedChanges());
}

TEST_F(ImportMenuTest, AnImportThatFailsInTheMiddleShowsTheWindowOfBeforeAgain)
{
    open();
    write("old.kel", "KEEL\n0,1e60,b\n");
    action()->trigger();
    ASSERT_EQ(dialogs.errors.size(), 1);
    EXPECT_TRUE(window.currentPanel()->surface().updatesEnabled());
    EXPECT_EQ(window.currentPanel()->CurrentWindow()->Key(), "First");
    EXPECT_EQ(window.currentPanel()->Controls()->Count(), 1);
    EXPECT_EQ(listed(), (QStringList{"*First", " Second"}));
}

TEST_F(ImportMenuTest, AnImportThatFailsInTheMiddleGivesTheFormerOneBack)
{
    open();
    action()->trigger();
    dialogs.replaceAnswer = true;
    write("old.kel", "KEEL\n0,1e60,b\n");
    action()->trigger();
    EXPECT_EQ(dialogs.errors.size(), 1);
    EXPECT_EQ(listed(), (QStringList{" First", " Second", "*KEEL"}));
    EXPECT_EQ(window.currentPanel()->Controls()->Count(), 3);
    ASSERT_TRUE(window.save());
    EXPECT_EQ(texts(read("site.scheme"), "KEEL", "CHANNEL", "LABEL"), (QStringList{"Level ", "Weir"}));
}
