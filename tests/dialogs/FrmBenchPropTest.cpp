#include "FormFixture.h"

#include "surface/host/Surface.h"
#include "window/EditMenus.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextLayout>

#include <utility>

namespace zan::dialogs {
namespace {

using surface::FontObject;
using surface::Picture;
using values::Colour;

class FrmBenchProp : public FormTest
{
protected:
    void SetUp() override { qputenv("TMPDIR", QFile::encodeName(folder.path())); }
    void TearDown() override
    {
        panel.reset();
        if (former.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", former);
    }

    /// Opens the form as the entry of the surface's menu does.
    bool openWindow(const std::function<void(SetupForm&)>& user)
    {
        bool shown = false;
        forms.onForm = [&](surface::ModalForm& form) {
            shown = true;
            user(static_cast<SetupForm&>(form));
        };
        panel->edit([&](window::PanelEditor&) { panel->setup().editWindow(); });
        forms.onForm = nullptr;
        return shown;
    }
    document::Node container() { return nodeOf("A").child(values::Name("CONTAINER")); }
    QString setting(const char* name) { return element(container(), name); }
    static Ref<Picture> picture(Qt::GlobalColor colour)
    {
        QImage image(4, 3, QImage::Format_RGB32);
        image.fill(colour);
        return values::make<Picture>(image);
    }
    QString pictureFile(const char* name, Qt::GlobalColor colour)
    {
        const QString file = folder.filePath(QString::fromLatin1(name));
        EXPECT_TRUE(picture(colour)->image().save(file, "BMP"));
        return file;
    }
    QColor shownColour()
    {
        const Ref<Picture>& shown = panel->surface().picture();
        return shown ? shown->image().pixelColor(0, 0) : QColor();
    }
    static bool isTicked(SetupForm& form, QStringView box) { return form.field(box).isChecked(); }
    static bool isEnabled(SetupForm& form, QStringView field) { return form.field(field).isEnabled(); }

    QTemporaryDir folder;
    QByteArray former = qgetenv("TMPDIR");
};

const char* const follower =
    "<CONTROL><TYPE>VB.Label</TYPE><CAPTION>Stage</CAPTION><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS></CONTROL>";

TEST_F(FrmBenchProp, HasItsTitleItsTabsAndItsRowsInOrder)
{
    load("");
    ASSERT_TRUE(openWindow([](SetupForm& form) {
        EXPECT_EQ(form.name(), QStringLiteral("frmBenchProp"));
        EXPECT_EQ(form.title(), QStringLiteral("Window Properties"));
        EXPECT_EQ(form.description().width, 4560);
        EXPECT_EQ(form.description().height, 4080);
        EXPECT_EQ(form.description().buttonWidth, 1095);
        EXPECT_EQ(tabs(form), QStringLiteral("&Format,&Background"));
        EXPECT_EQ(
            rows(form),
            QStringLiteral("0 Label1=Example:; 0 txtExample=; 0 cmdForeCol=&Forecolour; "
                           "0 cmdBackCol=&Backcolour; 0 cmdFont=F&ont; 0 cbDOSCharSet=MS-DOS Character Set; "
                           "1 cbEnablePicture=Enable background picture; 1 lblPicture=Picture; 1 txtPicture=; "
                           "1 cmdBrowse=&Browse; 1 fraPicture=Options; 1 cbStretch=&Stretch Picture; "
                           "1 cbSnap=S&nap to Grid; 1 Label2=Grid Size; 1 txtGrid=; "
                           "-1 cmdOK=&OK; -1 cmdCancel=&Cancel; -1 cmdApply=&Apply"));
        EXPECT_EQ(text(form, u"txtExample"), QStringLiteral("The quick brown fox jumps over the lazy dog"));
        const QStringView tips[][2] = {
            {u"txtExample", u"Example given the current settings"},
            {u"cmdForeCol", u"Select a new text colour"},
            {u"cmdBackCol", u"Select a new background colour"},
            {u"cmdFont", u"Select a new font"},
            {u"cbDOSCharSet", u"Select this option to ensure DOS symbols are displayed correctly"}};
        for (const auto& [field, tip] : tips)
            EXPECT_EQ(form.field(field).toolTip(), tip.toString());
    }));
}

TEST_F(FrmBenchProp, TheEntryPropertiesOfTheSurfacesMenuOpensIt)
{
    load("");
    QString opened;
    forms.onForm = [&](surface::ModalForm& form) { opened = form.name(); };
    const std::shared_ptr<surface::PopupMenu> menu = window::formRightClickMenu(*panel);
    EXPECT_EQ(menu->items[2].caption, QStringLiteral("&Properties"));
    ASSERT_TRUE(menu->items[2].enabled && menu->items[2].choose);
    menu->items[2].choose();
    EXPECT_EQ(opened, QStringLiteral("frmBenchProp"));
}

TEST_F(FrmBenchProp, FieldsShowWhatThePanelHas)
{
    load("");
    const QString file = pictureFile("weir.bmp", Qt::red);
    panel->setPictureFile(file);
    panel->setStretch(true);
    panel->setSnapToGrid(false);
    panel->setGridSize(33.5F);
    panel->setForeColor({255});
    panel->setBackColor({65280});
    openWindow([&](SetupForm& form) {
        EXPECT_TRUE(isTicked(form, u"cbEnablePicture"));
        EXPECT_EQ(text(form, u"txtPicture"), file);
        EXPECT_TRUE(isTicked(form, u"cbStretch"));
        EXPECT_FALSE(isTicked(form, u"cbSnap"));
        EXPECT_EQ(text(form, u"txtGrid"), QStringLiteral("33.5"));
        EXPECT_FALSE(isTicked(form, u"cbDOSCharSet"));
        EXPECT_EQ(form.field(u"txtExample").foreColour(), Colour{255});
        EXPECT_EQ(form.field(u"txtExample").backColour(), Colour{65280});
        EXPECT_TRUE(surface::fontsEqual(*form.field(u"txtExample").font(), *panel->Font()));
    });
}

TEST_F(FrmBenchProp, TheExampleBreaksItsLineWhereItsWindowEnds)
{
    load("");
    openWindow([](SetupForm& form) {
        QDialog* dialog = form.dialog(nullptr);
        dialog->show();
        QCoreApplication::processEvents();
        const auto* page = dialog->findChild<QPlainTextEdit*>(QStringLiteral("txtExample"));
        ASSERT_TRUE(page);
        EXPECT_GT(page->document()->firstBlock().layout()->lineCount(), 1);
        EXPECT_FALSE(page->horizontalScrollBar()->isVisible());
    });
}

TEST_F(FrmBenchProp, AMissingPictureFileShowsTheBoxUncheckedAndTheOldName)
{
    load("");
    panel->setPictureFile(folder.filePath(QStringLiteral("gone.bmp")));
    openWindow([&](SetupForm& form) {
        EXPECT_FALSE(isTicked(form, u"cbEnablePicture"));
        EXPECT_EQ(text(form, u"txtPicture"), folder.filePath(QStringLiteral("gone.bmp")));
        // Nobody has clicked the box yet.
        for (const QStringView field : {u"lblPicture", u"txtPicture", u"cmdBrowse", u"fraPicture", u"cbStretch"})
            EXPECT_TRUE(isEnabled(form, field));
    });
}

TEST_F(FrmBenchProp, AFileThatHoldsNoPictureOpensCheckedAsTheFileIsThere)
{
    load("");
    QFile broken(folder.filePath(QStringLiteral("broken.bmp")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("no picture");
    broken.close();
    panel->setPictureFile(broken.fileName());
    EXPECT_TRUE(openWindow([](SetupForm& form) { EXPECT_TRUE(isTicked(form, u"cbEnablePicture")); }));
    EXPECT_TRUE(errors.empty());
}

TEST_F(FrmBenchProp, TheBoxOfThePictureSwitchesItsFieldsAndTheFrameOnlyOutsideOfIt)
{
    load("");
    openWindow([](SetupForm& form) {
        press(form, u"cbEnablePicture");
        press(form, u"cbEnablePicture");
        for (const QStringView field : {u"lblPicture", u"txtPicture", u"cmdBrowse", u"fraPicture", u"cbStretch"})
            EXPECT_FALSE(isEnabled(form, field)) << field.toString().toStdString();
        for (const QStringView field : {u"cbSnap", u"txtGrid", u"Label2"}) {
            EXPECT_TRUE(isEnabled(form, field)) << field.toString().toStdString();
            EXPECT_FALSE(form.canUse(form.field(field))) << "it stands in a frame that is switched off";
        }
        press(form, u"cbEnablePicture");
        EXPECT_TRUE(isEnabled(form, u"cbStretch"));
        EXPECT_TRUE(form.canUse(form.field(u"cbSnap")));
    });
}

TEST_F(FrmBenchProp, ApplyingSetsThePanelAndWhatFollowsIt)
{
    load(follower);
    const QString file = pictureFile("weir.bmp", Qt::red);
    forms.answer(QStringLiteral("colour:255"));
    forms.answer(QStringLiteral("colour:65280"));
    forms.answer(QStringLiteral("font:DejaVu Serif,14,bold"));
    forms.answer(QStringLiteral("file:") + file);
    openWindow([&](SetupForm& form) {
        press(form, u"cmdForeCol");
        press(form, u"cmdBackCol");
        press(form, u"cmdFont");
        EXPECT_EQ(form.field(u"txtExample").foreColour(), Colour{255});
        EXPECT_EQ(form.field(u"txtExample").backColour(), Colour{65280});
        EXPECT_EQ(form.field(u"txtExample").font()->name(), QStringLiteral("DejaVu Serif"));
        press(form, u"cbEnablePicture");
        press(form, u"cmdBrowse");
        EXPECT_EQ(text(form, u"txtPicture"), file);
        press(form, u"cbStretch");
        press(form, u"cbSnap");
        type(form, u"txtGrid", QStringLiteral("150"));
        press(form, u"cmdOK");
        EXPECT_FALSE(form.isOpen());
    });
    QStringList titles;
    for (const surface::RecordingForms::Box& box : forms.boxes())
        titles << box.title;
    EXPECT_EQ(titles.join(u','),
              QStringLiteral("Window Properties,Select text colour,Select text colour,Select font,"
                             "Select a background picture"));
    EXPECT_EQ(panel->ForeColor(), Colour{255});
    EXPECT_EQ(panel->BackColor(), Colour{65280});
    EXPECT_EQ(panel->Font()->name(), QStringLiteral("DejaVu Serif"));
    EXPECT_EQ(wrapper()->Font().get(), panel->Font().get());
    EXPECT_EQ(wrapper()->ForeColour(), Colour{255});
    EXPECT_EQ(panel->PictureFile(), file);
    EXPECT_TRUE(panel->Stretch());
    EXPECT_FALSE(panel->SnapToGrid());
    EXPECT_EQ(panel->GridSize(), 150);
    EXPECT_EQ(setting("FORECOLOR"), QStringLiteral("255"));
    EXPECT_EQ(setting("BACKCOLOR"), QStringLiteral("65280"));
    EXPECT_EQ(setting("PICTUREFILE"), file);
    EXPECT_EQ(setting("STRETCH"), QStringLiteral("-1"));
    EXPECT_EQ(setting("GRIDSIZE"), QStringLiteral("150"));
    EXPECT_EQ(shownColour(), QColor(Qt::red));
}

TEST_F(FrmBenchProp, TheApplyGoesInItsOrderAndRefreshesLast)
{
    addChannel("RTD", "LEVEL", "Level", "m")->value = 3.5;
    load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|LEVEL</BINDTO></CONTROL>");
    live(1)->put(values::Name("Caption"), QStringLiteral("old"));
    QStringList written;
    QObject::connect(panel.get(), &window::BenchWindow::PropertyChanged, panel.get(), [&](const QString& name) {
        written << name;
        EXPECT_EQ(property(1, "Caption"), QStringLiteral("old"));
    });
    openWindow([](SetupForm& form) {
        form.editFont->setItalic(true);
        press(form, u"cmdApply");
    });
    EXPECT_EQ(written.join(u','), QStringLiteral("ForeColor,BackColor,Font,Stretch,Picture,SnapToGrid,GridSize"));
    EXPECT_NE(property(1, "Caption"), QStringLiteral("old"));
}

TEST_F(FrmBenchProp, TheSameFontIsNotPutASecondTime)
{
    load("");
    openWindow([this](SetupForm& form) {
        form.editFont->setStrikethrough(true);
        press(form, u"cmdApply");
        const FontObject* given = panel->Font().get();
        EXPECT_EQ(form.savedFont.get(), given);
        EXPECT_NE(form.editFont.get(), given);
        press(form, u"cmdApply");
        EXPECT_EQ(panel->Font().get(), given);
    });
}

TEST_F(FrmBenchProp, AnEmptyNameWithTheBoxCheckedClearsTheBackgroundThroughItsFile)
{
    load("");
    panel->setPictureFile(pictureFile("weir.bmp", Qt::red));
    openWindow([](SetupForm& form) {
        type(form, u"txtPicture", QString());
        press(form, u"cmdApply");
    });
    EXPECT_FALSE(panel->surface().picture());
    EXPECT_EQ(panel->PictureFile(), QString());
    EXPECT_EQ(setting("PICTUREFILE"), QStringLiteral("-"));
}

TEST_F(FrmBenchProp, UntickingTheBoxRemovesATemporaryFileAndLeavesTheNameInTheDocument)
{
    load("");
    panel->setPictureFile(pictureFile("weir.bmp", Qt::red));
    panel->setPicture(picture(Qt::blue));
    const QString temporary = panel->PictureFile();
    ASSERT_TRUE(QFile::exists(temporary));
    openWindow([&](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtPicture"), temporary);
        press(form, u"cbEnablePicture");
        press(form, u"cmdApply");
    });
    EXPECT_FALSE(QFile::exists(temporary));
    EXPECT_FALSE(panel->surface().picture());
    EXPECT_EQ(panel->PictureFile(), QString());
    EXPECT_EQ(setting("PICTUREFILE"), folder.filePath(QStringLiteral("weir.bmp")));
}

TEST_F(FrmBenchProp, CancelUndoesNothingThatAnEarlierApplyWrote)
{
    load("");
    openWindow([](SetupForm& form) {
        type(form, u"txtGrid", QStringLiteral("120"));
        press(form, u"cmdApply");
        type(form, u"txtGrid", QStringLiteral("77"));
        press(form, u"cmdCancel");
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(panel->GridSize(), 120);
}

TEST_F(FrmBenchProp, EscApplies)
{
    load("");
    openWindow([this](SetupForm& form) {
        type(form, u"txtGrid", QStringLiteral("120"));
        form.userEscape();
        EXPECT_TRUE(form.isOpen());
        EXPECT_EQ(panel->GridSize(), 120);
    });
}

TEST_F(FrmBenchProp, TheGridTakesDigitsAndAnEmptyOneFailsAfterTheOtherSteps)
{
    load("");
    openWindow([this](SetupForm& form) {
        type(form, u"txtGrid", QStringLiteral("-1.2x3"));
        EXPECT_EQ(text(form, u"txtGrid"), QStringLiteral("123"));
        type(form, u"txtGrid", QString());
        press(form, u"cbSnap");
        press(form, u"cmdOK");
        EXPECT_TRUE(form.isOpen());
        EXPECT_EQ(errors, std::vector<int>{13});
        EXPECT_FALSE(panel->SnapToGrid());
        EXPECT_EQ(panel->GridSize(), 200);
    });
}

TEST_F(FrmBenchProp, AGridOfZeroIsAccepted)
{
    load("");
    openWindow([](SetupForm& form) {
        type(form, u"txtGrid", QStringLiteral("0"));
        press(form, u"cmdOK");
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(panel->GridSize(), 0);
}

TEST_F(FrmBenchProp, AGridBeyondThirtyTwoBitsOverflowsAndAFractionGoesToTheEvenOne)
{
    load("");
    panel->setGridSize(32.5F);
    openWindow([this](SetupForm& form) {
        press(form, u"cmdApply");
        EXPECT_EQ(panel->GridSize(), 32);
        type(form, u"txtGrid", QStringLiteral("99999999999"));
        press(form, u"cmdApply");
        EXPECT_EQ(errors, std::vector<int>{6});
    });
}

TEST_F(FrmBenchProp, TheDosBoxSetsTheCharacterSetAndTakesItBackThroughTheName)
{
    load("");
    openWindow([](SetupForm& form) {
        const QString name = form.editFont->name();
        press(form, u"cbDOSCharSet");
        EXPECT_EQ(form.editFont->charset(), 255);
        EXPECT_EQ(form.editFont->name(), name);
        press(form, u"cbDOSCharSet");
        EXPECT_EQ(form.editFont->charset(), 0);
        EXPECT_EQ(form.editFont->name(), name);
    });
    panel->Font()->setCharset(255);
    openWindow([this](SetupForm& form) {
        EXPECT_TRUE(isTicked(form, u"cbDOSCharSet"));
        press(form, u"cbDOSCharSet");
        EXPECT_EQ(form.editFont->charset(), 0);
        press(form, u"cmdOK");
    });
    EXPECT_EQ(panel->Font()->charset(), 0);
}

TEST_F(FrmBenchProp, BrowsingAsksForTheNameAndTheFolderOfTheField)
{
    class Asked : public surface::RecordingForms
    {
    public:
        std::optional<QString> pickFile(QWidget*, const surface::FileRequest& given) override
        {
            request = given;
            return std::nullopt;
        }
        surface::FileRequest request;
    } asked;
    load("");
    const auto browse = [&](SetupForm& form) {
        type(form, u"txtPicture", QStringLiteral("C:\\Pictures\\weir.gif"));
        press(form, u"cmdBrowse");
        EXPECT_EQ(text(form, u"txtPicture"), QStringLiteral("C:\\Pictures\\weir.gif")) << "cancelled";
    };
    asked.onForm = [&](surface::ModalForm& form) { browse(static_cast<SetupForm&>(form)); };
    panel->setForms(&asked);
    panel->setup().editWindow();
    panel->setForms(&forms);
    EXPECT_EQ(asked.request.title, QStringLiteral("Select a background picture"));
    EXPECT_EQ(asked.request.folder, QStringLiteral("C:\\Pictures\\"));
    EXPECT_EQ(asked.request.file, QStringLiteral("weir.gif"));
    EXPECT_EQ(asked.request.defaultExtension, QStringLiteral("*.BMP"));
    EXPECT_EQ(asked.request.filter, QStringLiteral("Picture files|*.bmp;*.gif;*.jpg;*.wmf|All Files (*.*)|*.*"));
    EXPECT_EQ(asked.request.filterIndex, 0);
}

TEST_F(FrmBenchProp, ApplyShowsTheHourglassWhileItRunsAndOkDoesNot)
{
    load("");
    std::vector<bool> busy;
    QObject::connect(panel.get(), &window::BenchWindow::PropertyChanged, panel.get(), [&](const QString& name) {
        if (name == QLatin1String("GridSize"))
            busy.push_back(QGuiApplication::overrideCursor() != nullptr);
    });
    openWindow([](SetupForm& form) {
        press(form, u"cmdApply");
        EXPECT_FALSE(QGuiApplication::overrideCursor());
        press(form, u"cmdOK");
    });
    EXPECT_EQ(busy, (std::vector<bool>{true, false}));
}

// Edits ----------------------------------------------------------------------------------------------------------

TEST_F(FrmBenchProp, AnApplyThatChangesSomethingIsOneStepAndUndoRestoresThePanelAndItsFollowers)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS><FORECOLOR>16711680</FORECOLOR>"
         "</CONTROL><CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
    const QString file = pictureFile("weir.bmp", Qt::red);
    panel->setPictureFile(file);
    openWindow([](SetupForm& form) { press(form, u"cmdApply"); });
    // What follows the panel has taken its looks on: as they were is a step.
    panel->editor().history().clear();
    wrapper(1)->setForeColour({16711680});
    const Ref<FontObject> font = panel->Font();
    const QString node = this->node(1).xml(), settings = container().xml();
    document::XMLOps::UnmarkChanged(container());
    forms.answer(QStringLiteral("colour:255"));
    forms.answer(QStringLiteral("font:DejaVu Serif,14"));
    openWindow([this](SetupForm& form) {
        press(form, u"cmdForeCol");
        press(form, u"cmdFont");
        press(form, u"cbStretch");
        press(form, u"cbEnablePicture");
        press(form, u"cmdApply");
        EXPECT_EQ(panel->EditCount(), 1);
        press(form, u"cmdApply");
        EXPECT_EQ(panel->EditCount(), 1) << "nothing has changed";
    });
    EXPECT_TRUE(isChanged());
    EXPECT_EQ(panel->UndoText(), QStringLiteral("Window Properties"));
    EXPECT_FALSE(panel->surface().picture());
    panel->Undo();
    EXPECT_EQ(panel->Font().get(), font.get());
    EXPECT_EQ(wrapper(1)->Font().get(), font.get());
    EXPECT_EQ(wrapper(1)->ForeColour(), Colour{16711680});
    EXPECT_FALSE(panel->Stretch());
    EXPECT_EQ(panel->PictureFile(), file);
    EXPECT_EQ(shownColour(), QColor(Qt::red));
    EXPECT_EQ(this->node(1).xml(), node);
    EXPECT_EQ(container().xml(), settings);
    panel->Redo();
    EXPECT_EQ(panel->ForeColor(), Colour{255});
    EXPECT_EQ(panel->Font()->name(), QStringLiteral("DejaVu Serif"));
    EXPECT_TRUE(panel->Stretch());
    EXPECT_EQ(panel->PictureFile(), QString());
}

TEST_F(FrmBenchProp, UndoBringsAPictureWithoutAFileBackAndLeavesNoFileBehind)
{
    load("");
    panel->setPicture(picture(Qt::blue));
    openWindow([](SetupForm& form) {
        press(form, u"cbEnablePicture");
        press(form, u"cmdOK");
    });
    panel->Undo();
    EXPECT_EQ(shownColour(), QColor(Qt::blue));
    EXPECT_TRUE(QFile::exists(panel->PictureFile()));
    panel->Redo();
    EXPECT_FALSE(panel->surface().picture());
    panel->Undo();
    panel.reset();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

TEST_F(FrmBenchProp, WhatTheRefreshShowsIsNoEdit)
{
    addChannel("RTD", "LEVEL", "Level", "m")->value = 3.5;
    load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|LEVEL</BINDTO><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS>"
         "</CONTROL>");
    openWindow([](SetupForm& form) { press(form, u"cmdApply"); });
    panel->editor().history().clear();
    openWindow([this](SetupForm& form) {
        channel("RTD", "LEVEL")->value = 8.25;
        press(form, u"cmdApply");
    });
    EXPECT_TRUE(property(1, "Caption").contains(QLatin1String("8.25")));
    EXPECT_EQ(panel->EditCount(), 0);
}

TEST_F(FrmBenchProp, WhoeverHearsOfAPropertyMayLoadAnotherWindowInTheMiddleOfAnApply)
{
    load(follower);
    fill("B", follower);
    bool isDone = false;
    QObject::connect(panel.get(), &window::BenchWindow::PropertyChanged, panel.get(), [&](const QString& name) {
        if (name == QLatin1String("BackColor") && !std::exchange(isDone, true))
            panel->LoadWindow(QStringLiteral("B"));
    });
    openWindow([](SetupForm& form) {
        form.foreColour = {255};
        press(form, u"cmdApply");
    });
    EXPECT_EQ(panel->EditCount(), 0) << "the step was the other window's";
    EXPECT_EQ(panel->CurrentWindow()->Key(), QStringLiteral("B"));
}

TEST_F(FrmBenchProp, WhoeverHearsOfAPropertyMayLoadAnotherWindowOrEndThePanelInTheMiddleOfAnUndo)
{
    for (const bool ends : {false, true}) {
        if (!ends) {
            load(follower);
            fill("B", follower);
        }
        openWindow([](SetupForm& form) {
            form.foreColour = {form.foreColour.code + 1};
            form.editFont->setItalic(!form.editFont->italic());
            press(form, u"cmdApply");
        });
        ASSERT_TRUE(panel->CanUndo());
        QObject::connect(panel.get(), &window::BenchWindow::PropertyChanged, panel.get(), [&](const QString& name) {
            if (name != QLatin1String("ForeColor"))
                return;
            panel->disconnect(panel.get());
            if (ends)
                panel.reset();
            else
                panel->LoadWindow(QStringLiteral("B"));
        });
        panel->Undo();
        EXPECT_EQ(panel == nullptr, ends);
        EXPECT_TRUE(!panel || panel->CurrentWindow()->Key() == QLatin1String("B"));
    }
}

TEST_F(FrmBenchProp, AFormWhosePanelGoesInTheMiddleOfAnApplyIsClosed)
{
    load(follower);
    QObject::connect(panel.get(), &window::BenchWindow::PropertyChanged, panel.get(), [&] { panel.reset(); });
    std::weak_ptr<SetupForm> left;
    forms.onForm = [&](surface::ModalForm& form) {
        auto& setup = static_cast<SetupForm&>(form);
        left = setup.weak_from_this();
        press(setup, u"cmdApply");
        EXPECT_FALSE(setup.isOpen());
    };
    panel->setup().editWindow();
    EXPECT_FALSE(left.lock());
    EXPECT_FALSE(panel);
}

} // namespace
} // namespace zan::dialogs
