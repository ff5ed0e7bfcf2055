#include "FormFixture.h"

#include "surface/text/FontObject.h"

namespace zan::dialogs {
namespace {

using FrmCheckBox = FormTest;
using surface::FontObject;

const char* const plainBox = "<CONTROL><TYPE>VB.CheckBox</TYPE><CAPTION>Gate</CAPTION></CONTROL>";
const char* const boundBox =
    "<CONTROL><TYPE>VB.CheckBox</TYPE><BINDTO>RTD|FLOW</BINDTO><ACTION><TYPE>TOGGLE</TYPE>"
    "<CHECKEDVALUE>7</CHECKEDVALUE><CHECKEDCAPTION>On</CHECKEDCAPTION><UNCHECKEDVALUE>3</UNCHECKEDVALUE>"
    "<UNCHECKEDCAPTION>Off</UNCHECKEDCAPTION></ACTION></CONTROL>";

FontObject& fontOf(const Ref<wrappers::iBenchControl>& control)
{
    return dynamic_cast<FontObject&>(*control->Font());
}

TEST_F(FrmCheckBox, HasItsTitleItsTabsAndItsRowsInOrder)
{
    load(plainBox);
    ASSERT_TRUE(open([](SetupForm& form) {
        EXPECT_EQ(form.name(), QStringLiteral("frmCheckBox"));
        EXPECT_EQ(form.title(), QStringLiteral("Check Box Setup"));
        EXPECT_EQ(form.description().width, 5400);
        EXPECT_EQ(form.description().height, 6615);
        QStringList rows;
        for (const Field& field : form.fields())
            rows << field.name() + QLatin1Char('=') + field.caption();
        EXPECT_EQ(rows, (QStringList{QStringLiteral("txtFilter="), QStringLiteral("lvChannels=Test Channel"),
                                     QStringLiteral("txtCheckedValue=Checked Value"),
                                     QStringLiteral("txtCheckedCaption=Checked Caption"),
                                     QStringLiteral("txtUncheckedValue=Unchecked Value"),
                                     QStringLiteral("txtUncheckedCaption=Unchecked Caption"),
                                     QStringLiteral("txtTooltip=Tooltip Text"), QStringLiteral("cmdFont=F&ont"),
                                     QStringLiteral("cmdForeCol=&Forecolour"),
                                     QStringLiteral("cmdBackCol=&Backcolour"), QStringLiteral("Frame1=Example"),
                                     QStringLiteral("cbExample=Example Checkbox"), QStringLiteral("cmdOK=&OK"),
                                     QStringLiteral("cmdCancel=&Cancel"), QStringLiteral("cmdApply=&Apply")}));
    }));
}

TEST_F(FrmCheckBox, ANewBoxOpensWithFourEmptyFieldsAndOkStoresBothValuesEmpty)
{
    load(plainBox);
    open([](SetupForm& form) {
        for (const QStringView field :
             {u"txtCheckedValue", u"txtCheckedCaption", u"txtUncheckedValue", u"txtUncheckedCaption"})
            EXPECT_EQ(text(form, field), QString());
        press(form, u"cmdOK");
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(storedAction("TYPE"), QStringLiteral("TOGGLE"));
    EXPECT_EQ(storedAction("CHECKEDVALUE"), QString());
    EXPECT_EQ(storedAction("UNCHECKEDVALUE"), QString());
    EXPECT_EQ(storedAction("CHECKEDCAPTION"), QStringLiteral("-"));
}

TEST_F(FrmCheckBox, OpeningAloneAddsAnEmptyAction)
{
    load(plainBox);
    EXPECT_FALSE(action());
    openAndPress(u"cmdCancel");
    ASSERT_TRUE(action());
    EXPECT_FALSE(action().firstChildElement());
}

TEST_F(FrmCheckBox, FieldsAreFilledFromTheActionAndGoBackInAsTyped)
{
    load(boundBox);
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"txtCheckedValue"), QStringLiteral("7"));
        EXPECT_EQ(text(form, u"txtCheckedCaption"), QStringLiteral("On"));
        EXPECT_EQ(text(form, u"txtUncheckedValue"), QStringLiteral("3"));
        EXPECT_EQ(text(form, u"txtUncheckedCaption"), QStringLiteral("Off"));
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("Flow"));
        type(form, u"txtCheckedValue", QStringLiteral("12abc"));
        type(form, u"txtUncheckedValue", QStringLiteral("0"));
        type(form, u"txtCheckedCaption", QString());
        press(form, u"cmdOK");
    });
    EXPECT_EQ(storedAction("CHECKEDVALUE"), QStringLiteral("12abc"));
    EXPECT_EQ(storedAction("UNCHECKEDVALUE"), QStringLiteral("0"));
    EXPECT_EQ(storedAction("CHECKEDCAPTION"), QStringLiteral("-"));
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|FLOW"));
}

