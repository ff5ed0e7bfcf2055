// Scripts that set each other off: a panel's scripts that are under way at once share one depth, one time and one
// memory, end in one script error, and leave the panel alive.

#include "WindowFixture.h"

#include "support/Properties.h"
#include "surface/intrinsic/CommandButton.h"

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::Ref;

namespace {

class NestedScripts : public WindowTest
{
protected:
    NestedScripts() { logger->link->state = site::LinkState::Connected; }

    static QString control(const char* type, const char* text)
    {
        return QStringLiteral("<CONTROL><TYPE>%1</TYPE><ACTION><TYPE>SCRIPT</TYPE><SCRIPT>%2</SCRIPT></ACTION>"
                              "</CONTROL>")
            .arg(QString::fromLatin1(type), QString::fromLatin1(text).toHtmlEscaped());
    }
    void load(const QString& xml)
    {
        fill("A", xml.toUtf8().constData());
        panel->LoadWindow(QStringLiteral("A"));
    }
    void click(int place = 1) { static_cast<surface::CommandButton&>(*live(place)).press(); }
    void check(int place = 1) { test::put(*live(place), "Value", 1); }
    /// The only box, and that the panel still obeys.
    void expectOneErrorAndALivingPanel(const char* description)
    {
        ASSERT_EQ(forms.boxes().size(), 1u);
        EXPECT_TRUE(forms.boxes()[0].text.startsWith(QStringLiteral("Scripting error: ") +
                                                     QString::fromLatin1(description)))
            << qPrintable(forms.boxes()[0].text);
        forms.clearBoxes();
        panel->Clear();
        load(control("VB.CommandButton", "Sub Main()\\nControl.Caption = \"alive\"\\nEnd Sub"));
        click();
        EXPECT_EQ(property(1, "Caption"), u"alive");
        EXPECT_TRUE(forms.boxes().empty());
        EXPECT_TRUE(errors.empty());
    }
};

} // namespace

TEST_F(NestedScripts, AButtonThatPressesItselfEndsInOneScriptError)
{
    load(control("VB.CommandButton", "Sub Main()\\nControl.Value = True\\nEnd Sub"));
    click();
    expectOneErrorAndALivingPanel("Out of stack space");
}

TEST_F(NestedScripts, ACheckBoxThatTurnsItselfOverEndsInOneScriptError)
{
    load(control("VB.CheckBox", "Sub Main()\\nControl.Value = 1 - Control.Value\\nEnd Sub"));
    check();
    expectOneErrorAndALivingPanel("Out of stack space");
}

TEST_F(NestedScripts, ButtonsThatPressEachOtherEndInOneScriptError)
{
    load(control("VB.CommandButton", "Sub Main()\\nWindow.Controls(2).Control.Value = True\\nEnd Sub") +
         control("VB.CommandButton", "Sub Main()\\nWindow.Controls(1).Control.Value = True\\nEnd Sub"));
    click();
    expectOneErrorAndALivingPanel("Out of stack space");
}

TEST_F(NestedScripts, NoOnErrorGoesOnPastTheSharedDepth)
{
    load(control("VB.CommandButton",
                 "Sub Main()\\nOn Error Resume Next\\nDo\\nControl.Value = True\\nLoop\\nEnd Sub"));
    click();
    expectOneErrorAndALivingPanel("Out of stack space");
}

TEST_F(NestedScripts, ProceduresUnderWayInAllOfThemCountTogether)
{
    // 3,000 procedures are fine in one script. A script that another one has set off has only what is left of 4,000.
    const char* const deep =
        "Dim n, m\\nSub Down(k)\\nIf k > 0 Then\\nDown k - 1\\nElse\\nPress\\nEnd If\\nEnd Sub\\n"
        "Sub Main()\\nDown 3000\\nEnd Sub\\nSub Press()\\n%1End Sub";
    load(control("VB.CommandButton", QString::fromLatin1(deep)
                                         .arg(QStringLiteral("Window.Controls(2).Control.Value = True\\n"))
                                         .toLatin1()) +
         control("VB.CommandButton", QString::fromLatin1(deep).arg(QString()).toLatin1()));
    click(2);
    EXPECT_TRUE(forms.boxes().empty());
    click(1);
    expectOneErrorAndALivingPanel("Out of stack space");
}

TEST_F(NestedScripts, AFailureOfOneGetsItsBoxAndTheOtherGoesOn)
{
    load(control("VB.CommandButton",
                 "Sub Main()\\nWindow.Controls(2).Control.Value = True\\nControl.Caption = \"on\"\\nEnd Sub") +
         control("VB.CommandButton", "Sub Main()\\nx = 1 / 0\\nEnd Sub"));
    click();
    ASSERT_EQ(forms.boxes().size(), 1u);
    EXPECT_TRUE(forms.boxes()[0].text.startsWith(u"Scripting error: Division by zero"));
    EXPECT_EQ(property(1, "Caption"), u"on");
}

TEST_F(NestedScripts, AScriptThatEndsWhileItsObjectsPressAButtonLeavesTheNextClickItsItems)
{
    load(control("VB.CommandButton", "Dim o\\nClass C\\nPrivate Sub Class_Terminate\\n"
                                     "Window.Controls(2).Control.Value = True\\nEnd Sub\\nEnd Class\\n"
                                     "Sub Main()\\nSet o = New C\\nEnd Sub") +
         control("VB.CommandButton", "Sub Main()\\nControl.Caption = Control.Caption & \"x\"\\nEnd Sub"));
    for (int round = 0; round < 3; ++round)
        click();
    EXPECT_TRUE(forms.boxes().empty());
    EXPECT_EQ(property(2, "Caption"), u"xx") << "at the beginning of the second and the third click";
}
