// A panel at a moment of the past: what it shows.

#include "TimeTravelFixture.h"

#include "document/XMLOps.h"
#include "site/LocalTime.h"
#include "support/Properties.h"
#include "surface/host/Surface.h"

using namespace zan;
using namespace zan::window;

// What is shown ------------------------------------------------------------------------------------------------

TEST_F(TimeTravel, ALabelShowsTheStoredValueAndThenTheLiveOneAtOnce)
{
    loadLabel();
    EXPECT_EQ(caption(), u"5");
    panel->showMoment(Moment);
    EXPECT_EQ(caption(), u"3");
    EXPECT_FALSE(panel->IsLive());
    level->value = 6;
    panel->ShowLive();
    EXPECT_EQ(caption(), u"6");
    EXPECT_TRUE(panel->IsLive());
}

TEST_F(TimeTravel, LabelUnitsAndFormatStandBesideTheStoredValue)
{
    level = channel("LEVEL", 5);
    level->units = QStringLiteral("m");
    level->format = QStringLiteral("0.00");
    record(1, Moment, 3);
    load(bound("VB.Label", "<SHOWLABELS>-1</SHOWLABELS><ADDLABELSEPERATORS>-1</ADDLABELSEPERATORS>"));
    panel->showMoment(Moment);
    EXPECT_EQ(caption(), u"LEVEL: 3.00 m");
}

TEST_F(TimeTravel, ADateIsLocalTime)
{
    loadLabel();
    panel->object()->invoke(Name("ShowAt"), binding::Access::Get,
                            std::array{Variant(site::dateOf(Moment + Second))});
    EXPECT_EQ(panel->time().moment(), Moment + Second);
    EXPECT_FALSE(values::toBoolean(panel->object()->get(Name("IsLive"))));
    panel->object()->invoke(Name("ShowLive"), binding::Access::Get, {});
    EXPECT_TRUE(values::toBoolean(panel->object()->get(Name("IsLive"))));
}

TEST_F(TimeTravel, TextBoxCheckBoxAndBarsShowTheStoredValue)
{
    level = channel("LEVEL", 0);
    record(1, Moment, 40);
    load(bound("VB.TextBox") +
         bound("VB.CheckBox", "<ACTION><CHECKEDCAPTION>on</CHECKEDCAPTION><UNCHECKEDCAPTION>off</UNCHECKEDCAPTION>"
                              "</ACTION>") +
         bound("ZanBenchWindow.ValueBar") + bound("MSComctlLib.ProgressBar"));
    EXPECT_EQ(property(2, "Caption"), u"off");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "Text"), u"40");
    EXPECT_EQ(property(2, "Caption"), u"on");
    EXPECT_EQ(property(2, "Value"), u"1");
    EXPECT_EQ(property(3, "Value"), u"40");
    EXPECT_EQ(property(4, "Value"), u"40");
    panel->ShowLive();
    EXPECT_EQ(property(1, "Text"), u"0");
    EXPECT_EQ(property(2, "Caption"), u"off");
    EXPECT_EQ(property(3, "Value"), u"0");
    EXPECT_EQ(property(4, "Value"), u"0");
}

TEST_F(TimeTravel, LimitsThatFollowAChannelFollowItsPast)
{
    level = channel("LEVEL", 5);
    channel("LIMIT", 70);
    record(1, Moment, 3);
    record(2, Moment, 20);
    load(bound("ZanBenchWindow.ValueBar", "<BOUNDLIMIT>-1</BOUNDLIMIT><LIMITCHANNEL>RTD|LIMIT</LIMITCHANNEL>"
                                          "<LIMITOFFSET>4</LIMITOFFSET>"));
    EXPECT_EQ(property(1, "HighLimit"), u"74");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "HighLimit"), u"24");
    EXPECT_EQ(property(1, "LowLimit"), u"16");
    panel->ShowLive();
    EXPECT_EQ(property(1, "HighLimit"), u"74");
}

TEST_F(TimeTravel, ABarWhoseLimitIsNotStoredIsCovered)
{
    level = channel("LEVEL", 5);
    logger->setValue(QStringLiteral("RTD"), QStringLiteral("LIMIT"), 70);
    record(1, Moment, 3);
    load(bound("ZanBenchWindow.ValueBar", "<BOUNDLIMIT>-1</BOUNDLIMIT><LIMITCHANNEL>RTD|LIMIT</LIMITCHANNEL>"));
    panel->showMoment(Moment);
    EXPECT_TRUE(isCovered(1));
    panel->ShowLive();
    EXPECT_TRUE(live(1)->visible());
    EXPECT_EQ(property(1, "HighLimit"), u"70");
}

