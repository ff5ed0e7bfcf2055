#include "FormFixture.h"

#include "dialogs/SetupForms.h"

#include <utility>

namespace zan::dialogs {
namespace {

using FrmCmd = FormTest;

const char* const plainButton = "<CONTROL><TYPE>VB.CommandButton</TYPE><CAPTION>Go</CAPTION></CONTROL>";

/// A button whose action has these elements.
std::string button(const char* action, const char* more = "")
{
    return std::string("<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION>") + action + "</ACTION>" + more +
           "</CONTROL>";
}

/// A form on its own.
class NoPanel : public FormSite
{
public:
    surface::HostForms* forms() override { return nullptr; }
    Ref<site::Logger> logger() override { return nullptr; }
    void edit(const QString&, const Ref<wrappers::iBenchControl>&, const std::function<void()>& step) override
    {
        step();
    }
    void counts(const Ref<site::Channel>&) override {}
    void reportError(const values::RuntimeError& error) override { throw error; }
};

/// A button that tells its font once.
class FontOnce : public wrappers::iBenchControl
{
public:
    explicit FontOnce(Ref<wrappers::iBenchControl> button)
        : m_button(std::move(button))
    {}
    Ref<binding::Object> Control() const override { return m_button->Control(); }
    document::Node XMLNode() const override { return m_button->XMLNode(); }
    Ref<binding::Object> Font() const override
    {
        return std::exchange(m_isTold, true) ? nullptr : m_button->Font();
    }
    QString ToolTipText() const override { return QStringLiteral("Tip"); }

private:
    Ref<wrappers::iBenchControl> m_button;
    mutable bool m_isTold = false;
};

TEST_F(FrmCmd, ANewButtonOpensAsSetChannelWithNoneAndItsActionIsThereFromThatMoment)
{
    load(plainButton);
    ASSERT_TRUE(open([](SetupForm& form) {
        EXPECT_EQ(form.title(), QStringLiteral("Command Button Setup"));
        EXPECT_EQ(text(form, u"cboActions"), QStringLiteral("Set Channel"));
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("None"));
        EXPECT_EQ(text(form, u"txtCaption"), QStringLiteral("Go"));
        EXPECT_EQ(text(form, u"txtValue"), QStringLiteral("0"));
        press(form, u"cmdCancel");
    }));
    EXPECT_EQ(storedAction("TYPE"), QStringLiteral("SET"));
}

TEST_F(FrmCmd, TheFrameOfTheActionIsEnabledAndInFrontAndTheOthersAreNotHidden)
{
    load(plainButton);
    open([](SetupForm& form) {
        choose(form, u"cboActions", QStringLiteral("Vesper"));
        for (const QStringView frame : {u"fraSet", u"fraPut", u"fraScript"}) {
            EXPECT_FALSE(form.field(frame).isEnabled());
            EXPECT_TRUE(form.field(frame).isVisible());
            EXPECT_LT(form.field(frame).rank(), form.field(u"fraVesperV4").rank());
        }
        EXPECT_TRUE(form.canUse(form.field(u"cboFunction")));
        EXPECT_FALSE(form.canUse(form.field(u"txtScript")));
    });
}

TEST_F(FrmCmd, PutValueZeroIsRemovedAndAnAddressCountsByItsLeadingNumber)
{
    load(button("<TYPE>PUT</TYPE><PUTVALUE>5</PUTVALUE><PUTADDRESS>100</PUTADDRESS><PUTDATATYPE>2</PUTDATATYPE>")
             .c_str());
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtValue"), QStringLiteral("5"));
        EXPECT_EQ(text(form, u"txtAddress"), QStringLiteral("100"));
        EXPECT_EQ(text(form, u"cboDataType"), QStringLiteral("Unsigned Word"));
        EXPECT_EQ(form.field(u"lvChannels").listIndex(), -1);
        type(form, u"txtValue", QStringLiteral("0"));
        type(form, u"txtAddress", QStringLiteral("12abc"));
        choose(form, u"cboDataType", QStringLiteral("Single Prec FP"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(storedAction("PUTVALUE"), QStringLiteral("-"));
    EXPECT_EQ(storedAction("PUTADDRESS"), QStringLiteral("12"));
    EXPECT_EQ(storedAction("PUTDATATYPE"), QStringLiteral("7"));
    EXPECT_EQ(storedAction("TYPE"), QStringLiteral("PUT"));
}

TEST_F(FrmCmd, AFunctionIsFoundWhateverItsCaseAndStoredInCapitals)
{
    load(button("<TYPE>VESPER</TYPE><FUNCTION>program</FUNCTION><SHOWPROGRESS>0</SHOWPROGRESS>").c_str());
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"cboFunction"), QStringLiteral("Program"));
        EXPECT_EQ(form.field(u"cbShowProgress").value(), 0);
        press(form, u"cmdOK");
    });
    EXPECT_EQ(storedAction("FUNCTION"), QStringLiteral("PROGRAM"));
    EXPECT_EQ(storedAction("SHOWPROGRESS"), QStringLiteral("0")); // forced
}

