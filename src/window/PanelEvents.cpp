#include "window/PanelEvents.h"

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "surface/host/Surface.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "window/ActionEngine.h"
#include "window/BenchWindow.h"
#include "window/PanelDesign.h"
#include "window/PanelDocument.h"
#include "window/PanelEditor.h"
#include "wrappers/ControlType.h"

#include <QPointer>

#include <array>
#include <utility>

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

} // namespace

PanelEvents::PanelEvents(BenchWindow& panel, surface::Surface& surface)
    : m_panel(panel)
    , m_surface(surface)
{
    m_surface.setEvents(this);
}

PanelEvents::~PanelEvents()
{
    m_surface.setEvents(nullptr);
}

// The link -----------------------------------------------------------------------------------------------------

void PanelEvents::setLogger(const Ref<site::Logger>& logger)
{
    const QPointer<BenchWindow> alive(&m_panel);
    const Ref<site::Logger> wanted = logger;
    if (m_link)
        QObject::disconnect(m_link.get(), nullptr, &m_panel, nullptr);
    m_link = nullptr;
    m_logger = wanted;
    const Ref<site::Link> link = values::given(wanted)->Link();
    if (!alive || m_logger != wanted || m_link)
        return; // asked for its link, the logger has had another one set
    m_link = link;
    // The panel hears of a new state before its controls do.
    if (m_link)
        QObject::connect(m_link.get(), &site::Link::StateChange, &m_panel,
                         [this](int state) { followLink(site::LinkState(state)); });
    m_panel.document().controls()->attachTo(wanted, link);
}

void PanelEvents::followLink(site::LinkState state)
{
    const QPointer<BenchWindow> alive(&m_panel);
    if (std::size_t(state) >= connectCaptions.size())
        return;
    if (!m_panel.IsLive()) {
        m_hasMissedState = true;
        return;
    }
    for (const wrappers::ControlType& type : m_panel.document().controlTypes()) {
        const Ref<surface::ControlArray> buttons(alive && type.wearsLinkState ? m_surface.array(type.arrayName)
                                                                              : nullptr);
        // A button that belongs to no control ends the round.
        values::attempt([&] {
            for (std::int32_t index = 0; alive && buttons && index <= buttons->uBound(); ++index)
                captionConnectButton(Ref<LiveControl>(buttons->find(index)), state);
        });
    }
}

void PanelEvents::followMissed()
{
    if (!std::exchange(m_hasMissedState, false) || !m_link)
        return;
    const QPointer<BenchWindow> alive(&m_panel);
    const Ref<site::Link> link = m_link;
    values::attempt([&] {
        const site::LinkState state = link->State();
        if (alive)
            followLink(state);
    });
}

void PanelEvents::captionConnectButton(const Ref<LiveControl>& button, site::LinkState state)
{
    if (!button || !button->visible() || !isConnectButton(*wrapperOf(*button)))
        return;
    button->put(CaptionName, Variant(QString::fromUtf16(connectCaptions[std::size_t(state)])));
    if (state == site::LinkState::Broken)
        m_panel.forms().messageBox(&m_panel, QStringLiteral("Connection to site broken"), HostForms::Exclamation,
                                   QString());
}

Ref<wrappers::iBenchControl> PanelEvents::wrapperOf(const LiveControl& control) const
{
    return m_panel.document().controls()->Control(Variant(values::toInteger(Variant(control.tag()))));
}

void PanelEvents::clicked(LiveControl* control)
{
    if (control) {
        clickedControl(*control);
        return;
    }
    m_panel.editor().ClearSelection();
    Q_EMIT m_panel.Click();
}

