#include "FormFixture.h"

#include "support/ErrorOf.h"

namespace zan::dialogs {
namespace {

class FrmGraph : public FormTest
{
protected:
    void loadGraph(const char* children)
    {
        load((std::string("<CONTROL><TYPE>ZanDataControls.ZanGraph</TYPE>") + children + "</CONTROL>").c_str());
    }
};

TEST_F(FrmGraph, HasItsTitleAndFieldsInTheirOrderAndNoApply)
{
    loadGraph("");
    ASSERT_TRUE(open([](SetupForm& form) {
        EXPECT_EQ(form.title(), QStringLiteral("Edit Graph Setup"));
        EXPECT_EQ(tabs(form), QString());
        EXPECT_EQ(rows(form), QStringLiteral("0 txtUpper=Upper Limit Position; 0 txtUpperLabel=Upper Limit Label; "
                                             "0 txtLower=Lower Limit Position; 0 txtLowerLabel=Lower Limit Label; "
                                             "-1 cmdCancel=&Cancel; -1 cmdOK=&OK"));
    }));
}

TEST_F(FrmGraph, OpeningItOverANewGraphShowsZerosAndStoresThem)
{
    loadGraph("");
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtUpper"), QStringLiteral("0"));
        EXPECT_EQ(text(form, u"txtLower"), QStringLiteral("0"));
        EXPECT_EQ(text(form, u"txtUpperLabel"), QString());
        press(form, u"cmdCancel");
    });
    EXPECT_EQ(storedTexts("UPPERLIMIT LOWERLIMIT UPPERLABEL LOWERLABEL"),
              QStringLiteral("UPPERLIMIT=0 LOWERLIMIT=0 UPPERLABEL= LOWERLABEL="));
}

TEST_F(FrmGraph, ShowsWhatIsStoredAndCancelChangesNothing)
{
    loadGraph("<UPPERLIMIT>2.5</UPPERLIMIT><LOWERLIMIT>-1</LOWERLIMIT><UPPERLABEL>Spill</UPPERLABEL>"
              "<LOWERLABEL>Dry</LOWERLABEL>");
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtUpper"), QStringLiteral("2.5"));
        EXPECT_EQ(text(form, u"txtLower"), QStringLiteral("-1"));
        EXPECT_EQ(text(form, u"txtUpperLabel"), QStringLiteral("Spill"));
        EXPECT_EQ(text(form, u"txtLowerLabel"), QStringLiteral("Dry"));
        type(form, u"txtUpper", QStringLiteral("9"));
        press(form, u"cmdCancel");
    });
    EXPECT_EQ(stored("UPPERLIMIT"), QStringLiteral("2.5"));
}

TEST_F(FrmGraph, OkStoresNumbersByTheirLeadingPartAndLabelsAsTheyStand)
{
    loadGraph("");
    open([](SetupForm& form) {
        type(form, u"txtUpper", QStringLiteral("12abc"));
        type(form, u"txtLower", QStringLiteral("none"));
        type(form, u"txtUpperLabel", QStringLiteral("Spill level"));
        type(form, u"txtLowerLabel", QStringLiteral("0"));
        press(form, u"cmdOK");
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(storedTexts("UPPERLIMIT LOWERLIMIT UPPERLABEL LOWERLABEL"),
              QStringLiteral("UPPERLIMIT=12 LOWERLIMIT=0 UPPERLABEL=Spill level LOWERLABEL=0"));
}

TEST_F(FrmGraph, NumberTooLargeEndsTheOrderOfWritesWhereItStands)
{
    loadGraph("");
    open([](SetupForm& form) {
        type(form, u"txtLower", QStringLiteral("3"));
        type(form, u"txtUpper", QStringLiteral("1e999"));
        type(form, u"txtLowerLabel", QStringLiteral("Dry"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(errors, std::vector<int>{int(values::ErrorNumber::Overflow)});
    EXPECT_EQ(storedTexts("UPPERLIMIT LOWERLIMIT LOWERLABEL"),
              QStringLiteral("UPPERLIMIT=0 LOWERLIMIT=3 LOWERLABEL="));
}

TEST_F(FrmGraph, OkIsOneStepOfTheEditHistory)
{
    loadGraph("");
    open([](SetupForm& form) {
        type(form, u"txtUpper", QStringLiteral("12"));
        type(form, u"txtUpperLabel", QStringLiteral("Spill"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(panel->EditCount(), 1);
    panel->Undo();
    EXPECT_NE(stored("UPPERLIMIT"), QStringLiteral("12"));
}

TEST_F(FrmGraph, TableOfALogBufferHasNoForm)
{
    load("<CONTROL><TYPE>ZanDataControls.ENTViewer</TYPE></CONTROL>");
    EXPECT_FALSE(open([](SetupForm&) {}));
    EXPECT_TRUE(errors.empty());
}

} // namespace
} // namespace zan::dialogs