TEST_F(FrmCmd, VesperWithoutAFunctionOpensAsConnectWithProgress)
{
    load(button("<TYPE>VESPER</TYPE>").c_str());
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"cboFunction"), QStringLiteral("Connect"));
        EXPECT_EQ(form.field(u"cbShowProgress").value(), 1);
    });
}

TEST_F(FrmCmd, AScriptIsStoredOnOneLineAndComesBackAsItWas)
{
    load(plainButton);
    const QString script = QStringLiteral("Sub Main\r\n\tMsgBox \"a\"\r\nEnd Sub");
    open([&](SetupForm& form) {
        choose(form, u"cboActions", QStringLiteral("Run Script"));
        type(form, u"txtScript", script);
        press(form, u"cmdOK");
    });
    EXPECT_EQ(storedAction("SCRIPT"), QStringLiteral("Sub Main\\n\\tMsgBox \"a\"\\nEnd Sub"));
    open([&](SetupForm& form) { EXPECT_EQ(text(form, u"txtScript"), script); });
}

TEST_F(FrmCmd, AScriptThatHasTheTwoCharactersItselfComesBackWithALineBreak)
{
    load(button("<TYPE>SCRIPT</TYPE><SCRIPT>x = \"\\n\"</SCRIPT>").c_str());
    open([&](SetupForm& form) { EXPECT_EQ(text(form, u"txtScript"), QStringLiteral("x = \"\r\n\"")); });
}

