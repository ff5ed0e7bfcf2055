#include "FormFixture.h"

namespace zan::dialogs {
namespace {

using FrmStatusLight = FormTest;

const char* const elements = "BINDTO COMPARISON COMPAREVALUE TRUECAPTION FALSECAPTION TRUECOLOUR "
                             "FALSECOLOUR FLASH HIDEWHENTRUE HIDEWHENFALSE MODE PROGRAM";
const char* const newLight = "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE></CONTROL>";
const char* const programLight =
    "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><BINDTO>RTD|FLOW</BINDTO><MODE>PROGRAM</MODE>"
    "<PROGRAM>DATASTATUS</PROGRAM><COMPARISON>BIT SET=</COMPARISON><COMPAREVALUE>3</COMPAREVALUE>"
    "<TRUECAPTION>Up</TRUECAPTION><FALSECAPTION>Down</FALSECAPTION><TRUECOLOUR>65280</TRUECOLOUR>"
    "<FALSECOLOUR>12632256</FALSECOLOUR><FLASH>-1</FLASH><HIDEWHENTRUE>0</HIDEWHENTRUE>"
    "<HIDEWHENFALSE>7</HIDEWHENFALSE></CONTROL>";

QString colourOf(SetupForm& form, QStringView swatch)
{
    return QString::number(form.field(swatch).backColour().value_or(values::Colour{-1}).code);
}

TEST_F(FrmStatusLight, HasItsTitleItsTabsAndItsRowsInOrder)
{
    load(newLight);
    ASSERT_TRUE(open([](SetupForm& form) {
        EXPECT_EQ(form.name(), QStringLiteral("frmStatusLight"));
        EXPECT_EQ(form.title(), QStringLiteral("Status Light Setup"));
        EXPECT_EQ(form.description().width, 5385);
        EXPECT_EQ(form.description().height, 6615);
        EXPECT_EQ(tabs(form), QStringLiteral("&Actions,&Format"));
        EXPECT_EQ(
            rows(form),
            QStringLiteral("0 obChannel=Channel Status; 0 obProgram=Program Status; 0 fraChannel=Channel; "
                           "0 txtFilter=; 0 lvChannels=; 0 lblChannel=Channel; 0 cboComparison=; 0 txtValue=; "
                           "0 fraProgram=Program; 0 obConStat=Connected; 0 obDataStat=Data Valid; "
                           "0 txtTRUECaption=TRUE caption; 0 picTRUEColour=TRUE Colour; "
                           "0 cbHideWhenTrue=Hide; 0 txtFALSECaption=FALSE caption; "
                           "0 picFALSEColour=FALSE Colour; 0 cbHideWhenFalse=Hide; 0 cbFlash=Flash when TRUE; "
                           "1 txtTooltip=Tooltip Text; 1 cmdFont=F&ont; 1 Frame1=Example; "
                           "1 lblExample=EXAMPLE; -1 cmdOK=&OK; -1 cmdCancel=&Cancel; -1 cmdApply=&Apply"));
        QStringList comparisons;
        for (const ListRow& row : form.field(u"cboComparison").rows())
            comparisons << row.text;
        EXPECT_EQ(comparisons.join(u' '), QStringLiteral("< <= = >= > NOT= BIT SET= BIT CLEAR="));
    }));
}

TEST_F(FrmStatusLight, ANewLightOpensInChannelModeWithItsDefaults)
{
    load(newLight);
    open([](SetupForm& form) {
        EXPECT_TRUE(form.field(u"obChannel").isChecked());
        EXPECT_TRUE(form.field(u"fraChannel").isVisible());
        EXPECT_FALSE(form.field(u"fraProgram").isVisible());
        EXPECT_TRUE(form.field(u"obConStat").isChecked());
        EXPECT_EQ(text(form, u"cboComparison"), QStringLiteral("="));
        EXPECT_EQ(text(form, u"txtValue"), QStringLiteral("0"));
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("None"));
        EXPECT_EQ(text(form, u"txtTRUECaption"), QStringLiteral("TRUE"));
        EXPECT_EQ(text(form, u"txtFALSECaption"), QStringLiteral("FALSE"));
        EXPECT_EQ(colourOf(form, u"picTRUEColour"), QStringLiteral("255"));
        EXPECT_EQ(colourOf(form, u"picFALSEColour"), QStringLiteral("128"));
        for (const QStringView box : {u"cbFlash", u"cbHideWhenTrue", u"cbHideWhenFalse"})
            EXPECT_EQ(form.field(box).value(), 0);
    });
    // What a read takes as its default is in the document from then on.
    EXPECT_EQ(stored("MODE"), QStringLiteral("CHANNEL"));
    EXPECT_EQ(stored("COMPARISON"), QStringLiteral("="));
    EXPECT_EQ(stored("COMPAREVALUE"), QStringLiteral("-"));
}

TEST_F(FrmStatusLight, FieldsShowWhatTheNodeHolds)
{
    load(programLight);
    open([](SetupForm& form) {
        EXPECT_TRUE(form.field(u"obProgram").isChecked());
        EXPECT_FALSE(form.field(u"fraChannel").isVisible());
        EXPECT_TRUE(form.field(u"fraProgram").isVisible());
        EXPECT_TRUE(form.field(u"obDataStat").isChecked());
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("Flow"));
        EXPECT_EQ(text(form, u"cboComparison"), QStringLiteral("BIT SET="));
        EXPECT_EQ(text(form, u"txtValue"), QStringLiteral("3"));
        EXPECT_EQ(text(form, u"txtTRUECaption"), QStringLiteral("Up"));
        EXPECT_EQ(text(form, u"txtFALSECaption"), QStringLiteral("Down"));
        EXPECT_EQ(colourOf(form, u"picTRUEColour"), QStringLiteral("65280"));
        EXPECT_EQ(colourOf(form, u"picFALSEColour"), QStringLiteral("12632256"));
        EXPECT_EQ(form.field(u"cbFlash").value(), 1);
        EXPECT_EQ(form.field(u"cbHideWhenTrue").value(), 0);
        EXPECT_EQ(form.field(u"cbHideWhenFalse").value(), 1); // any number but 0
    });
}

