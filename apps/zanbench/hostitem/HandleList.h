#pragma once

#include "binding/Object.h"
#include "surface/host/LiveControl.h"
#include "wrappers/iBenchControl.h"

#include <QRect>

#include <vector>

namespace zan::host {

using binding::Ref;

/// One resize handle, as it lies at the moment of asking.
class ShownHandle : public binding::Object
{
public:
    ShownHandle(QRect place, bool visible, std::int16_t cursor)
        : m_place(place)
        , m_visible(visible)
        , m_cursor(cursor)
    {}
    float Left() const; ///< twips of the panel; 0 for a handle that has no place
    float Top() const;
    bool Visible() const { return m_visible; }
    std::int16_t Cursor() const { return m_cursor; } ///< number of the system's cursor
    const binding::MemberTable& members() const override;

private:
    QRect m_place;
    bool m_visible;
    std::int16_t m_cursor;
};

/// The eight handles of a control clockwise from the top left: a snapshot. None for a control without a window.
class HandleList : public binding::Object
{
public:
    HandleList(const wrappers::iBenchControl& wrapper, surface::LiveControl& live);
    std::int32_t Count() const { return std::int32_t(m_handles.size()); }
    /// Handle by place from 1; raises 9 outside.
    Ref<ShownHandle> Item(std::int32_t place) const;
    const binding::MemberTable& members() const override;

private:
    std::vector<Ref<ShownHandle>> m_handles;
};

} // namespace zan::host