TEST_F(FrmCheckBox, TheRowNoneClearsTheBindingAndTheActionIsAToggleAllTheSame)
{
    load(boundBox);
    open([](SetupForm& form) {
        choose(form, u"lvChannels", QStringLiteral("None"));
        press(form, u"cmdOK");
    });
    EXPECT_FALSE(wrapper()->Channel());
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("-"));
    EXPECT_EQ(storedAction("TYPE"), QStringLiteral("TOGGLE"));
}

TEST_F(FrmCheckBox, UseCountIsNotTouched)
{
    load(boundBox);
    const int before = channel("RTD", "FLOW")->useCount;
    open([](SetupForm& form) {
        press(form, u"cmdApply");
        press(form, u"cmdApply");
    });
    EXPECT_EQ(channel("RTD", "FLOW")->useCount, before);
}

TEST_F(FrmCheckBox, EscWritesTheSettingsAndKeepsTheFormOpenAndEnterPressesNothing)
{
    load(plainBox);
    open([this](SetupForm& form) {
        QDialog* dialog = form.dialog(nullptr);
        ASSERT_TRUE(dialog);
        dialog->show();
        type(form, u"txtTooltip", QStringLiteral("a tip"));
        key(*dialog, Qt::Key_Return, QStringLiteral("\r"));
        EXPECT_EQ(wrapper()->ToolTipText(), QString());
        key(*dialog, Qt::Key_Escape);
        EXPECT_EQ(wrapper()->ToolTipText(), QStringLiteral("a tip"));
        EXPECT_TRUE(form.isOpen());
        EXPECT_TRUE(dialog->isVisible());
    });
}

TEST_F(FrmCheckBox, TheColourButtonsAreInert)
{
    load(plainBox);
    open([this](SetupForm& form) {
        const std::size_t before = forms.boxes().size();
        press(form, u"cmdForeCol");
        press(form, u"cmdBackCol");
        EXPECT_EQ(forms.boxes().size(), before);
    });
}

// What all forms with a font share -----------------------------------------------------------------------------

TEST_F(FrmCheckBox, APickedFontShowsInTheExampleAndReachesTheControlWithApply)
{
    load(plainBox);
    wrapper()->setUseWindowSettings(true);
    forms.answer(QStringLiteral("font:DejaVu Serif,14,bold"));
    open([this](SetupForm& form) {
        press(form, u"cmdFont");
        EXPECT_EQ(forms.boxes().back().title, QStringLiteral("Select font"));
        EXPECT_EQ(form.field(u"cbExample").font()->name(), QStringLiteral("DejaVu Serif"));
        EXPECT_NE(fontOf(wrapper()).name(), QStringLiteral("DejaVu Serif"));
        press(form, u"cmdApply");
        EXPECT_EQ(fontOf(wrapper()).name(), QStringLiteral("DejaVu Serif"));
        EXPECT_EQ(fontOf(wrapper()).points(), 14);
        EXPECT_TRUE(fontOf(wrapper()).bold());
        EXPECT_FALSE(wrapper()->UseWindowSettings());
    });
}

TEST_F(FrmCheckBox, ApplyingTwiceWithOneFontChangesTheControlOnce)
{
    load(plainBox);
    forms.answer(QStringLiteral("font:DejaVu Serif,14"));
    open([this](SetupForm& form) {
        press(form, u"cmdFont");
        press(form, u"cmdApply");
        wrapper()->setUseWindowSettings(true);
        const binding::Object* given = wrapper()->Font().get();
        press(form, u"cmdApply");
        EXPECT_TRUE(wrapper()->UseWindowSettings());
        EXPECT_EQ(wrapper()->Font().get(), given);
    });
}

