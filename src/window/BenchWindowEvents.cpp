// What reaches the panel from its surface and from the link.

#include "window/BenchWindow.h"

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "window/ActionEngine.h"
#include "window/Background.h"
#include "window/PanelEditor.h"
#include "wrappers/ControlType.h"

#include <QMdiSubWindow>
#include <QStackedLayout>

#include <array>

namespace zan::window {

namespace element = document::element;
using binding::Variant;
using document::XMLOps::GetAttribute;
using document::XMLOps::Marking;
using surface::HostForms;
using surface::LiveControl;
using surface::MouseInput;
using wrappers::OnClick;
using wrappers::OnDoubleClick;

namespace {

const values::Name CaptionName("Caption");

constexpr std::array<const char16_t*, 5> connectCaptions = {u"&Connect", u"&Cancel", u"&Disconnect", u"&Cancel",
                                                            u"&Re-connect"};

bool isConnectButton(const wrappers::iBenchControl& control)
{
    const document::Node action = control.XMLNode().child(element::Action);
    return action && GetAttribute(action, element::Type) == QLatin1String("VESPER") &&
           GetAttribute(action, element::Function) == QLatin1String("CONNECT");
}

bool hasPage(const QLayout* layout, const QWidget& page)
{
    if (!layout)
        return false;
    if (qobject_cast<const QStackedLayout*>(layout))
        return layout->indexOf(&page) >= 0;
    for (int place = 0; place < layout->count(); ++place) {
        if (hasPage(layout->itemAt(place)->layout(), page))
            return true;
    }
    return false;
}

/// Whether the widget is a page of a container that hides and shows its pages: a stacked layout or widget, the pages of
/// a tab widget among them, or an MDI window.
bool isPage(const QWidget& widget)
{
    const QWidget* parent = widget.parentWidget();
    return parent && (qobject_cast<const QMdiSubWindow*>(parent) || hasPage(parent->layout(), widget));
}

} // namespace

void BenchWindow::followLink(site::LinkState state)
{
    const QPointer<BenchWindow> alive(this);
    if (std::size_t(state) >= connectCaptions.size())
        return;
    for (const wrappers::ControlType& type : controlTypes()) {
        const Ref<surface::ControlArray> buttons(alive && type.wearsLinkState ? array(type.arrayName) : nullptr);
        // A button that belongs to no control ends the round.
        values::attempt([&] {
            for (std::int32_t index = 0; alive && buttons && index <= buttons->uBound(); ++index)
                captionConnectButton(Ref<LiveControl>(buttons->find(index)), state);
        });
    }
}

void BenchWindow::captionConnectButton(const Ref<LiveControl>& button, site::LinkState state)
{
    if (!button || !button->visible() || !isConnectButton(*wrapperOf(*button)))
        return;
    button->put(CaptionName, Variant(QString::fromUtf16(connectCaptions[std::size_t(state)])));
    if (state == site::LinkState::Broken)
        m_forms->messageBox(this, QStringLiteral("Connection to site broken"), HostForms::Exclamation, QString());
}

Ref<wrappers::iBenchControl> BenchWindow::wrapperOf(const LiveControl& control) const
{
    return controlsOrRaise().Control(Variant(values::toInteger(Variant(control.tag()))));
}

void BenchWindow::clicked(LiveControl* control)
{
    if (control) {
        clickedControl(*control);
        return;
    }
    m_editor->ClearSelection();
    Q_EMIT Click();
}

void BenchWindow::clickedControl(LiveControl& control)
{
    const Ref<LiveControl> live(&control);
    const wrappers::ControlType* type = controlTypes().ofArray(control.name());
    if (!type || type->click == OnClick::Nothing)
        return;
    // While the layout is being edited nothing acts, and there is no selection to drop.
    if (!LockPositions())
        return;
    m_editor->ClearSelection();
    if (type->click == OnClick::ClearsSelection)
        return;
    const Ref<wrappers::iBenchControl> wrapper = wrapperOf(control);
    m_editor->setCurrentControl(wrapper);
    if (type->click == OnClick::HoldsScanAndRunsAction) {
        // The next scan must not undo what the click shows. COMPAT: marked before the test below, so that a change
        // that comes from the data mutes a scan too.
        const Marking off(Marking::Off);
        document::XMLOps::SetAttribute(wrapper->XMLNode(), element::IgnoreScan, QStringLiteral("-1"));
        if (!live->enabled())
            return; // the scan is setting the value
    }
    const Marking on(Marking::On); // what an action does counts, also that of a click which a scan raises
    m_actions->RunAction(wrapper);
}

void BenchWindow::doubleClicked(LiveControl* control)
{
    if (!control) {
        Q_EMIT DblClick();
        return;
    }
    const wrappers::ControlType* type = controlTypes().ofArray(control->name());
    if (type && type->doubleClick == OnDoubleClick::SetsChannel)
        m_actions->setFromTextBox(wrapperOf(*control));
}

bool BenchWindow::mouseDown(LiveControl* control, const MouseInput& input)
{
    return m_editor->press(control, input);
}

void BenchWindow::mouseMove(LiveControl* control, const MouseInput& input)
{
    m_editor->move(control, input);
}

void BenchWindow::mouseUp(LiveControl* control, const MouseInput&)
{
    if (!control)
        m_editor->release();
}

void BenchWindow::resizeBegins(LiveControl& control)
{
    m_editor->resizeBegins(control);
}

void BenchWindow::resizeEnded(LiveControl&)
{
    m_editor->resizeEnded();
}

void BenchWindow::gotFocus(LiveControl* control)
{
    if (control)
        m_editor->focus(*control);
}

void BenchWindow::edit(const std::function<void(PanelEditor&)>& command)
{
    const auto report = [this, alive = QPointer<BenchWindow>(this)](const values::RuntimeError& error) {
        if (alive)
            reportError(error);
    };
    values::atBoundary([&] { command(*m_editor); }, report);
}

void BenchWindow::keyDown(LiveControl* control, int keyCode, int shift)
{
    if (!control)
        Q_EMIT KeyDown(keyCode, shift);
}

void BenchWindow::keyPress(LiveControl* control, int keyAscii)
{
    if (!control)
        Q_EMIT KeyPress(keyAscii);
}

void BenchWindow::keyUp(LiveControl* control, int keyCode, int shift)
{
    if (!control)
        Q_EMIT KeyUp(keyCode, shift);
}

// Edits --------------------------------------------------------------------------------------------------------

void BenchWindow::Undo()
{
    m_editor->history().undo();
}

void BenchWindow::Redo()
{
    m_editor->history().redo();
}

bool BenchWindow::CanUndo() const
{
    return m_editor->history().canUndo();
}

bool BenchWindow::CanRedo() const
{
    return m_editor->history().canRedo();
}

QString BenchWindow::UndoText() const
{
    return m_editor->history().undoText();
}

QString BenchWindow::RedoText() const
{
    return m_editor->history().redoText();
}

std::int32_t BenchWindow::EditCount() const
{
    return m_editor->history().count();
}

void BenchWindow::resized()
{
    m_background->refresh();
}

void BenchWindow::shown()
{
    // A panel that was hidden has no collection any more: the host is told that this cannot work.
    controlsOrRaise().setParentHandle(hWnd());
}

void BenchWindow::hidden()
{
    // Minimised, hidden with a parent, or a page of a container that shows another one now: the panel lives on.
    if (!isHidden() || !m_controls || !m_endsWhenHidden || isPage(*this))
        return;
    m_editor->setCurrentControl(nullptr);
    m_controls->setWindow(nullptr);
    m_controls->setLiveData(nullptr);
    m_controls = nullptr;
}

} // namespace zan::window