TEST_F(FrmStatusLight, TheTrueCaptionComesFromTheLightAndTheFalseOneFromTheNode)
{
    load(programLight);
    live(1)->put(values::Name("TrueCaption"), QStringLiteral("live true"));
    live(1)->put(values::Name("FalseCaption"), QStringLiteral("live false"));
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtTRUECaption"), QStringLiteral("live true"));
        EXPECT_EQ(text(form, u"txtFALSECaption"), QStringLiteral("Down"));
    });
}

TEST_F(FrmStatusLight, AModeInSmallLettersOpensInProgramMode)
{
    load("<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><MODE>channel</MODE><PROGRAM>datastatus</PROGRAM>"
         "</CONTROL>");
    open([](SetupForm& form) {
        EXPECT_TRUE(form.field(u"obProgram").isChecked());
        EXPECT_TRUE(form.field(u"obConStat").isChecked());
    });
}

TEST_F(FrmStatusLight, AnUnknownComparisonShowsTheFirstOneAndOneInSmallLettersIsFound)
{
    load("<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><COMPARISON>LIKE</COMPARISON></CONTROL>"
         "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><COMPARISON>bit set=</COMPARISON></CONTROL>");
    open([](SetupForm& form) { EXPECT_EQ(text(form, u"cboComparison"), QStringLiteral("<")); });
    open([](SetupForm& form) { EXPECT_EQ(text(form, u"cboComparison"), QStringLiteral("BIT SET=")); }, 2);
}

