#include "FormFixture.h"

#include <QTemporaryDir>

namespace zan::dialogs {
namespace {

class FrmPicture : public FormTest
{
protected:
    QString picture(const char* name, int width)
    {
        const QString file = folder.filePath(QString::fromLatin1(name));
        QImage(width, 4, QImage::Format_RGB32).save(file);
        return file;
    }
    std::string control(const QString& file)
    {
        return "<CONTROL><TYPE>VB.Picture</TYPE><PICTUREFILE>" + file.toStdString() + "</PICTUREFILE></CONTROL>";
    }
    static int shownWidth(SetupForm& form)
    {
        const auto& shown = form.field(u"Picture1").picture();
        return shown ? shown->image().width() : 0;
    }
    QTemporaryDir folder;
};

TEST_F(FrmPicture, ShowsItsFileAndWhatIsTypedOverItsNameCountsForNothing)
{
    const QString file = picture("a.bmp", 5);
    load(control(file).c_str());
    ASSERT_TRUE(open([&](SetupForm& form) {
        EXPECT_EQ(form.title(), QStringLiteral("Picture Setup"));
        EXPECT_EQ(text(form, u"txtFile"), file);
        EXPECT_EQ(shownWidth(form), 5);
        type(form, u"txtFile", QStringLiteral("other.bmp"));
        press(form, u"cmdOK");
    }));
    EXPECT_EQ(stored("PICTUREFILE"), file);
}

TEST_F(FrmPicture, DefaultInAnyCaseIsTheLogoAndIsStoredInCapitals)
{
    load(control(QStringLiteral("default")).c_str());
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtFile"), QStringLiteral("DEFAULT"));
        EXPECT_GT(shownWidth(form), 0);
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("PICTUREFILE"), QStringLiteral("DEFAULT"));
    EXPECT_TRUE(live(1)->get(values::Name("Picture")).object());
}

/// A load knows files only: the name of the logo is that of a file that is not there.
TEST_F(FrmPicture, TheLogoIsShownByTheFormAndNotByALoad)
{
    load(control(QStringLiteral("DEFAULT")).c_str());
    EXPECT_FALSE(live(1)->get(values::Name("Picture")).object());
    EXPECT_EQ(stored("PICTUREFILE"), QStringLiteral("DEFAULT"));
    EXPECT_TRUE(errors.empty());
}

TEST_F(FrmPicture, OkWithoutAFileRemovesTheElement)
{
    load("<CONTROL><TYPE>VB.Picture</TYPE></CONTROL>");
    openAndPress(u"cmdOK");
    EXPECT_EQ(stored("PICTUREFILE"), QStringLiteral("-"));
}

TEST_F(FrmPicture, AMissingFileIsTheMenusFailureAndNothingIsShown)
{
    load(control(QStringLiteral("/nowhere/a.bmp")).c_str());
    EXPECT_FALSE(open([](SetupForm&) {}));
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_TRUE(open([](SetupForm&) {}) || errors.size() == 2u) << "a form that was not shown is in nobody's way";
}

TEST_F(FrmPicture, BrowsingTakesAnotherFileAndABadOneLeavesEverything)
{
    const QString first = picture("a.bmp", 5);
    const QString second = picture("b.bmp", 9);
    load(control(first).c_str());
    forms.answer(QStringLiteral("file:/nowhere/c.bmp"));
    forms.answer(QStringLiteral("Cancel"));
    forms.answer(QStringLiteral("file:") + second);
    open([&](SetupForm& form) {
        press(form, u"cmdBrowse");
        EXPECT_EQ(forms.boxes().back().title, QStringLiteral("Select picture file"));
        press(form, u"cmdBrowse");
        EXPECT_EQ(text(form, u"txtFile"), first);
        EXPECT_EQ(shownWidth(form), 5);
        press(form, u"cmdBrowse");
        EXPECT_EQ(text(form, u"txtFile"), second);
        EXPECT_EQ(shownWidth(form), 9);
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("PICTUREFILE"), second);
    EXPECT_TRUE(errors.empty());
    panel->Undo();
    EXPECT_EQ(stored("PICTUREFILE"), first);
}

TEST_F(FrmPicture, NeedsNoSchemeAndHasNoApply)
{
    load("<CONTROL><TYPE>VB.Picture</TYPE></CONTROL>");
    open([](SetupForm& form) { EXPECT_EQ(form.find(u"cmdApply"), nullptr); });
}

} // namespace
} // namespace zan::dialogs
