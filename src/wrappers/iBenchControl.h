#pragma once

#include "binding/Object.h"
#include "document/Node.h"
#include "site/Channel.h"
#include "values/Colour.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace zan::wrappers {

class PastView;

using binding::Ref;
using binding::Variant;

/// The one face through which the window, the collection, the live data and the setup forms touch a placed control,
/// whatever the thing on the surface really is. A wrapper joins a CONTROL node of the document, a live control on
/// the surface and, where bound, a channel.
///
/// The class itself is abstract in the classic sense: each member does nothing and gives zero, empty or nothing.
/// Measures are twips.
class iBenchControl : public binding::Object
{
public:
    virtual document::Node XMLNode() const { return {}; }
    /// Loads the control from a CONTROL element.
    virtual void setXMLNode(const document::Node&) {}
    virtual values::Colour BackColour() const { return {}; }
    virtual void setBackColour(values::Colour) {}
    virtual QString BindTo() const { return {}; }
    virtual void setBindTo(const QString&) {}
    virtual Ref<site::Channel> Channel() const { return {}; }
    /// Binds the control to a channel, or to none; writes BindTo too.
    virtual void setChannel(const Ref<site::Channel>&) {}
    virtual Ref<binding::Object> Control() const { return {}; }
    virtual void setControl(const Ref<binding::Object>&) {}
    virtual QString ControlType() const { return {}; }
    virtual void setControlType(const QString&) {}
    virtual Ref<binding::Object> Font() const { return {}; }
    virtual void setFont(const Ref<binding::Object>&) {}
    virtual values::Colour ForeColour() const { return {}; }
    virtual void setForeColour(values::Colour) {}
    virtual float Height() const { return 0; }
    virtual void setHeight(float) {}
    virtual std::int32_t hWnd() const { return 0; }  ///< 0 for a windowless control
    virtual std::int16_t Index() const { return 0; } ///< one-based place in BenchControls
    virtual void setIndex(std::int16_t) {}
    virtual QString Key() const { return {}; }
    virtual void setKey(const QString&) {}
    virtual float Left() const { return 0; }
    virtual void setLeft(float) {}
    virtual bool ShowGrabHandles() const { return false; }
    virtual void setShowGrabHandles(bool) {}
    virtual QString ToolTipText() const { return {}; }
    virtual void setToolTipText(const QString&) {}
    virtual float Top() const { return 0; }
    virtual void setTop(float) {}
    /// Whether the control follows the window's font and colours.
    virtual bool UseWindowSettings() const { return false; }
    virtual void setUseWindowSettings(bool) {}
    virtual bool Visible() const { return false; }
    virtual void setVisible(bool) {}
    virtual float Width() const { return 0; }
    virtual void setWidth(float) {}

    /// The past that the control shows instead of what is now; null for none.
    virtual PastView* past() const { return nullptr; }

    /// Runs a system move of the live control and stores the result.
    virtual void Drag() {}
    /// Creates the resize handles once; parent and target are window handles of the control host.
    virtual void InitGrabHandles(std::int32_t /*Parent*/, std::int32_t /*Target*/, values::Colour /*Colour*/) {}
    /// Takes the resize handles off the surface, whoever goes on holding the wrapper; showing them makes new ones.
    virtual void dropGrabHandles() {}
    /// Moves the live control; parts left out stay as they are.
    virtual void Move(float /*Left*/, std::optional<float> /*Top*/ = {}, std::optional<float> /*Width*/ = {},
                      std::optional<float> /*Height*/ = {})
    {}
    /// Brings the node fully up to date from the live control.
    virtual void UpdateNode() {}
    virtual void ZOrder(std::optional<std::int32_t> /*Position*/ = {}) {}

    /// Whether restriction data has been fetched for the control; not stored.
    virtual bool Updated() const { return false; }
    virtual void setUpdated(bool) {}

    const binding::MemberTable& members() const override;
    static const binding::MemberTable& wrapperMembers();
};

} // namespace zan::wrappers
