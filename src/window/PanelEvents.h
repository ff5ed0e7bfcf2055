#pragma once

#include "site/Logger.h"
#include "surface/host/SurfaceEvents.h"
#include "wrappers/iBenchControl.h"

namespace zan::surface {
class Surface;
}

namespace zan::window {

class BenchWindow;

using values::Ref;

/// What reaches a panel: the user's doing, from its surface, and the state of the link, from its logger. Clicks on
/// controls go to the panel's actions, everything on the surface itself to the host.
class PanelEvents : private surface::SurfaceEvents
{
public:
    PanelEvents(BenchWindow& panel, surface::Surface& surface);
    ~PanelEvents();
    PanelEvents(const PanelEvents&) = delete;
    PanelEvents& operator=(const PanelEvents&) = delete;

    const Ref<site::Logger>& logger() const noexcept { return m_logger; }
    const Ref<site::Link>& link() const noexcept { return m_link; }
    /// Follows the logger's link from now on, and has the controls follow. Raises 91 for Nothing.
    void setLogger(const Ref<site::Logger>& logger);
    /// Captions the connect buttons after a state of the link, and says so when it has broken.
    void followLink(site::LinkState state);
    /// Makes up for what followLink() has left out while the panel showed the past.
    void followMissed();

private:
    void clicked(surface::LiveControl* control) override;
    void doubleClicked(surface::LiveControl* control) override;
    bool mouseDown(surface::LiveControl* control, const surface::MouseInput& input) override;
    void mouseMove(surface::LiveControl* control, const surface::MouseInput& input) override;
    void mouseUp(surface::LiveControl* control, const surface::MouseInput& input) override;
    void resizeBegins(surface::LiveControl& control) override;
    void resizeEnded(surface::LiveControl& control) override;
    void gotFocus(surface::LiveControl* control) override;
    bool keyDown(surface::LiveControl* control, int keyCode, int shift) override;
    bool wantsKey(int keyCode, int shift) override;
    void keyPress(surface::LiveControl* control, int keyAscii) override;
    void keyUp(surface::LiveControl* control, int keyCode, int shift) override;
    surface::Meaning meaningOf(const surface::LiveControl* control) override;
    void resized() override;

    void captionConnectButton(const Ref<surface::LiveControl>& button, site::LinkState state);
    Ref<wrappers::iBenchControl> wrapperOf(const surface::LiveControl& control) const;
    void clickedControl(surface::LiveControl& control);

    BenchWindow& m_panel;
    surface::Surface& m_surface;
    Ref<site::Logger> m_logger;
    Ref<site::Link> m_link;
    bool m_hasMissedState = false;
};

} // namespace zan::window