TEST_F(FrmCheckBox, CancellingTheFontPickerChangesNothing)
{
    load(plainBox);
    wrapper()->setUseWindowSettings(true);
    forms.answer(QStringLiteral("Cancel"));
    open([](SetupForm& form) {
        const QString before = form.editFont->name();
        press(form, u"cmdFont");
        EXPECT_EQ(form.editFont->name(), before);
        press(form, u"cmdOK");
    });
    EXPECT_TRUE(wrapper()->UseWindowSettings());
}

TEST_F(FrmCheckBox, AFontThatDiffersInItsCharacterSetAloneIsAChange)
{
    load(plainBox);
    wrapper()->setUseWindowSettings(true);
    open([](SetupForm& form) {
        form.editFont->setCharset(255);
        press(form, u"cmdOK");
    });
    EXPECT_FALSE(wrapper()->UseWindowSettings());
    EXPECT_EQ(fontOf(wrapper()).charset(), 255);
}

TEST_F(FrmCheckBox, ThePickerLeavesCharacterSetStrikethroughAndWeightAlone)
{
    load(plainBox);
    forms.answer(QStringLiteral("font:DejaVu Serif,14,bold"));
    open([](SetupForm& form) {
        form.editFont->setWeight(600); // bold already
        form.editFont->setStrikethrough(true);
        form.editFont->setCharset(204);
        press(form, u"cmdFont");
        EXPECT_EQ(form.editFont->weight(), 600);
        EXPECT_TRUE(form.editFont->strikethrough());
    });
}

// What all forms with a channel list share -----------------------------------------------------------------------

TEST_F(FrmCheckBox, TheListHasNoneAndThenEveryChannelOfEveryWindow)
{
    channel("RTD", "HIDDEN")->visible = false;
    channel("RTD", "INNER")->baseAddress = -1;
    load(plainBox);
    open([](SetupForm& form) {
        QStringList rows;
        for (const ListRow& row : form.field(u"lvChannels").rows())
            rows << row.text + QLatin1Char('/') + row.key + QLatin1Char('/') + row.parent;
        EXPECT_EQ(rows,
                  (QStringList{QStringLiteral("None//"), QStringLiteral("/RTD|HIDDEN/RTD"),
                               QStringLiteral("/RTD|INNER/RTD"), QStringLiteral("Level/RTD|LEVEL/RTD"),
                               QStringLiteral("Flow/RTD|FLOW/RTD"), QStringLiteral("Battery/LOGGER|BATT/LOGGER")}));
        EXPECT_EQ(form.field(u"lvChannels").listIndex(), 0);
    });
}