TEST_F(TimeTravel, ALightComparesTheStoredValue)
{
    level = channel("LEVEL", 5);
    record(1, Moment, 9);
    load(bound("ZanBenchWindow.StatusLight", "<COMPAREVALUE>9</COMPAREVALUE>"));
    EXPECT_EQ(property(1, "Value"), u"False");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "Value"), u"True");
    EXPECT_FALSE(isCovered(1));
    panel->ShowLive();
    EXPECT_EQ(property(1, "Value"), u"False");
}

TEST_F(TimeTravel, ABitTestReadsTheWordThatTheStoredValueWasMadeOf)
{
    struct Row
    {
        std::int32_t type;
        float multiplier, offset;
        const char* formula;
        double stored;
        int bit;
        bool isKnown, isSet;
    };
    const Row rows[] = {
        {0, 1, 0, "", 4, 2, true, true},         {0, 1, 0, "", 4, 1, true, false},
        {0, 0, 0, "", 4, 2, true, true}, // a multiplier of 0 counts as 1
        {2, 0.5F, 10, "", 12, 2, true, true},    {1, 1, 0, "", -1, 7, true, true},
        {1, 1, 0, "", -1, 8, true, false},       {0, 1, 0, "", 4.4, 2, false, false},
        {0, 1, 0, "", 300, 2, false, false},     {7, 1, 0, "", 4, 2, false, false},
        {0, 1, 0, "SQUARE", 4, 2, false, false},
    };
    level = channel("LEVEL", 0);
    load(bound("ZanBenchWindow.StatusLight", "<COMPARISON>BIT SET=</COMPARISON>"));
    for (const Row& row : rows) {
        level->dataType = row.type;
        level->multiplier = row.multiplier;
        level->offset = row.offset;
        level->formula = QString::fromLatin1(row.formula);
        logger->live->memory[0] = 255; // what is there now does not count
        record(1, Moment, row.stored);
        document::XMLOps::SetAttribute(panel->Controls()->Control(Variant(1))->XMLNode(), Name("COMPAREVALUE"),
                                       QString::number(row.bit), true);
        panel->showMoment(Moment);
        EXPECT_EQ(!isCovered(1), row.isKnown) << row.stored << " bit " << row.bit;
        if (row.isKnown) {
            EXPECT_EQ(property(1, "Value"), row.isSet ? u"True" : u"False") << row.stored << " bit " << row.bit;
        }
        panel->ShowLive();
    }
}

TEST_F(TimeTravel, WhatTheConnectionWasLikeIsNotStoredAndIsCovered)
{
    load("<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><MODE>STATUS</MODE></CONTROL>");
    EXPECT_EQ(property(1, "Value"), u"True");
    panel->showMoment(Moment);
    EXPECT_TRUE(isCovered(1));
    EXPECT_FALSE(live(1)->visible());
    panel->ShowLive();
    EXPECT_TRUE(live(1)->visible());
    EXPECT_EQ(property(1, "Value"), u"True");
}

TEST_F(TimeTravel, AControlWithoutAChannelStaysAsItIs)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><CAPTION>Pump</CAPTION></CONTROL>"
         "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE></CONTROL>");
    test::put(*live(2), "Value", true);
    panel->showMoment(Moment);
    EXPECT_EQ(caption(1), u"Pump");
    EXPECT_EQ(property(2, "Value"), u"True");
    EXPECT_TRUE(live(2)->visible());
}

TEST_F(TimeTravel, ALabelOfRestrictionsSaysNothingOfThePast)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><CAPTION>told now</CAPTION><BINDTO>ECANSVC|1|1</BINDTO></CONTROL>");
    panel->showMoment(Moment);
    EXPECT_EQ(caption(), u"-");
    panel->ShowLive();
    EXPECT_NE(caption(), u"-");
}

// Nothing stored -----------------------------------------------------------------------------------------------

TEST_F(TimeTravel, WhatIsNotStoredIsADashAndNeverANumber)
{
    level = channel("LEVEL", 5);
    level->units = QStringLiteral("m");
    load(bound("VB.Label") + bound("VB.Label", "<SHOWLABELS>-1</SHOWLABELS>") + bound("VB.TextBox"));
    panel->showMoment(Moment);
    EXPECT_EQ(caption(1), u"-");
    EXPECT_EQ(caption(2), u"LEVEL- m");
    EXPECT_EQ(property(3, "Text"), u"-");
}

TEST_F(TimeTravel, AControlThatCannotSayThatNothingIsStoredIsCovered)
{
    level = channel("LEVEL", 1);
    load(bound("VB.CheckBox") + bound("ZanBenchWindow.StatusLight") + bound("ZanBenchWindow.ValueBar") +
         bound("MSComctlLib.ProgressBar"));
    panel->showMoment(Moment);
    for (int place = 1; place <= 4; ++place) {
        EXPECT_TRUE(isCovered(place)) << place;
        EXPECT_FALSE(live(place)->visible()) << place;
    }
    EXPECT_EQ(frame()->covers().size(), 4u);
    // A moment of which something is stored uncovers them, and so does the present.
    record(1, Moment + Second, 1);
    panel->showMoment(Moment + Second);
    EXPECT_TRUE(panel->Controls()->withoutRecord().empty());
    for (int place = 1; place <= 4; ++place)
        EXPECT_TRUE(live(place)->visible()) << place;
    panel->showMoment(Moment);
    panel->ShowLive();
    for (int place = 1; place <= 4; ++place)
        EXPECT_TRUE(live(place)->visible()) << place;
}

