#include "FormFixture.h"

namespace zan::dialogs {
namespace {

using FrmValueBar = FormTest;

const char* const elements = "BINDTO MIN MAX LOWLIMIT HIGHLIMIT LOWCOLOUR "
                             "HIGHCOLOUR NORMALCOLOUR FLASH LIMITOFFSET LIMITCHANNEL BOUNDLIMIT";
const char* const newBar = "<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE></CONTROL>";
const char* const boundBar =
    "<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE><BINDTO>RTD|FLOW</BINDTO><MIN>-10</MIN><MAX>90.5</MAX>"
    "<LOWLIMIT>5</LOWLIMIT><HIGHLIMIT>70</HIGHLIMIT><LOWCOLOUR>255</LOWCOLOUR><HIGHCOLOUR>65280</HIGHCOLOUR>"
    "<NORMALCOLOUR>16711680</NORMALCOLOUR><FLASH>-1</FLASH><LIMITOFFSET>2.5</LIMITOFFSET>"
    "<LIMITCHANNEL>logger|batt</LIMITCHANNEL><BOUNDLIMIT>-1</BOUNDLIMIT></CONTROL>";

TEST_F(FrmValueBar, HasItsTitleItsTabAndItsRowsInOrder)
{
    load(newBar);
    ASSERT_TRUE(open([](SetupForm& form) {
        EXPECT_EQ(form.name(), QStringLiteral("frmValueBar"));
        EXPECT_EQ(form.title(), QStringLiteral("Value Bar Setup"));
        EXPECT_EQ(form.description().width, 5400);
        EXPECT_EQ(form.description().height, 7560);
        EXPECT_EQ(tabs(form), QStringLiteral("&Actions"));
        EXPECT_EQ(
            rows(form),
            QStringLiteral("0 txtFilter=; 0 lvChannels=Test Channel; 0 obFixed=Fixed mode; 0 obBound=Bound Mode; "
                           "0 txtMin=Min; 0 txtMax=Max; 0 fraFixed=; 0 txtLow=Low Threshold; "
                           "0 txtHigh=High Threshold; 0 fraBound=; 0 cboLimitChannel=Limit Channel; "
                           "0 txtLimitOffset=Limit Offset; 0 picLow=Low Colour; 0 picHigh=High Colour; "
                           "0 picNormal=Normal Colour; 0 cbFlash=Flash; -1 cmdOK=&OK; -1 cmdCancel=&Cancel; "
                           "-1 cmdApply=&Apply"));
        EXPECT_EQ(form.field(u"obFixed").toolTip(), QStringLiteral("Thresholds are fixed"));
        EXPECT_EQ(form.field(u"obBound").toolTip(), QStringLiteral("Thresholds are bound to a channel"));
    }));
}

TEST_F(FrmValueBar, FieldsShowWhatTheBarHasAndNotWhatTheNodeSays)
{
    load(boundBar);
    live(1)->put(values::Name("Min"), -20.25);
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtMin"), QStringLiteral("-20.25"));
        EXPECT_EQ(text(form, u"txtMax"), QStringLiteral("90.5"));
        EXPECT_EQ(text(form, u"txtLow"), QStringLiteral("-2.5")); // bound to a channel that stands at 0
        EXPECT_EQ(text(form, u"txtHigh"), QStringLiteral("2.5"));
        EXPECT_EQ(form.field(u"picNormal").backColour()->code, 16711680);
        EXPECT_EQ(form.field(u"cbFlash").value(), 1);
        EXPECT_EQ(text(form, u"txtLimitOffset"), QStringLiteral("2.5"));
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("Flow"));
        EXPECT_EQ(text(form, u"cboLimitChannel"), QStringLiteral("Battery"));
    });
}