TEST_F(FrmCmd, AToggleOnAButtonLeavesTheListEmptyAndItsActionAlone)
{
    load(button("<TYPE>TOGGLE</TYPE><CHECKEDVALUE>1</CHECKEDVALUE>").c_str());
    const QString before = action().xml();
    open([](SetupForm& form) {
        EXPECT_EQ(form.field(u"cboActions").listIndex(), -1);
        type(form, u"txtCaption", QStringLiteral("Other"));
        form.userClick(form.field(u"cbHide"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(action().xml(), before);
    EXPECT_EQ(stored("CAPTION"), QStringLiteral("Other"));
    EXPECT_EQ(property(1, "Caption"), QStringLiteral("Other"));
    EXPECT_EQ(stored("HIDEWHENPROTECTED"), QStringLiteral("1"));
}

TEST_F(FrmCmd, HideWhenProtectedOfZeroIsRemoved)
{
    load(button("<TYPE>SET</TYPE>", "<HIDEWHENPROTECTED>1</HIDEWHENPROTECTED>").c_str());
    open([](SetupForm& form) {
        EXPECT_TRUE(form.field(u"cbHide").isChecked());
        form.userClick(form.field(u"cbHide"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("HIDEWHENPROTECTED"), QStringLiteral("-"));
}

TEST_F(FrmCmd, EveryApplyOfOneChannelAddsOneToItsCountAndTakesNoneFromTheOldOne)
{
    load(button("<TYPE>SET</TYPE>", "<BINDTO>RTD|LEVEL</BINDTO>").c_str());
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("Level"));
        choose(form, u"lvChannels", QStringLiteral("Flow"));
        press(form, u"cmdApply");
        press(form, u"cmdApply");
    });
    EXPECT_EQ(channel("RTD", "FLOW")->useCount, 2);
    EXPECT_EQ(channel("RTD", "LEVEL")->useCount, 1);
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|FLOW"));
}

TEST_F(FrmCmd, AnotherActionLeavesWhatTheOldOneStored)
{
    load(button("<TYPE>PUT</TYPE><PUTVALUE>5</PUTVALUE>", "<BINDTO>RTD|LEVEL</BINDTO>").c_str());
    open([](SetupForm& form) {
        choose(form, u"cboActions", QStringLiteral("Vesper"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(storedAction("TYPE"), QStringLiteral("VESPER"));
    EXPECT_EQ(storedAction("PUTVALUE"), QStringLiteral("5"));
    EXPECT_EQ(storedAction("FUNCTION"), QStringLiteral("-")); // none was chosen
    EXPECT_TRUE(wrapper()->Channel());
}

TEST_F(FrmCmd, AFailureOutsideOfSetLeavesTheMenusHandlerAndNothingIsShown)
{
    load((button("<TYPE>PUT</TYPE><PUTDATATYPE>9</PUTDATATYPE>") +
          button("<TYPE>SET</TYPE>", "<HIDEWHENPROTECTED>-1</HIDEWHENPROTECTED>"))
             .c_str());
    EXPECT_FALSE(open([](SetupForm&) {}));
    EXPECT_FALSE(open([](SetupForm&) {}, 2));
    EXPECT_EQ(errors, (std::vector<int>{380, 380}));
}

TEST_F(FrmCmd, WhoeverCannotOpenItIsToldWhichElementOfWhichControlStandsInTheWay)
{
    load(button("<TYPE>SET</TYPE>", "<HIDEWHENPROTECTED>-1</HIDEWHENPROTECTED>").c_str());
    QString told;
    QObject::connect(panel.get(), &window::BenchWindow::runtimeError, panel.get(),
                     [&told](int, const QString& text) { told = text; });
    EXPECT_FALSE(open([](SetupForm&) {}));
    EXPECT_EQ(told,
              QStringLiteral("\"Command Button Setup\" cannot show HIDEWHENPROTECTED \"-1\" of the control @1: "
                             "Invalid property value"));
}

/// From the selection of the bound row to the end of the filling.
TEST_F(FrmCmd, WhileItIsFilledForSetAFailureIsPassedOverAndForAnotherActionItIsNot)
{
    load((button("<TYPE>SET</TYPE>") + button("<TYPE>PUT</TYPE>")).c_str());
    const auto filled = [this](int place) {
        const auto control = values::make<FontOnce>(wrapper(place));
        const std::shared_ptr<SetupForm> form = SetupForm::make(frmCmd, std::make_shared<NoPanel>());
        const int error = test::errorOf([&] { form->LoadControl(logger->scheme->windows, control); });
        return std::pair(error, text(*form, u"txtTooltip"));
    };
    EXPECT_EQ(filled(1), std::pair(0, QStringLiteral("Tip")));
    EXPECT_EQ(filled(2), std::pair(91, QString()));
}

TEST_F(FrmCmd, UndoingAnApplyTakesItsShareOfTheCountBackAndRedoingAddsItAgain)
{
    load(button("<TYPE>SET</TYPE>", "<BINDTO>RTD|LEVEL</BINDTO>").c_str());
    open([](SetupForm& form) {
        choose(form, u"lvChannels", QStringLiteral("Flow"));
        press(form, u"cmdOK");
    });
    ASSERT_EQ(channel("RTD", "FLOW")->useCount, 1);
    channel("RTD", "FLOW")->useCount = 4; // three other controls have come to it meanwhile
    panel->Undo();
    EXPECT_EQ(channel("RTD", "FLOW")->useCount, 3);
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|LEVEL"));
    panel->Redo();
    EXPECT_EQ(channel("RTD", "FLOW")->useCount, 4);
}

/// Of a count alone no step is made: it is not stored, and there would be nothing to see of it.
TEST_F(FrmCmd, AnApplyThatOnlyCountsIsNoStep)
{
    load(button("<TYPE>SET</TYPE>", "<BINDTO>RTD|LEVEL</BINDTO>").c_str());
    openAndPress(u"cmdOK");
    const int steps = panel->EditCount();
    openAndPress(u"cmdOK");
    EXPECT_EQ(channel("RTD", "LEVEL")->useCount, 3);
    EXPECT_EQ(panel->EditCount(), steps);
}

TEST_F(FrmCmd, AHideOfOneAndAHalfIsGreyAndCountsAsUnchecked)
{
    load(button("<TYPE>SET</TYPE>", "<HIDEWHENPROTECTED>1.5</HIDEWHENPROTECTED>").c_str());
    open([](SetupForm& form) {
        EXPECT_EQ(form.field(u"cbHide").value(), 2);
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("HIDEWHENPROTECTED"), QStringLiteral("-"));
}

TEST_F(FrmCmd, TypedTextReachesTheScriptThroughTheWindowAndEscApplies)
{
    load(plainButton);
    open([this](SetupForm& form) {
        QDialog* dialog = form.dialog(nullptr);
        dialog->show();
        choose(form, u"cboActions", QStringLiteral("Run Script"));
        auto* page = dialog->findChild<QWidget*>(QStringLiteral("txtScript"));
        ASSERT_TRUE(page && page->isVisible());
        page->setFocus();
        key(*dialog, Qt::Key_X, QStringLiteral("x"));
        key(*dialog, Qt::Key_Return, QStringLiteral("\r"));
        key(*dialog, Qt::Key_Y, QStringLiteral("y"));
        key(*dialog, Qt::Key_Escape);
        EXPECT_TRUE(form.isOpen());
        EXPECT_EQ(storedAction("SCRIPT"), QStringLiteral("x\\ny"));
    });
}

} // namespace
} // namespace zan::dialogs
