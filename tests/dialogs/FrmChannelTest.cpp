#include "FormFixture.h"

#include <QLabel>

namespace zan::dialogs {
namespace {

using FrmChannel = FormTest;

const char* const freeLabel = "<CONTROL><TYPE>VB.Label</TYPE><CAPTION>Stage</CAPTION></CONTROL>";
const char* const boundLabel = "<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|LEVEL</BINDTO></CONTROL>";

QString row(Field& field)
{
    return field.name() + QLatin1Char('=') + field.caption() + QLatin1Char('/') +
           QString::number(field.row().maxLength);
}

TEST_F(FrmChannel, TheParametersOfAChannelStandInTheirOrderWithCaptionsLimitsAndFirstTexts)
{
    load(freeLabel);
    ASSERT_TRUE(open([](SetupForm& form) {
        EXPECT_EQ(form.title(), QStringLiteral("Channel Setup"));
        EXPECT_EQ(form.description().width, 7710);
        EXPECT_EQ(form.description().height, 6000);
        QStringList rows, texts;
        for (Field& field : form.fields()) {
            if (field.row().at != At::Channel)
                continue;
            rows << row(field);
            if (field.isText())
                texts << field.text();
        }
        EXPECT_EQ(rows,
                  (QStringList{QStringLiteral("txtLabel=Channel Label:/0"), QStringLiteral("txtUnits=Units:/0"),
                               QStringLiteral("cbVisible=Show Channel/0"),
                               QStringLiteral("cboDataType=Input Data Type:/0"),
                               QStringLiteral("cboBaseAddr=Base Address:/0"),
                               QStringLiteral("cbCDT=Protected (CDT)/0"), QStringLiteral("txtBytes=Number Bytes/3"),
                               QStringLiteral("txtMult=Multiplier:/10"), QStringLiteral("txtOffset=Offset:/10"),
                               QStringLiteral("cboFormula=Formula:/0"), QStringLiteral("txtFormat=Format:/10")}));
        EXPECT_EQ(texts, (QStringList{QStringLiteral("Label"), QStringLiteral("Units"), QStringLiteral("Address"),
                                      QStringLiteral("Bytes"), QStringLiteral("Multiplier"),
                                      QStringLiteral("Offset"), QStringLiteral("Format")}));
        EXPECT_EQ(form.field(u"cboDataType").rows().size(), 9u);
        EXPECT_EQ(form.field(u"cboDataType").rows()[6].text, QStringLiteral("String"));
    }));
}

TEST_F(FrmChannel, TheBindingListHasItsTwoEntriesAndEveryWindow)
{
    load(freeLabel);
    open([](SetupForm& form) {
        QStringList rows;
        for (const ListRow& entry : form.field(u"cboBind").rows())
            rows << entry.text;
        EXPECT_EQ(rows, (QStringList{QStringLiteral("No Channel"), QStringLiteral("ECAN Web Service"),
                                     QStringLiteral("RTD"), QStringLiteral("LOGGER"), QStringLiteral("A")}));
        EXPECT_EQ(text(form, u"cboBind"), QStringLiteral("No Channel"));
        EXPECT_EQ(text(form, u"txtCaption"), QStringLiteral("Stage"));
        EXPECT_TRUE(form.field(u"fraCaption").isVisible());
        EXPECT_FALSE(form.field(u"fraChannels").isVisible());
        EXPECT_FALSE(form.field(u"fraECANURL").isVisible());
        EXPECT_EQ(form.field(u"lboChannels").rows().front().text, QStringLiteral("<None>"));
        EXPECT_FALSE(form.field(u"lboChannels").isEnabled());
    });
}

TEST_F(FrmChannel, AChannelOfTheLoggerIsShownWithItsFieldsDisabledAndOneOfTheRtdWithThemEnabled)
{
    addChannel("LOGGER", "B0", "Zero", "");
    addChannel("LOGGER", "B1", "One", "");
    load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>LOGGER|B0</BINDTO></CONTROL>"
         "<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|LEVEL</BINDTO></CONTROL>");
    open([](SetupForm& form) {
        EXPECT_TRUE(form.field(u"fraChannels").isVisible());
        EXPECT_FALSE(form.field(u"txtLabel").isEnabled());
        EXPECT_FALSE(form.field(u"cmdAdd").isEnabled());
    });
    open(
        [](SetupForm& form) {
            EXPECT_TRUE(form.field(u"txtLabel").isEnabled());
            EXPECT_TRUE(form.field(u"cmdAdd").isEnabled());
            EXPECT_TRUE(form.field(u"cmdRemove").isEnabled());
        },
        2);
}

TEST_F(FrmChannel, TheRowThatIsShownIsTwoFurtherAndTheOneThatIsBoundOneFurther)
{
    addChannel("RTD", "FIRST", "First", "a");
    addChannel("RTD", "SECOND", "Second", "b");
    load(freeLabel); // LEVEL and FLOW come after
    open([](SetupForm& form) {
        choose(form, u"cboBind", QStringLiteral("RTD"));
        EXPECT_EQ(form.field(u"lboChannels").listIndex(), -1);
        choose(form, u"lboChannels", QStringLiteral("Second - b"));  // index 1
        EXPECT_EQ(text(form, u"txtLabel"), QStringLiteral("Level")); // Item(3)
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|SECOND")); // Item(2)
    EXPECT_EQ(channel("RTD", "SECOND")->useCount, 1);
}

TEST_F(FrmChannel, OpeningSelectsTheRowOneBelowTheBoundChannelsIndexWhateverRowsAreLeftOut)
{
    addChannel("RTD", "INNER", "Inner", "")->baseAddress = -1;
    load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|LEVEL</BINDTO></CONTROL>"); // index 2 of the window, row 0
    open([](SetupForm& form) {
        EXPECT_EQ(form.field(u"lboChannels").rows().size(), 2u);
        EXPECT_EQ(form.field(u"lboChannels").listIndex(), 1);
        EXPECT_EQ(text(form, u"lboChannels"), QStringLiteral("Flow - l/s"));
    });
}

TEST_F(FrmChannel, WithNoRowSelectedWhatIsTypedGoesToTheFirstChannel)
{
    load(freeLabel);
    open([](SetupForm& form) {
        choose(form, u"cboBind", QStringLiteral("RTD"));
        type(form, u"txtLabel", QStringLiteral("Typed"));
        press(form, u"cmdCancel");
    });
    EXPECT_EQ(channel("RTD", "LEVEL")->label, QStringLiteral("Typed")); // and Cancel takes nothing back
}

TEST_F(FrmChannel, EachFieldIsConvertedAndWrittenAsItIsTyped)
{
    load(freeLabel);
    open([](SetupForm& form) {
        choose(form, u"cboBind", QStringLiteral("RTD"));
        type(form, u"txtUnits", QStringLiteral("mm"));
        type(form, u"cboBaseAddr", QStringLiteral("12.5abc"));
        type(form, u"txtBytes", QStringLiteral("12345"));
        type(form, u"txtMult", QStringLiteral(" 0.25x"));
        type(form, u"txtOffset", QStringLiteral("none"));
        type(form, u"txtFormat", QStringLiteral("0.00"));
        form.userClick(form.field(u"cbCDT"));
        choose(form, u"cboDataType", QStringLiteral("Signed Long"));
    });
    const auto level = channel("RTD", "LEVEL");
    EXPECT_EQ(level->units, QStringLiteral("mm"));
    EXPECT_EQ(level->baseAddress, 12); // half to even
    EXPECT_EQ(level->bytes, 123);      // three characters
    EXPECT_EQ(level->multiplier, 0.25F);
    EXPECT_EQ(level->offset, 0.0F);
    EXPECT_EQ(level->format, QStringLiteral("0.00"));
    EXPECT_TRUE(level->cdt);
    EXPECT_EQ(level->dataType, 5);
}

TEST_F(FrmChannel, OpeningAloneTurnsAnEmptyFormulaIntoNoneAndChangesNoOtherParameter)
{
    const auto first = addChannel("RTD", "FIRST", "First", "a");
    const auto shown = addChannel("RTD", "SHOWN", "Shown", "b");
    shown->multiplier = 1.2345678e-05F; // more characters than can be typed
    shown->bytes = 1234;
    load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|FIRST</BINDTO></CONTROL>");
    open([](SetupForm& form) {
        EXPECT_EQ(form.field(u"cboFormula").rows().size(), 1u);
        EXPECT_EQ(text(form, u"cboFormula"), QStringLiteral("None"));
    });
    EXPECT_EQ(shown->formula, QStringLiteral("None"));
    EXPECT_EQ(first->formula, QString());
    EXPECT_EQ(shown->multiplier, 1.2345678e-05F);
    EXPECT_EQ(shown->bytes, 1234);
}

TEST_F(FrmChannel, OnlyAStringHasALengthAlsoInAReadOnlyWindow)
{
    addChannel("LOGGER", "B0", "Zero", "");
    addChannel("LOGGER", "B1", "One", "")->dataType = 6;
    load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>LOGGER|B0</BINDTO></CONTROL>");
    open([](SetupForm& form) {
        EXPECT_TRUE(form.field(u"txtBytes").isEnabled());
        EXPECT_FALSE(form.field(u"txtMult").isEnabled());
    });
}

TEST_F(FrmChannel, TheLastRowShowsAChannelThatTheWindowDoesNotHaveAndTheHostIsTold)
{
    load(freeLabel);
    open([this](SetupForm& form) {
        choose(form, u"cboBind", QStringLiteral("RTD"));
        choose(form, u"lboChannels", QStringLiteral("Flow - l/s"));
        EXPECT_EQ(errors, std::vector<int>{9});
        EXPECT_TRUE(form.isOpen());
    });
}

TEST_F(FrmChannel, ApplyingAWindowWithoutARowAsksForTheItemZero)
{
    load(boundLabel);
    open([](SetupForm& form) {
        choose(form, u"cboBind", QStringLiteral("LOGGER"));
        press(form, u"cmdOK");
        EXPECT_TRUE(form.isOpen());
    });
    EXPECT_EQ(errors, std::vector<int>{9});
}

TEST_F(FrmChannel, AControlWhoseWindowIsGoneButWhoseChannelLivesFallsBackToNoChannel)
{
    load(boundLabel);
    wrapper()->setBindTo(QStringLiteral("GONE|LEVEL"));
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"cboBind"), QStringLiteral("No Channel"));
        EXPECT_EQ(text(form, u"txtSiteNo"), QStringLiteral("0"));
    });
}

