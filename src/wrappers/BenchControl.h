#pragma once

#include "display/cGrabHandles.h"
#include "values/ChangeCount.h"
#include "wrappers/iBenchControl.h"

#include <functional>
#include <memory>

namespace zan::surface {
class LiveControl;
}

namespace zan::wrappers {

/// Turns a picture file's name into the Picture object to assign to a live control; raises when it cannot.
using PictureLoader = std::function<Variant(const QString& file)>;

/// Wrapper of a placed control of any type (that of a graph derives from it): keeps the document node, the live control
/// and what the user sees in step. It knows no type: it reaches by property names what types differ in.
///
/// Writes go to the live control first (raising what it raises) and then, without force, to the node. Without a
/// live control measures read 0 and writes reach only the node.
class BenchControl : public iBenchControl
{
public:
    BenchControl();
    ~BenchControl() override;

    /// What a factory does with a wrapper that it has just made: gives it its type and its live control, which is
    /// shown, and says whether it follows the window's settings. Raises 91 for a control that was unloaded.
    void begin(const QString& type, const Ref<surface::LiveControl>& control, bool usesWindowSettings);

    document::Node XMLNode() const override { return node(); }
    void setXMLNode(const document::Node& node) override;
    values::Colour BackColour() const override;
    void setBackColour(values::Colour colour) override;
    QString BindTo() const override;
    void setBindTo(const QString& bindString) override;
    Ref<site::Channel> Channel() const override { return m_channel; }
    void setChannel(const Ref<site::Channel>& channel) override;
    Ref<binding::Object> Control() const override { return m_control; }
    /// Raises 13 for what is no control of a surface and 91 for one that was unloaded, before anything is stored.
    void setControl(const Ref<binding::Object>& control) override;
    QString ControlType() const override;
    void setControlType(const QString& type) override;
    Ref<binding::Object> Font() const override;
    void setFont(const Ref<binding::Object>& font) override;
    values::Colour ForeColour() const override;
    void setForeColour(values::Colour colour) override;
    float Height() const override;
    void setHeight(float height) override;
    std::int32_t hWnd() const override;
    std::int16_t Index() const override;
    void setIndex(std::int16_t index) override;
    QString Key() const override;
    void setKey(const QString& key) override;
    float Left() const override;
    void setLeft(float left) override;
    bool ShowGrabHandles() const override;
    void setShowGrabHandles(bool show) override;
    QString ToolTipText() const override;
    void setToolTipText(const QString& text) override;
    float Top() const override;
    void setTop(float top) override;
    bool UseWindowSettings() const override;
    void setUseWindowSettings(bool use) override;
    bool Visible() const override;
    void setVisible(bool visible) override;
    float Width() const override;
    void setWidth(float width) override;
    void Drag() override;
    void InitGrabHandles(std::int32_t parent, std::int32_t target, values::Colour colour) override;
    void dropGrabHandles() override { m_grabHandles.reset(); }
    void Move(float left, std::optional<float> top, std::optional<float> width,
              std::optional<float> height) override;
    void UpdateNode() override;
    void ZOrder(std::optional<std::int32_t> position) override;
    bool Updated() const override { return m_updated; }
    /// Once True it stays True: what has been fetched is not fetched again.
    void setUpdated(bool updated) override { m_updated = m_updated || updated; }

    const binding::MemberTable& members() const override;
    /// Counts the exchanges of node, channel and live control.
    std::uint32_t revision() const override { return m_changes.value(); }

    /// How pictures are loaded; without one PICTUREFILE has no effect.
    void setPictureLoader(const PictureLoader* loader) { m_pictureLoader = loader; }
    /// The resize handles; null before InitGrabHandles.
    const display::cGrabHandles* grabHandles() const { return handles(); }
    /// Takes over where a resize by a handle has left the live control.
    void endResize();

protected:
    const document::Node& node() const;
    /// The steps of a load: what the live control is set to, what its font is set to where it has its own, and what
    /// comes after that. Failures are nobody's.
    virtual void loadLive(binding::Object& control);
    virtual void loadFont(const document::Node& fontNode, binding::Object& font);
    virtual void loadRest() {}

private:
    /// What the resize handles are made of, when they are first to be shown.
    struct HandlePlan
    {
        std::int32_t parent = 0;
        std::int32_t target = 0;
        values::Colour colour;
    };

    void makeNode() const;
    display::cGrabHandles* handles() const;
    float measure(values::Name name) const;
    void putMeasure(values::Name name, float value);
    values::Colour colour(values::Name name) const;
    void putColour(values::Name name, values::Colour value);
    void takeControl(surface::LiveControl* live);
    void putLive(values::Name name, const Variant& value);
    void putLiveAndNode(values::Name name, const Variant& value);
    void loadPicture(binding::Object& control, const document::Node& fileNode);
    void storePosition();
    void storeLive(values::Name name);

    mutable document::Node m_node;
    mutable document::Node m_fontNode;
    QString m_firstType; ///< TYPE of the node of its own
    Ref<binding::Object> m_control;
    surface::LiveControl* m_live = nullptr; ///< the same control by its own type
    Ref<site::Channel> m_channel;
    mutable std::unique_ptr<display::cGrabHandles> m_grabHandles; ///< made when they are first needed
    std::optional<HandlePlan> m_handlePlan;
    const PictureLoader* m_pictureLoader = nullptr;
    values::ChangeCount m_changes;
    mutable bool m_isNodeDue;    ///< the node of its own has not been asked for yet
    bool m_followsWindow = true; ///< USEWINDOWSETTINGS of that node
    bool m_isShownFirst = false; ///< VISIBLE of that node
    bool m_updated = false;
};

} // namespace zan::wrappers
