#include "FormFixture.h"

namespace zan::dialogs {
namespace {

using FrmProgressBar = FormTest;

const char* const newBar = "<CONTROL><TYPE>MSComctlLib.ProgressBar</TYPE></CONTROL>";
const char* const boundBar =
    "<CONTROL><TYPE>MSComctlLib.ProgressBar</TYPE><BINDTO>RTD|FLOW</BINDTO><MAX>300</MAX><MIN>200</MIN>"
    "<ORIENTATION>1</ORIENTATION><SCROLLING>1</SCROLLING></CONTROL>";

TEST_F(FrmProgressBar, HasItsTitleItsTabAndItsRowsInOrder)
{
    load(newBar);
    ASSERT_TRUE(open([](SetupForm& form) {
        EXPECT_EQ(form.name(), QStringLiteral("frmProgressBar"));
        EXPECT_EQ(form.title(), QStringLiteral("Progress Bar Setup"));
        EXPECT_EQ(form.description().width, 5370);
        EXPECT_EQ(form.description().height, 6585);
        EXPECT_EQ(tabs(form), QStringLiteral("&Actions"));
        EXPECT_EQ(rows(form),
                  QStringLiteral("0 txtFilter=; 0 lvChannels=Test Channel; 0 txtMin=Minimum; 0 txtMax=Maximum; "
                                 "0 fraOrientation=Orientation; 0 obHorizontal=Horizontal; 0 obVertical=Vertical; "
                                 "0 fraScrolling=Scrolling; 0 obStandard=Standard; 0 obSmooth=Smooth; "
                                 "-1 cmdOK=&OK; -1 cmdCancel=&Cancel; -1 cmdApply=&Apply"));
    }));
}

TEST_F(FrmProgressBar, FieldsShowWhatTheBarHas)
{
    load(boundBar);
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtMin"), QStringLiteral("200"));
        EXPECT_EQ(text(form, u"txtMax"), QStringLiteral("300"));
        EXPECT_TRUE(form.field(u"obVertical").isChecked());
        EXPECT_TRUE(form.field(u"obSmooth").isChecked());
    });
    load(newBar);
    open([](SetupForm& form) {
        EXPECT_TRUE(form.field(u"obHorizontal").isChecked());
        EXPECT_TRUE(form.field(u"obStandard").isChecked());
        press(form, u"obSmooth");
        EXPECT_TRUE(form.field(u"obHorizontal").isChecked()) << "each frame is a group of its own";
    });
}

TEST_F(FrmProgressBar, OpeningAloneAddsAnEmptyAction)
{
    load(newBar);
    openAndPress(u"cmdCancel");
    ASSERT_TRUE(action());
    EXPECT_FALSE(action().firstChildElement());
}

TEST_F(FrmProgressBar, TheTypedMinimumReachesTheBarAndTheNodeGetsTheMaximumForBoth)
{
    load(newBar);
    open([](SetupForm& form) {
        type(form, u"txtMin", QStringLiteral("10"));
        type(form, u"txtMax", QStringLiteral("100"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(property(1, "Min"), QStringLiteral("10"));
    EXPECT_EQ(property(1, "Max"), QStringLiteral("100"));
    EXPECT_EQ(stored("MAX"), QStringLiteral("100"));
    EXPECT_EQ(stored("MIN"), QStringLiteral("100"));
}

TEST_F(FrmProgressBar, AMaximumOfZeroTakesBothFromTheNode)
{
    load(boundBar);
    live(1)->put(values::Name("Min"), -5);
    open([](SetupForm& form) {
        type(form, u"txtMax", QString());
        press(form, u"cmdOK");
    });
    EXPECT_EQ(property(1, "Max"), QStringLiteral("0"));
    EXPECT_EQ(stored("MAX"), QStringLiteral("-"));
    EXPECT_EQ(stored("MIN"), QStringLiteral("-"));
}

TEST_F(FrmProgressBar, DirectionAndFillingAreStoredZeroIncluded)
{
    load(boundBar);
    open([](SetupForm& form) {
        press(form, u"obHorizontal");
        press(form, u"cmdApply");
    });
    EXPECT_EQ(property(1, "Orientation"), QStringLiteral("0"));
    EXPECT_EQ(stored("ORIENTATION"), QStringLiteral("0"));
    EXPECT_EQ(property(1, "Scrolling"), QStringLiteral("1"));
    EXPECT_EQ(stored("SCROLLING"), QStringLiteral("1"));
}

TEST_F(FrmProgressBar, TheRowNoneClearsTheBindingAndLeavesTheOtherSettingsInForce)
{
    load(boundBar);
    open([](SetupForm& form) {
        choose(form, u"lvChannels", QStringLiteral("None"));
        press(form, u"cmdOK");
    });
    EXPECT_FALSE(wrapper()->Channel());
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("-"));
    EXPECT_EQ(property(1, "Max"), QStringLiteral("300"));
    EXPECT_EQ(stored("ORIENTATION"), QStringLiteral("1"));
}

TEST_F(FrmProgressBar, ARangeThatTheBarRefusesStopsTheApplyThereWithTheEarlierStepsDone)
{
    load(boundBar);
    open([this](SetupForm& form) {
        choose(form, u"lvChannels", QStringLiteral("Level"));
        type(form, u"txtMax", QStringLiteral("250"));
        type(form, u"txtMin", QStringLiteral("250"));
        press(form, u"obHorizontal");
        press(form, u"cmdOK");
        EXPECT_TRUE(form.isOpen());
        EXPECT_EQ(errors, std::vector<int>{380});
    });
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|LEVEL"));
    EXPECT_EQ(property(1, "Max"), QStringLiteral("250"));
    EXPECT_EQ(property(1, "Min"), QStringLiteral("200"));
    EXPECT_EQ(stored("MAX"), QStringLiteral("300"));
    EXPECT_EQ(property(1, "Orientation"), QStringLiteral("1"));
}

TEST_F(FrmProgressBar, UndoRestoresARangeWhoeverOfItsEndsMustGoFirst)
{
    load(boundBar);
    live(1)->put(values::Name("Value"), 250);
    openAndPress(u"cmdApply");
    panel->editor().history().clear();
    live(1)->put(values::Name("Min"), 0);
    open([this](SetupForm& form) {
        type(form, u"txtMax", QStringLiteral("100"));
        type(form, u"txtMin", QStringLiteral("10"));
        press(form, u"obHorizontal");
        press(form, u"obStandard");
        press(form, u"cmdApply");
        press(form, u"cmdApply");
        EXPECT_EQ(panel->EditCount(), 1);
    });
    EXPECT_EQ(property(1, "Value"), QStringLiteral("100"));
    panel->Undo();
    EXPECT_EQ(property(1, "Min"), QStringLiteral("0"));
    EXPECT_EQ(property(1, "Max"), QStringLiteral("300"));
    EXPECT_EQ(property(1, "Value"), QStringLiteral("250"));
    EXPECT_EQ(property(1, "Orientation"), QStringLiteral("1"));
    EXPECT_EQ(stored("ORIENTATION"), QStringLiteral("1"));
    panel->Redo();
    EXPECT_EQ(property(1, "Min"), QStringLiteral("10"));
    EXPECT_EQ(property(1, "Max"), QStringLiteral("100"));
}

} // namespace
} // namespace zan::dialogs