TEST_F(FrmCheckBox, AControlBoundToAChannelThatIsGoneOpensWithNoneAndOkClearsItsBinding)
{
    load("<CONTROL><TYPE>VB.CheckBox</TYPE><BINDTO>RTD|GONE</BINDTO></CONTROL>");
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|GONE"));
    open([](SetupForm& form) {
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("None"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("-"));
}

TEST_F(FrmCheckBox, ASchemeWithoutChannelsShowsNoneAndOkGivesNoChannel)
{
    fill("A", plainBox);
    panel->LoadWindow(QStringLiteral("A"));
    open([](SetupForm& form) {
        EXPECT_EQ(form.field(u"lvChannels").rows().size(), 1u);
        press(form, u"cmdOK");
    });
    EXPECT_FALSE(wrapper()->Channel());
}

TEST_F(FrmCheckBox, AFillThatFailsKeepsItsRowsAndTheFormLoadsOn)
{
    load(boundBox);
    int asked = 0;
    logger->scheme->windows->onItem = [&] {
        if (++asked == 2)
            values::raise(values::ErrorNumber::PathFileAccess);
    };
    open([this](SetupForm& form) {
        logger->scheme->windows->onItem = nullptr;
        EXPECT_EQ(form.field(u"lvChannels").rows().size(), 3u); // None and the first window's
        EXPECT_EQ(text(form, u"txtCheckedValue"), QStringLiteral("7"));
    });
    EXPECT_TRUE(errors.empty());
}

TEST_F(FrmCheckBox, AFilterNarrowsTheRowsAndChangesNothingOfWhatIsChosen)
{
    load(boundBox);
    open([](SetupForm& form) {
        form.dialog(nullptr);
        type(form, u"txtFilter", QStringLiteral("batt"));
        EXPECT_EQ(form.field(u"lvChannels").rows().size(), 4u);
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("Flow"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|FLOW"));
}

TEST_F(FrmCheckBox, LettersTypedInTheListChooseTheFirstRowThatBeginsWithThem)
{
    load(boundBox);
    open([](SetupForm& form) {
        typeInto(form, u"lvChannels", QStringLiteral("ba"));
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("Battery"));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("LOGGER|BATT"));
}

TEST_F(FrmCheckBox, AUserWithoutAMouseGoesThroughAllOfIt)
{
    load(boundBox);
    open([this](SetupForm& form) {
        QDialog* dialog = form.dialog(nullptr);
        dialog->show();
        dialog->activateWindow();
        QCoreApplication::processEvents();
        const auto walkTo = [dialog](const char* name) {
            for (int step = 0; step < 20; ++step) {
                if (dialog->focusWidget() && dialog->focusWidget()->objectName() == QLatin1String(name))
                    return;
                key(*dialog, Qt::Key_Tab);
            }
            ADD_FAILURE() << name << " is not reached";
        };
        const auto write = [dialog](const char* letters) {
            for (const QChar letter : QString::fromLatin1(letters))
                key(*dialog, Qt::Key(letter.toUpper().unicode()), letter);
        };
        walkTo("lvChannels");
        write("le");
        walkTo("txtCheckedValue");
        write("5");
        key(*dialog, Qt::Key_Escape);
        EXPECT_TRUE(form.isOpen());
        EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|LEVEL"));
        EXPECT_EQ(storedAction("CHECKEDVALUE"), QStringLiteral("5"));
        walkTo("qt_tabwidget_tabbar");
        key(*dialog, Qt::Key_Right);
        EXPECT_EQ(form.tab(), 1);
        walkTo("txtTooltip");
        write("tip");
        walkTo("cmdOK");
        key(*dialog, Qt::Key_Space);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
        QCoreApplication::sendEvent(dialog->focusWidget(), &release);
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(stored("TOOLTIPTEXT"), QStringLiteral("tip"));
}

TEST_F(FrmCheckBox, LettersTypedInANarrowedListFindWhatIsSeenOfIt)
{
    load(boundBox);
    open([](SetupForm& form) {
        type(form, u"txtFilter", QStringLiteral("RTD"));
        typeInto(form, u"lvChannels", QStringLiteral("b"));
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("Flow"));
        typeInto(form, u"lvChannels", QStringLiteral("l"));
        EXPECT_EQ(text(form, u"lvChannels"), QStringLiteral("Flow")) << "bl, which nothing begins with";
    });
}

// Applying -------------------------------------------------------------------------------------------------------

TEST_F(FrmCheckBox, CancelUndoesNothingThatAnEarlierApplyWrote)
{
    load(boundBox);
    open([](SetupForm& form) {
        type(form, u"txtCheckedCaption", QStringLiteral("Open"));
        press(form, u"cmdApply");
        type(form, u"txtCheckedCaption", QStringLiteral("Shut"));
        press(form, u"cmdCancel");
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(storedAction("CHECKEDCAPTION"), QStringLiteral("Open"));
}

TEST_F(FrmCheckBox, AnApplyThatChangesSomethingIsOneStepAndOneThatDoesNotIsNone)
{
    load(boundBox);
    forms.answer(QStringLiteral("font:DejaVu Serif,14"));
    open([this](SetupForm& form) {
        press(form, u"cmdApply");
        EXPECT_EQ(panel->EditCount(), 0);
        type(form, u"txtCheckedCaption", QStringLiteral("Open"));
        choose(form, u"lvChannels", QStringLiteral("Level"));
        press(form, u"cmdFont");
        press(form, u"cmdApply");
        EXPECT_EQ(panel->EditCount(), 1);
    });
    panel->Undo();
    EXPECT_EQ(storedAction("CHECKEDCAPTION"), QStringLiteral("On"));
    EXPECT_EQ(stored("BINDTO"), QStringLiteral("RTD|FLOW"));
    EXPECT_EQ(wrapper()->Channel()->Key(), QStringLiteral("FLOW"));
    EXPECT_NE(fontOf(wrapper()).name(), QStringLiteral("DejaVu Serif"));
    panel->Redo();
    EXPECT_EQ(storedAction("CHECKEDCAPTION"), QStringLiteral("Open"));
    EXPECT_EQ(wrapper()->Channel()->Key(), QStringLiteral("LEVEL"));
    EXPECT_EQ(fontOf(wrapper()).name(), QStringLiteral("DejaVu Serif"));
}

TEST_F(FrmCheckBox, AFontAloneMarksTheSchemeUnsaved)
{
    load(boundBox);
    wrapper()->setUseWindowSettings(false);
    openAndPress(u"cmdApply");
    document::XMLOps::UnmarkChanged(node());
    forms.answer(QStringLiteral("font:DejaVu Serif,14"));
    open([](SetupForm& form) {
        press(form, u"cmdFont");
        press(form, u"cmdOK");
    });
    EXPECT_TRUE(isChanged());
}

TEST_F(FrmCheckBox, AFailureInAnApplyReachesTheHostAndTheFormStaysOpen)
{
    load(boundBox);
    open([this](SetupForm& form) {
        wrapper()->setControl(nullptr);
        form.editFont = nullptr; // what the first step needs
        press(form, u"cmdOK");
        EXPECT_TRUE(form.isOpen());
    });
    EXPECT_EQ(errors, std::vector<int>{91});
}

// Life -----------------------------------------------------------------------------------------------------------

TEST_F(FrmCheckBox, AFormWithoutAUserIsRecordedAndClosed)
{
    load(plainBox);
    forms.onForm = nullptr;
    panel->setup().edit(wrapper());
    ASSERT_EQ(forms.boxes().size(), 1u);
    EXPECT_EQ(forms.boxes().front().title, QStringLiteral("Check Box Setup"));
}

TEST_F(FrmCheckBox, AFormThatIsOpenIsNotOpenedAgain)
{
    load(plainBox);
    int opened = 0;
    open([&](SetupForm& form) {
        ++opened;
        type(form, u"txtTooltip", QStringLiteral("typed"));
        panel->setup().edit(wrapper());
        EXPECT_EQ(text(form, u"txtTooltip"), QStringLiteral("typed"));
        EXPECT_TRUE(form.isOpen());
    });
    EXPECT_EQ(opened, 1);
}

TEST_F(FrmCheckBox, AFormWhosePanelGoesIsClosed)
{
    load(plainBox);
    const Ref<wrappers::iBenchControl> control = wrapper();
    std::weak_ptr<SetupForm> left;
    forms.onForm = [&](surface::ModalForm& form) {
        auto& setup = static_cast<SetupForm&>(form);
        left = setup.weak_from_this();
        setup.dialog(nullptr)->show();
        panel.reset();
        EXPECT_FALSE(setup.isOpen());
        setup.userClick(setup.field(u"cmdOK"));
    };
    panel->setup().edit(control);
    EXPECT_FALSE(left.lock());
}

TEST_F(FrmCheckBox, TheControlMayBeRemovedWhileItsFormIsOpen)
{
    load(boundBox);
    open([this](SetupForm& form) {
        panel->Controls()->Remove(binding::Variant(1));
        press(form, u"cmdOK");
    });
    EXPECT_EQ(panel->Controls()->Count(), 0);
}

TEST_F(FrmCheckBox, TheWindowHasTheClientAreaOfTheFormAndCutsNothing)
{
    load(boundBox);
    open([](SetupForm& form) {
        QDialog* dialog = form.dialog(nullptr);
        dialog->show();
        EXPECT_EQ(dialog->size(), QSize(5400 / 15, 6615 / 15));
        QFont large = dialog->font();
        large.setPointSize(24);
        dialog->setFont(large);
        EXPECT_GE(dialog->width(), dialog->layout()->totalMinimumSize().width());
        EXPECT_GE(dialog->height(), dialog->layout()->totalMinimumSize().height());
    });
}

} // namespace
} // namespace zan::dialogs