TEST_F(TimeTravel, AValueBehindAGapIsNone)
{
    loadLabel();
    panel->showMoment(Moment + 3 * Second);
    EXPECT_EQ(caption(), u"3");
    panel->showMoment(Moment + 3 * Second + 1);
    EXPECT_EQ(caption(), u"-");
    panel->showMoment(Moment - 1);
    EXPECT_EQ(caption(), u"-");
}

TEST_F(TimeTravel, ASeriesOfUnknownPeriodHasNoGaps)
{
    loadLabel();
    history->list[0].period = 0;
    panel->showMoment(Moment + 3'000'000 * Second / 100);
    EXPECT_EQ(caption(), u"3");
    history->list[0].period = std::numeric_limits<std::int64_t>::max();
    panel->showMoment(Moment + 3'000'000 * Second / 100);
    EXPECT_EQ(caption(), u"3");
}

TEST_F(TimeTravel, AControlWhoseUpdateFailsIsCoveredAndTheNextOneIsShown)
{
    level = channel("LEVEL", 1);
    record(1, Moment, QStringLiteral("no number"));
    load(bound("ZanBenchWindow.StatusLight") + bound("VB.Label"));
    panel->showMoment(Moment);
    EXPECT_TRUE(isCovered(1));
    EXPECT_EQ(caption(2), u"no number");
}

// The logger meanwhile -----------------------------------------------------------------------------------------

TEST_F(TimeTravel, EventsOfTheLoggerTouchNoControlUntilThePanelIsLiveAgain)
{
    level = channel("LEVEL", 5);
    record(1, Moment, 3);
    load(bound("VB.Label") + "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE></CONTROL>"
                             "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>VESPER</TYPE>"
                             "<FUNCTION>CONNECT</FUNCTION></ACTION></CONTROL>");
    EXPECT_EQ(caption(3), u"&Disconnect");
    test::put(*live(2), "Value", true);
    panel->showMoment(Moment);
    level->value = 8;
    Q_EMIT logger->NewBenchData();
    Q_EMIT logger->NewENTData();
    logger->link->enter(LinkState::Broken);
    EXPECT_EQ(caption(1), u"3");
    EXPECT_EQ(property(2, "Value"), u"True");
    EXPECT_EQ(caption(3), u"&Disconnect");
    EXPECT_TRUE(forms.boxes().empty());
    panel->ShowLive();
    EXPECT_EQ(caption(1), u"8");
    EXPECT_EQ(property(2, "Value"), u"False");
    EXPECT_EQ(caption(3), u"&Re-connect");
    EXPECT_EQ(forms.boxes().size(), 1u);
}

TEST_F(TimeTravel, ABarOutOfItsRangeGoesBackToWhatItShowedLive)
{
    level = channel("LEVEL", 20);
    record(1, Moment, 90);
    load(bound("MSComctlLib.ProgressBar"));
    EXPECT_EQ(property(1, "Value"), u"20");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "Value"), u"90");
    level->value = 5000; // refused by the bar
    panel->ShowLive();
    EXPECT_EQ(property(1, "Value"), u"20");
}

TEST_F(TimeTravel, ABoxThatWasJustClickedIsStillLeftAloneOnceWhenThePanelIsLiveAgain)
{
    level = channel("LEVEL", 0);
    record(1, Moment, 0);
    load(bound("VB.CheckBox"));
    test::put(*live(1), "Value", 1); // the click
    const document::Node node = panel->Controls()->Control(Variant(1))->XMLNode();
    ASSERT_EQ(document::XMLOps::GetAttribute(node, Name("IGNORESCAN")), u"-1");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "Value"), u"0");
    EXPECT_EQ(document::XMLOps::GetAttribute(node, Name("IGNORESCAN")), u"-1");
    panel->ShowLive(); // the scan that is left out
    EXPECT_EQ(property(1, "Value"), u"1");
    panel->Refresh();
    EXPECT_EQ(property(1, "Value"), u"0");
}

TEST_F(TimeTravel, OneQuestionIsAskedForAMomentHoweverManyControls)
{
    level = channel("LEVEL", 5);
    record(1, Moment, 3);
    QByteArray controls;
    for (int i = 0; i < 40; ++i)
        controls += bound("VB.Label");
    load(controls);
    panel->showMoment(Moment);
    EXPECT_EQ(history->asked, 1);
    EXPECT_EQ(caption(40), u"3");
    panel->Refresh();
    EXPECT_EQ(history->asked, 2);
}