TEST_F(FrmStatusLight, TheTwoOptionsSwapTheFramesAndWhatIsHiddenTakesNothing)
{
    load(newLight);
    open([](SetupForm& form) {
        press(form, u"obProgram");
        EXPECT_TRUE(form.field(u"fraProgram").isVisible());
        EXPECT_FALSE(form.field(u"fraChannel").isVisible());
        EXPECT_FALSE(form.field(u"obChannel").isChecked());
        EXPECT_FALSE(form.canUse(form.field(u"txtValue")));
        type(form, u"txtValue", QStringLiteral("9"));
        EXPECT_EQ(text(form, u"txtValue"), QStringLiteral("0"));
        press(form, u"obDataStat");
        EXPECT_TRUE(form.field(u"obProgram").isChecked()) << "the options of a frame are a group of their own";
        press(form, u"obChannel");
        EXPECT_TRUE(form.field(u"fraChannel").isVisible());
        EXPECT_FALSE(form.field(u"fraProgram").isVisible());
    });
}

TEST_F(FrmStatusLight, ApplyingWritesTheLightAndTheNode)
{
    load(newLight);
    forms.answer(QStringLiteral("colour:65280"));
    open([this](SetupForm& form) {
        choose(form, u"lvChannels", QStringLiteral("Level"));
        choose(form, u"cboComparison", QStringLiteral("NOT="));
        type(form, u"txtValue", QStringLiteral(" 12abc"));
        type(form, u"txtTRUECaption", QStringLiteral("Open"));
        type(form, u"txtFALSECaption", QStringLiteral("Shut"));
        form.userDoubleClick(form.field(u"picTRUEColour"));
        EXPECT_EQ(forms.boxes().back().title, QStringLiteral("Select text colour"));
        press(form, u"cbFlash");
        press(form, u"cbHideWhenFalse");
        type(form, u"txtTooltip", QStringLiteral("the gate"));
        press(form, u"cmdOK");
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(property(1, "TrueCaption"), QStringLiteral("Open"));
    EXPECT_EQ(property(1, "FalseCaption"), QStringLiteral("Shut"));
    EXPECT_EQ(property(1, "TrueColour"), QStringLiteral("65280"));
    EXPECT_EQ(property(1, "FalseColour"), QStringLiteral("128"));
    EXPECT_EQ(live(1)->get(values::Name("Flash")).boolean(), true);
    EXPECT_EQ(storedTexts(elements),
              QStringLiteral("BINDTO=RTD|LEVEL COMPARISON=NOT= COMPAREVALUE= 12abc TRUECAPTION=Open "
                             "FALSECAPTION=Shut TRUECOLOUR=65280 FALSECOLOUR=128 FLASH=-1 HIDEWHENTRUE=0 "
                             "HIDEWHENFALSE=-1 MODE=CHANNEL PROGRAM=CONNECTIONSTATUS"));
    EXPECT_EQ(wrapper()->ToolTipText(), QStringLiteral("the gate"));
    EXPECT_EQ(wrapper()->Channel()->Key(), QStringLiteral("LEVEL"));
}

TEST_F(FrmStatusLight, ALightInProgramModeKeepsItsComparisonAndItsChannel)
{
    load(programLight);
    openAndPress(u"cmdOK");
    EXPECT_EQ(storedTexts(elements),
              QStringLiteral("BINDTO=RTD|FLOW COMPARISON=BIT SET= COMPAREVALUE=3 TRUECAPTION=Up FALSECAPTION=Down "
                             "TRUECOLOUR=65280 FALSECOLOUR=12632256 FLASH=-1 HIDEWHENTRUE=0 HIDEWHENFALSE=-1 "
                             "MODE=PROGRAM PROGRAM=DATASTATUS"));
    EXPECT_EQ(wrapper()->Channel()->Key(), QStringLiteral("FLOW"));
}

TEST_F(FrmStatusLight, AValueOfZeroAndABlackTrueColourGoFromTheNodeAndTheLightKeepsTheColour)
{
    load(programLight);
    forms.answer(QStringLiteral("colour:0"));
    open([](SetupForm& form) {
        press(form, u"obChannel");
        type(form, u"txtValue", QStringLiteral("0"));
        form.userDoubleClick(form.field(u"picTRUEColour"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("COMPAREVALUE"), QStringLiteral("-"));
    EXPECT_EQ(stored("TRUECOLOUR"), QStringLiteral("-"));
    EXPECT_EQ(property(1, "TrueColour"), QStringLiteral("0"));
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtValue"), QStringLiteral("0"));
        EXPECT_EQ(colourOf(form, u"picTRUEColour"), QStringLiteral("255"));
    });
}

TEST_F(FrmStatusLight, AnEmptyTrueCaptionStaysAsAnEmptyElement)
{
    load(programLight);
    open([](SetupForm& form) {
        type(form, u"txtTRUECaption", QString());
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("TRUECAPTION"), QString());
    EXPECT_EQ(property(1, "TrueCaption"), QString());
}

TEST_F(FrmStatusLight, AColourThatIsNoNumberOfThirtyTwoBitsIsPassedOverAndTheFormLoadsOn)
{
    load("<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><TRUECOLOUR>1e99</TRUECOLOUR>"
         "<FALSECOLOUR>12.5abc</FALSECOLOUR><FLASH>2</FLASH></CONTROL>");
    open([](SetupForm& form) {
        EXPECT_EQ(colourOf(form, u"picTRUEColour"), QStringLiteral("-1"));  // none was taken
        EXPECT_EQ(colourOf(form, u"picFALSEColour"), QStringLiteral("12")); // a tie goes to the even one
        EXPECT_EQ(form.field(u"cbFlash").value(), 1);
    });
    EXPECT_TRUE(errors.empty());
}

TEST_F(FrmStatusLight, EscWritesTheSettingsAndLeavesTheFormOpen)
{
    load(newLight);
    open([this](SetupForm& form) {
        type(form, u"txtFALSECaption", QStringLiteral("Shut"));
        form.userEscape();
        EXPECT_TRUE(form.isOpen());
        EXPECT_EQ(stored("FALSECAPTION"), QStringLiteral("Shut"));
    });
}

TEST_F(FrmStatusLight, TheExampleShowsThePickedFontAndNoColours)
{
    load(newLight);
    forms.answer(QStringLiteral("font:DejaVu Serif,14"));
    open([](SetupForm& form) {
        press(form, u"cmdFont");
        EXPECT_EQ(form.field(u"lblExample").font()->name(), QStringLiteral("DejaVu Serif"));
        EXPECT_FALSE(form.field(u"lblExample").foreColour());
        EXPECT_FALSE(form.field(u"lblExample").backColour());
    });
}

TEST_F(FrmStatusLight, AnApplyIsOneStepAndUndoRestoresTheLightAndTheNode)
{
    load(programLight);
    const QString before = storedTexts(elements);
    forms.answer(QStringLiteral("colour:0"));
    open([this](SetupForm& form) {
        press(form, u"cmdApply");
        panel->editor().history().clear(); // the first one has written what was given in other words
        press(form, u"obChannel");
        choose(form, u"lvChannels", QStringLiteral("Level"));
        type(form, u"txtTRUECaption", QStringLiteral("Open"));
        form.userDoubleClick(form.field(u"picTRUEColour"));
        press(form, u"cbFlash");
        press(form, u"cmdApply");
        press(form, u"cmdApply");
        EXPECT_EQ(panel->EditCount(), 1);
    });
    const QString after = storedTexts(elements);
    EXPECT_NE(after, before);
    panel->Undo();
    EXPECT_EQ(storedTexts(elements),
              QString(before).replace(QLatin1String("HIDEWHENFALSE=7"), QLatin1String("HIDEWHENFALSE=-1")));
    EXPECT_EQ(property(1, "TrueCaption"), QStringLiteral("Up"));
    EXPECT_EQ(property(1, "TrueColour"), QStringLiteral("65280"));
    EXPECT_TRUE(live(1)->get(values::Name("Flash")).boolean());
    EXPECT_EQ(wrapper()->Channel()->Key(), QStringLiteral("FLOW"));
    panel->Redo();
    EXPECT_EQ(storedTexts(elements), after);
    EXPECT_EQ(property(1, "TrueColour"), QStringLiteral("0"));
}

} // namespace
} // namespace zan::dialogs
