#pragma once

#include "controls/iBenchControl.h"
#include "display/cGrabHandles.h"

#include <functional>
#include <memory>

namespace zan::controls {

/// Turns a picture file's name into the Picture object to assign to a live control; raises when it cannot.
using PictureLoader = std::function<Variant(const QString& file)>;
/// Lets the user move the control of this window handle with the pointer; returns when the button is released.
using WindowMover = std::function<void(std::int32_t hWnd)>;

/// Wrapper of a placed control of any type but the graph: keeps the document node, the live control and what the
/// user sees in step. It knows no type and reaches the live control by property names alone.
///
/// Writes go to the live control first (raising what it raises) and then, without force, to the node. Without a
/// live control measures read 0 and writes reach only the node.
class BenchControl : public iBenchControl
{
public:
    BenchControl();
    ~BenchControl() override;

    document::Node XMLNode() const override { return m_node; }
    void setXMLNode(const document::Node& node) override;
    values::Colour BackColour() const override;
    void setBackColour(values::Colour colour) override;
    QString BindTo() const override;
    void setBindTo(const QString& bindString) override;
    Ref<site::Channel> Channel() const override { return m_channel; }
    void setChannel(const Ref<site::Channel>& channel) override;
    Ref<binding::Object> Control() const override { return m_control; }
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
    void Move(float left, std::optional<float> top, std::optional<float> width,
              std::optional<float> height) override;
    void UpdateNode() override;
    void ZOrder(std::optional<std::int32_t> position) override;
    bool Updated() const override { return m_updated; }
    void setUpdated(bool updated) override { m_updated = updated; }

    const binding::MemberTable& members() const override;

    /// How pictures are loaded; without one PICTUREFILE has no effect.
    void setPictureLoader(const PictureLoader* loader) { m_pictureLoader = loader; }
    /// How the user moves a control; without one Drag only stores where the control lies.
    void setWindowMover(const WindowMover* mover) { m_windowMover = mover; }
    const display::cGrabHandles* grabHandles() const { return m_grabHandles.get(); }
    /// Takes over where a resize by a handle has left the live control.
    void endResize();

private:
    float measure(values::Name name) const;
    void putMeasure(values::Name name, float value);
    values::Colour colour(values::Name name) const;
    void putLive(values::Name name, const Variant& value);
    void putLiveAndNode(values::Name name, const Variant& value);
    void loadChildren();
    void loadPicture(binding::Object& control, const document::Node& fileNode);
    void storePosition();
    void storeLive(values::Name name);

    document::Node m_node;
    document::Node m_fontNode;
    Ref<binding::Object> m_control;
    Ref<site::Channel> m_channel;
    std::unique_ptr<display::cGrabHandles> m_grabHandles;
    const PictureLoader* m_pictureLoader = nullptr;
    const WindowMover* m_windowMover = nullptr;
    std::int32_t m_parentHandle = 0;
    bool m_updated = false;
};

} // namespace zan::controls