TEST_F(FrmValueBar, ABoundLimitOtherThanZeroOpensInBoundModeWithItsFrameShowing)
{
    load(boundBar);
    open([](SetupForm& form) {
        EXPECT_TRUE(form.field(u"obBound").isChecked());
        EXPECT_TRUE(form.field(u"fraBound").isVisible());
        EXPECT_FALSE(form.field(u"fraFixed").isVisible());
        press(form, u"obFixed");
        EXPECT_TRUE(form.field(u"fraFixed").isVisible());
        EXPECT_FALSE(form.field(u"fraBound").isVisible());
    });
    load(newBar);
    open([](SetupForm& form) { EXPECT_TRUE(form.field(u"obFixed").isChecked()); }, 1);
}

TEST_F(FrmValueBar, TheLimitChannelsAreTheChannelsOfTheList)
{
    load(newBar);
    open([](SetupForm& form) {
        const std::vector<ListRow>& list = form.field(u"lvChannels").rows();
        const std::vector<ListRow>& combo = form.field(u"cboLimitChannel").rows();
        ASSERT_EQ(list.size(), 4u);
        ASSERT_EQ(combo.size(), 4u);
        for (std::size_t row = 0; row < list.size(); ++row) {
            EXPECT_EQ(combo[row].text, list[row].text);
            EXPECT_EQ(combo[row].key, list[row].key);
        }
        EXPECT_EQ(text(form, u"cboLimitChannel"), QStringLiteral("None"));
    });
}

TEST_F(FrmValueBar, EmptyFieldsAreStoredAsZero)
{
    load(newBar);
    open([](SetupForm& form) {
        type(form, u"txtMin", QString());
        type(form, u"txtLimitOffset", QString());
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("MIN"), QStringLiteral("0"));
    EXPECT_EQ(property(1, "Min"), QStringLiteral("0"));
    EXPECT_EQ(stored("LIMITOFFSET"), QStringLiteral("0"));
    EXPECT_EQ(stored("LIMITCHANNEL"), QString()) << "the row None stays as an empty element";
    EXPECT_EQ(stored("BOUNDLIMIT"), QStringLiteral("0"));
    open([](SetupForm& form) { EXPECT_EQ(text(form, u"txtLimitOffset"), QStringLiteral("0")); });
}

TEST_F(FrmValueBar, ALimitChannelThatIsGoneOpensWithNoneAndOkStoresAnEmptyOne)
{
    load("<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE><LIMITCHANNEL>RTD|GONE</LIMITCHANNEL></CONTROL>");
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"cboLimitChannel"), QStringLiteral("None"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("LIMITCHANNEL"), QString());
}