TEST_F(FrmChannel, ABindTextThatIsNeitherChannelNorEcanOpensWithoutAChannelAndOkClearsIt)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>ecansvc|1|2</BINDTO></CONTROL>");
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"cboBind"), QStringLiteral("No Channel"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("-"));
}

TEST_F(FrmChannel, SwitchingToEcanTakesOneFromTheUseCountAndLeavesTheChannel)
{
    load(boundLabel);
    EXPECT_EQ(channel("RTD", "LEVEL")->useCount, 1);
    open([](SetupForm& form) {
        choose(form, u"cboBind", QStringLiteral("ECAN Web Service"));
        EXPECT_TRUE(form.field(u"fraECANURL").isVisible());
        form.userClick(form.field(u"obSVC"));
        type(form, u"txtSiteNo", QStringLiteral(" 12 "));
        type(form, u"txtBand", QStringLiteral("B"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("ECANSVC|12|B"));
    EXPECT_EQ(channel("RTD", "LEVEL")->useCount, 0);
    ASSERT_TRUE(wrapper()->Channel());
    EXPECT_EQ(stored("TEXT"), QStringLiteral("ECAN Web Service:"));
    EXPECT_EQ(property(1, "Caption"), QStringLiteral("ECAN Web Service:"));
}

TEST_F(FrmChannel, EcanWithNeitherOptionWritesAScrapeOfNothing)
{
    load(freeLabel);
    open([](SetupForm& form) {
        choose(form, u"cboBind", QStringLiteral("ECAN Web Service"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("ECANSCRAPE||"));
}

TEST_F(FrmChannel, AnEcanUrlLosesWhatStandsBehindABar)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>ECANSCRAPE|7|http://x/?a=1|2</BINDTO></CONTROL>");
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"cboBind"), QStringLiteral("ECAN Web Service"));
        EXPECT_TRUE(form.field(u"obScrape").isChecked());
        EXPECT_EQ(text(form, u"txtScrapeSiteNumber"), QStringLiteral("7"));
        EXPECT_EQ(text(form, u"txtScrapeURL"), QStringLiteral("http://x/?a=1"));
        EXPECT_FALSE(form.field(u"txtSiteNo").isEnabled());
        EXPECT_FALSE(form.field(u"lblSVCBand").isEnabled());
        EXPECT_TRUE(form.field(u"lblScrapeURL").isEnabled());
    });
}

TEST_F(FrmChannel, EcanOnATextBoxFailsAtTheCaptionAndStopsThere)
{
    load("<CONTROL><TYPE>VB.TextBox</TYPE><TEXT>abc</TEXT></CONTROL>");
    open([](SetupForm& form) {
        choose(form, u"cboBind", QStringLiteral("ECAN Web Service"));
        type(form, u"txtTooltip", QStringLiteral("kept"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(errors, std::vector<int>{438});
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("-"));
    EXPECT_EQ(stored("TOOLTIPTEXT"), QStringLiteral("kept"));
    EXPECT_EQ(stored("SHOWLABELS"), QStringLiteral("-"));
}

TEST_F(FrmChannel, TheFixedTextOfATextBoxIsItsTextAndOfALabelItsCaption)
{
    load("<CONTROL><TYPE>VB.TextBox</TYPE></CONTROL><CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
    for (const int place : {1, 2}) {
        open(
            [](SetupForm& form) {
                type(form, u"txtCaption", QStringLiteral("Fixed"));
                press(form, u"cmdOK");
            },
            place);
    }
    EXPECT_EQ(element(node(1), "TEXT"), QStringLiteral("Fixed"));
    EXPECT_EQ(element(node(1), "CAPTION"), QStringLiteral("-"));
    EXPECT_EQ(element(node(2), "CAPTION"), QStringLiteral("Fixed"));
    EXPECT_EQ(property(2, "Caption"), QStringLiteral("Fixed"));
}

TEST_F(FrmChannel, AStoredMinusOneOpensUncheckedAndOkStoresZero)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><SHOWLABELS>-1</SHOWLABELS><ADDLABELSEPERATORS>2</ADDLABELSEPERATORS>"
         "</CONTROL>");
    open([](SetupForm& form) {
        EXPECT_EQ(form.field(u"cbShowLabels").value(), 0);
        EXPECT_EQ(form.field(u"cbAddSeperator").value(), 2);
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("SHOWLABELS"), QStringLiteral("0"));
    EXPECT_EQ(stored("ADDLABELSEPERATORS"), QStringLiteral("2"));
}

TEST_F(FrmChannel, ApplyingOneChannelTwiceKeepsItsUseCountLevel)
{
    load(boundLabel);
    open([this](SetupForm& form) {
        const int before = channel("RTD", "LEVEL")->useCount;
        press(form, u"cmdApply");
        press(form, u"cmdApply");
        EXPECT_EQ(channel("RTD", "LEVEL")->useCount, before);
        EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|LEVEL"));
    });
}

TEST_F(FrmChannel, LettersTypedInTheListChooseTheFirstRowThatBeginsWithThem)
{
    load(boundLabel);
    open([](SetupForm& form) {
        ASSERT_EQ(form.field(u"lboChannels").listIndex(), 0);
        typeInto(form, u"lboChannels", QStringLiteral("fl"));
        EXPECT_EQ(text(form, u"lboChannels"), QStringLiteral("Flow - l/s"));
    });
}

TEST_F(FrmChannel, UndoingAnApplyRestoresTheCountsOfBothChannelsAndTheUnitsOfTheOldOne)
{
    load(boundLabel);
    channel("RTD", "LEVEL")->useCount = 0;
    open([](SetupForm& form) {
        form.userSelect(form.field(u"lboChannels"), 1);
        press(form, u"cmdOK");
    });
    ASSERT_EQ(channel("RTD", "LEVEL")->useCount, -1);
    ASSERT_EQ(channel("RTD", "LEVEL")->units, QStringLiteral("0"));
    ASSERT_EQ(channel("RTD", "FLOW")->useCount, 1);
    panel->Undo();
    EXPECT_EQ(channel("RTD", "LEVEL")->useCount, 0);
    EXPECT_EQ(channel("RTD", "LEVEL")->units, QStringLiteral("m"));
    EXPECT_EQ(channel("RTD", "FLOW")->useCount, 0);
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|LEVEL"));
    panel->Redo();
    EXPECT_EQ(channel("RTD", "LEVEL")->useCount, -1);
    EXPECT_EQ(channel("RTD", "LEVEL")->units, QStringLiteral("0"));
}

TEST_F(FrmChannel, ACountThatFallsBelowZeroPutsZeroIntoTheUnits)
{
    load(boundLabel);
    channel("RTD", "LEVEL")->useCount = 0;
    open([](SetupForm& form) {
        choose(form, u"cboBind", QStringLiteral("No Channel"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(channel("RTD", "LEVEL")->units, QStringLiteral("0"));
    EXPECT_EQ(channel("RTD", "LEVEL")->useCount, -1);
}

TEST_F(FrmChannel, AColourThatIsPickedReachesTheControlAndItFollowsTheWindowNoLonger)
{
    load(freeLabel);
    wrapper()->setUseWindowSettings(true);
    forms.answer(QStringLiteral("colour:255"));
    open([this](SetupForm& form) {
        press(form, u"cmdBackCol");
        EXPECT_EQ(forms.boxes().back().title, QStringLiteral("Select text colour"));
        EXPECT_EQ(form.field(u"lblExample").backColour()->code, 255);
        EXPECT_NE(wrapper()->BackColour().code, 255);
        press(form, u"cmdOK");
    });
    EXPECT_EQ(wrapper()->BackColour().code, 255);
    EXPECT_FALSE(wrapper()->UseWindowSettings());
}

TEST_F(FrmChannel, TheBoxForTheDosCharacterSetStartsUncheckedAndSetsTheSet)
{
    load(freeLabel);
    open([](SetupForm& form) {
        form.editFont->setCharset(255);
        EXPECT_EQ(form.field(u"cbDOSCharSet").value(), 0);
        form.userClick(form.field(u"cbDOSCharSet"));
        EXPECT_EQ(form.editFont->charset(), 255);
        form.userClick(form.field(u"cbDOSCharSet"));
        EXPECT_EQ(form.editFont->charset(), 0);
    });
}

TEST_F(FrmChannel, AnAddedChannelStaysAfterCancelAndItsRowHasNoUnits)
{
    load(boundLabel);
    open([](SetupForm& form) {
        press(form, u"cmdAdd");
        EXPECT_EQ(form.field(u"lboChannels").rows().back().text, QStringLiteral("New"));
        press(form, u"cmdRemove"); // does nothing
        press(form, u"cmdCancel");
    });
    const auto window = logger->scheme->window(QStringLiteral("RTD"));
    ASSERT_EQ(window->Count(), 3);
    EXPECT_EQ(window->channels.back()->label, QStringLiteral("New"));
    EXPECT_TRUE(window->channels.back()->visible);
}

TEST_F(FrmChannel, EscClosesItAndWritesNothing)
{
    load(freeLabel);
    open([](SetupForm& form) {
        QDialog* dialog = form.dialog(nullptr);
        dialog->show();
        type(form, u"txtTooltip", QStringLiteral("lost"));
        key(*dialog, Qt::Key_Escape);
        EXPECT_FALSE(form.isOpen());
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_EQ(wrapper()->ToolTipText(), QString());
}

TEST_F(FrmChannel, TheValueOfTheChannelThatIsShownFollowsTheLoggerAndIsHeldForNothingMore)
{
    addChannel("RTD", "FIRST", "First", "");
    const auto shown = addChannel("RTD", "SHOWN", "Shown", "m");
    shown->format = QStringLiteral("0.00");
    load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|FIRST</BINDTO></CONTROL>");
    open([&](SetupForm& form) {
        EXPECT_EQ(text(form, u"lblNow"), QStringLiteral("Now: not connected"));
        logger->link->enter(site::LinkState::Connected);
        EXPECT_EQ(text(form, u"lblNow"), QStringLiteral("Now: no data yet"));
        shown->value = 3.417;
        const QString before = logger->scheme->windows->root.xml();
        Q_EMIT logger->NewBenchData();
        EXPECT_EQ(text(form, u"lblNow"), QStringLiteral("Now: 3.42 m"));
        type(form, u"txtFormat", QStringLiteral("0.0"));
        EXPECT_EQ(text(form, u"lblNow"), QStringLiteral("Now: 3.4 m"));
        EXPECT_TRUE(logger->live->writes.empty());
        logger->link->enter(site::LinkState::Broken);
        EXPECT_EQ(text(form, u"lblNow"), QStringLiteral("Now: not connected"));
        press(form, u"cmdCancel");
        Q_EMIT logger->NewBenchData();
    });
}

TEST_F(FrmChannel, NoWidgetOfItsWindowIsCutOnEitherTabAtTwiceTheFont)
{
    load(boundLabel);
    open([](SetupForm& form) {
        QDialog* dialog = form.dialog(nullptr);
        dialog->show();
        EXPECT_EQ(dialog->size(), QSize(7710 / 15, 6000 / 15));
        QFont large = dialog->font();
        large.setPointSizeF(large.pointSizeF() * 2);
        dialog->setFont(large);
        QCoreApplication::processEvents();
        for (const int tab : {0, 1}) {
            form.userTab(tab);
            QCoreApplication::processEvents();
            for (const QWidget* widget : dialog->findChildren<QWidget*>()) {
                const auto* label = qobject_cast<const QLabel*>(widget);
                if (!label || !label->isVisible() || !label->objectName().isEmpty())
                    continue;
                EXPECT_GE(label->width(), label->minimumSizeHint().width()) << label->text().toStdString();
            }
        }
    });
}

} // namespace
} // namespace zan::dialogs
