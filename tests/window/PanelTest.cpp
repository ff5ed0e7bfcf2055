// The panel as a widget with a surface of its own: what is done to the panel is told and stored, and nobody reaches past
// it.

#include "WindowFixture.h"

#include "surface/host/Surface.h"
#include "surface/intrinsic/CommandButton.h"

#include <QApplication>
#include <QKeyEvent>

#include <type_traits>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::ErrorNumber;
using values::Name;

// Through a base class or a reference that can be written to the look could be changed behind the document's back.
static_assert(!std::is_base_of_v<surface::Surface, BenchWindow>);
static_assert(std::is_same_v<decltype(std::declval<const BenchWindow&>().surface()), const surface::Surface&>);

namespace {
class PanelWidget : public WindowTest
{};
} // namespace

TEST_F(PanelWidget, SurfaceFillsThePanelAtEverySize)
{
    panel->show();
    for (const QSize size : {QSize(300, 200), QSize(20, 500), QSize(900, 10)}) {
        panel->resize(size);
        EXPECT_EQ(panel->surface().geometry(), QRect(QPoint(), size));
    }
}

TEST_F(PanelWidget, LookOfThePanelIsThatOfItsSurface)
{
    panel->setBackColor({255});
    panel->setForeColor({65280});
    panel->setBorderStyle(1);
    panel->setBackStyle(0);
    EXPECT_EQ(panel->surface().backColor().code, 255);
    EXPECT_EQ(panel->surface().foreColor().code, 65280);
    EXPECT_EQ(panel->surface().borderStyle(), 1);
    EXPECT_EQ(panel->surface().backStyle(), 0);
    EXPECT_EQ(panel->BackColor().code, 255);
    EXPECT_EQ(panel->Font(), panel->surface().surfaceFont());
    panel->setBackStyle(1);
    panel->setBorderStyle(0);
    panel->resize(40, 30);
    EXPECT_EQ(panel->grab().toImage().pixelColor(20, 15), QColor(255, 0, 0));
}

TEST_F(PanelWidget, KeyboardGoesToTheSurfaceAndItsKeysToTheHost)
{
    std::vector<int> keys;
    QObject::connect(panel.get(), &BenchWindow::KeyDown, panel.get(), [&](int code) { keys.push_back(code); });
    panel->show();
    panel->activateWindow();
    QApplication::processEvents();
    panel->setFocus();
    ASSERT_TRUE(panel->surface().hasFocus());
    QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QApplication::sendEvent(QApplication::focusWidget(), &event);
    EXPECT_EQ(keys, std::vector<int>{65});
}

TEST_F(PanelWidget, DisabledPanelTakesNoPress)
{
    fill("A", "<CONTROL><TYPE>VB.CommandButton</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    panel->setEnabled(false);
    EXPECT_FALSE(panel->Enabled());
    EXPECT_FALSE(panel->surface().isEnabled());
    panel->setEnabled(true);
    EXPECT_TRUE(panel->surface().isEnabled());
}

TEST_F(PanelWidget, LastWordsOfAScriptsObjectsReachNoPanelThatGoes)
{
    logger->link->state = site::LinkState::Connected;
    fill("A",
         "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>SCRIPT</TYPE><SCRIPT>Dim o, b\\nClass C\\n"
         "Private Sub Class_Terminate\\nb.Value = True\\nWindow.Clear\\nEnd Sub\\nEnd Class\\n"
         "Sub Main()\\nSet b = Window.Controls(2).Control\\nSet o = New C\\nEnd Sub</SCRIPT></ACTION></CONTROL>"
         "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>PUT</TYPE><PUTADDRESS>5</PUTADDRESS></ACTION>"
         "</CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    static_cast<surface::CommandButton&>(*live(1)).press();
    EXPECT_TRUE(forms.boxes().empty());
    panel.reset();
    EXPECT_TRUE(logger->live->writes.empty());
}

TEST_F(PanelWidget, ErrorOfAHandlerArrivesAtThePanel)
{
    fill("A", "<CONTROL><TYPE>VB.CommandButton</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    live(1)->put(Name("Tag"), Variant(QStringLiteral("7"))); // finds no control of the list
    static_cast<surface::CommandButton&>(*live(1)).press();
    EXPECT_EQ(errors, std::vector<int>{int(ErrorNumber::SubscriptOutOfRange)});
}