TEST_F(FrmValueBar, ApplyingStoresWhatTheBarHasMadeOfTheValues)
{
    load(newBar);
    forms.answer(QStringLiteral("colour:1"));
    forms.answer(QStringLiteral("colour:2"));
    forms.answer(QStringLiteral("colour:0"));
    open([this](SetupForm& form) {
        choose(form, u"lvChannels", QStringLiteral("Level"));
        type(form, u"txtMin", QStringLiteral(" -1.50x"));
        type(form, u"txtMax", QStringLiteral("1e3"));
        type(form, u"txtLow", QStringLiteral("none"));
        type(form, u"txtHigh", QStringLiteral("12"));
        for (const QStringView swatch : {u"picLow", u"picHigh", u"picNormal"})
            form.userDoubleClick(form.field(swatch));
        EXPECT_EQ(forms.boxes().back().title, QStringLiteral("Select text colour"));
        press(form, u"obBound");
        choose(form, u"cboLimitChannel", QStringLiteral("Battery"));
        type(form, u"txtLimitOffset", QStringLiteral("0.25"));
        press(form, u"cmdOK");
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(storedTexts(elements),
              QStringLiteral("BINDTO=RTD|LEVEL MIN=-1.5 MAX=1000 LOWLIMIT=0 HIGHLIMIT=12 LOWCOLOUR=1 HIGHCOLOUR=2 "
                             "NORMALCOLOUR=0 FLASH=0 LIMITOFFSET=0.25 LIMITCHANNEL=LOGGER|BATT BOUNDLIMIT=-1"));
    EXPECT_EQ(property(1, "Min"), QStringLiteral("-1.5"));
    EXPECT_EQ(property(1, "HighColour"), QStringLiteral("2"));
}

TEST_F(FrmValueBar, WhatStandsInTheHiddenFrameIsStoredToo)
{
    load(boundBar);
    open([](SetupForm& form) {
        press(form, u"obFixed");
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("BOUNDLIMIT"), QStringLiteral("0"));
    EXPECT_EQ(stored("LIMITCHANNEL"), QStringLiteral("LOGGER|BATT"));
    EXPECT_EQ(stored("LIMITOFFSET"), QStringLiteral("2.5"));
}

TEST_F(FrmValueBar, ARangeThatCannotBeDrawnStopsTheApplyThereWithTheEarlierStepsDone)
{
    load(boundBar);
    open([this](SetupForm& form) {
        choose(form, u"lvChannels", QStringLiteral("Level"));
        type(form, u"txtMin", QStringLiteral("90.5"));
        type(form, u"txtMax", QStringLiteral("200"));
        press(form, u"cmdOK");
        EXPECT_TRUE(form.isOpen());
        EXPECT_EQ(errors, std::vector<int>{11});
    });
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|LEVEL"));
    EXPECT_EQ(property(1, "Min"), QStringLiteral("90.5")) << "a bar keeps a refused value";
    EXPECT_EQ(property(1, "Max"), QStringLiteral("90.5"));
    EXPECT_EQ(stored("MIN"), QStringLiteral("-10"));
    panel->Undo();
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|FLOW"));
    EXPECT_EQ(property(1, "Min"), QStringLiteral("-10"));
}

TEST_F(FrmValueBar, ANumberTooLargeForTheBarIsAnOverflow)
{
    load(boundBar);
    open([this](SetupForm& form) {
        type(form, u"txtMax", QStringLiteral("1e999"));
        press(form, u"cmdApply");
        EXPECT_EQ(errors, std::vector<int>{6});
    });
    EXPECT_EQ(property(1, "Max"), QStringLiteral("90.5"));
}

TEST_F(FrmValueBar, AFillThatFailsKeepsWhatItHasUpToTheLimitChannel)
{
    load(boundBar);
    int asked = 0;
    logger->scheme->windows->onItem = [&] {
        if (++asked == 2)
            values::raise(values::ErrorNumber::PathFileAccess);
    };
    const bool wasShown = open([this](SetupForm& form) {
        logger->scheme->windows->onItem = nullptr;
        EXPECT_EQ(form.field(u"lvChannels").rows().size(), 3u);
        EXPECT_EQ(text(form, u"cboLimitChannel"), QStringLiteral("None"));
        EXPECT_TRUE(form.field(u"obBound").isChecked());
    });
    EXPECT_TRUE(wasShown);
    EXPECT_TRUE(errors.empty());
}

TEST_F(FrmValueBar, AnApplyIsOneStepAndUndoRestoresTheBarAndTheNode)
{
    load(boundBar);
    openAndPress(u"cmdApply");
    panel->editor().history().clear();
    const QString before = storedTexts(elements);
    open([this](SetupForm& form) {
        type(form, u"txtMin", QStringLiteral("200"));
        type(form, u"txtMax", QStringLiteral("300"));
        press(form, u"obFixed");
        press(form, u"cmdApply");
        press(form, u"cmdApply");
        EXPECT_EQ(panel->EditCount(), 1);
    });
    panel->Undo();
    EXPECT_EQ(storedTexts(elements), before);
    EXPECT_EQ(property(1, "Min"), QStringLiteral("-10"));
    EXPECT_EQ(property(1, "Max"), QStringLiteral("90.5"));
}

} // namespace
} // namespace zan::dialogs