void PanelEvents::clickedControl(LiveControl& control)
{
    const Ref<LiveControl> live(&control);
    const wrappers::ControlType* type = m_panel.document().controlTypes().ofArray(control.name());
    if (!type || type->click == OnClick::Nothing)
        return;
    // While the layout is being edited nothing acts, and there is no selection to drop.
    if (!m_panel.LockPositions() || !m_panel.IsLive())
        return;
    m_panel.editor().ClearSelection();
    if (type->click == OnClick::ClearsSelection)
        return;
    const Ref<wrappers::iBenchControl> wrapper = wrapperOf(control);
    m_panel.editor().setCurrentControl(wrapper);
    if (type->click == OnClick::HoldsScanAndRunsAction) {
        // The next scan must not undo what the click shows. COMPAT: marked before the test below, so that a change
        // that comes from the data mutes a scan too.
        const Marking off(Marking::Off);
        document::XMLOps::SetAttribute(wrapper->XMLNode(), element::IgnoreScan, QStringLiteral("-1"));
        if (!live->enabled())
            return; // the scan is setting the value
    }
    const Marking on(Marking::On); // what an action does counts, also that of a click which a scan raises
    m_panel.actions().RunAction(wrapper);
}

void PanelEvents::doubleClicked(LiveControl* control)
{
    if (!control) {
        Q_EMIT m_panel.DblClick();
        return;
    }
    const wrappers::ControlType* type = m_panel.document().controlTypes().ofArray(control->name());
    if (type && type->doubleClick == OnDoubleClick::SetsChannel && m_panel.IsLive())
        m_panel.actions().setFromTextBox(wrapperOf(*control));
}

bool PanelEvents::mouseDown(LiveControl* control, const MouseInput& input)
{
    // In the past there is nothing to take hold of, and no menu to edit with.
    return m_panel.IsLive() && m_panel.editor().press(control, input);
}

void PanelEvents::mouseMove(LiveControl* control, const MouseInput& input)
{
    m_panel.editor().move(control, input);
}

void PanelEvents::mouseUp(LiveControl* control, const MouseInput&)
{
    if (!control)
        m_panel.editor().release();
}

void PanelEvents::resizeBegins(LiveControl& control)
{
    m_panel.editor().resizeBegins(control);
}

void PanelEvents::resizeEnded(LiveControl&)
{
    m_panel.editor().resizeEnded();
}

void PanelEvents::gotFocus(LiveControl* control)
{
    if (control)
        m_panel.editor().focus(*control);
}

bool PanelEvents::keyDown(LiveControl* control, int keyCode, int shift)
{
    const QPointer<BenchWindow> alive(&m_panel);
    if (!control)
        Q_EMIT m_panel.KeyDown(keyCode, shift);
    return alive && m_panel.editor().key(keyCode, shift);
}

bool PanelEvents::wantsKey(int keyCode, int shift)
{
    return m_panel.editor().keys().wants(keyCode, shift);
}

void PanelEvents::keyPress(LiveControl* control, int keyAscii)
{
    if (!control)
        Q_EMIT m_panel.KeyPress(keyAscii);
}

void PanelEvents::keyUp(LiveControl* control, int keyCode, int shift)
{
    if (!control)
        Q_EMIT m_panel.KeyUp(keyCode, shift);
}

/// The window itself is known by its key, a control by its channel. The channel is the host's: nothing is touched after
/// it was asked.
surface::Meaning PanelEvents::meaningOf(const LiveControl* control)
{
    surface::Meaning meaning;
    if (!control) {
        if (const Ref<site::SchemeWindow> shown = m_panel.document().currentWindow())
            meaning.subject = shown->Key();
        return meaning;
    }
    if (const wrappers::ControlType* type = m_panel.document().controlTypes().ofArray(control->name()))
        meaning.acts = type->runsAction() && m_panel.LockPositions() && m_panel.IsLive();
    if (const Ref<site::Channel> channel = wrapperOf(*control)->Channel()) {
        meaning.subject = channel->Label();
        meaning.units = channel->Units();
        if (meaning.subject.isEmpty())
            meaning.subject = channel->Key();
    }
    return meaning;
}

void PanelEvents::resized()
{
    m_panel.design().refreshBackground();
}

} // namespace zan::window
