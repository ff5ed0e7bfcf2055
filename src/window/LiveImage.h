#pragma once

#include "site/Channel.h"
#include "wrappers/iBenchControl.h"

#include <utility>
#include <vector>

namespace zan::window {

using values::Ref;

/// How a control looks and what it is bound to, at one moment: the design values of its live control, its font and its
/// channel. What a setup form has changed is the difference of two of them.
class LiveImage
{
public:
    LiveImage() = default;
    explicit LiveImage(const wrappers::iBenchControl& control);

    bool operator==(const LiveImage& other) const;
    /// Gives the control back what differs from the image that was taken at the other end of the step. What a control
    /// refuses stays as it is.
    void apply(wrappers::iBenchControl& control, const LiveImage& from) const;

private:
    std::vector<std::pair<values::Name, values::Variant>> m_values;
    Ref<binding::Object> m_font; ///< a copy
    Ref<site::Channel> m_channel;
};

} // namespace zan::window
