#pragma once

#include "binding/Object.h"
#include "surface/forms/RecordingForms.h"

#include <vector>

namespace zan::host {

/// One message box that a panel or a script has shown.
class ShownBox : public binding::Object
{
public:
    explicit ShownBox(surface::RecordingForms::Box box)
        : m_box(std::move(box))
    {}
    QString Text() const { return m_box.text; }
    std::int32_t Buttons() const { return m_box.style & 15; } ///< button set, 0 to 5
    std::int32_t Icon() const { return m_box.style & 0x70; }  ///< 0, 16, 32, 48 or 64
    QString Title() const { return m_box.title; }
    const binding::MemberTable& members() const override;

private:
    surface::RecordingForms::Box m_box;
};

/// The boxes so far, oldest first: a snapshot.
class BoxList : public binding::Object
{
public:
    explicit BoxList(std::vector<surface::RecordingForms::Box> boxes)
        : m_boxes(std::move(boxes))
    {}
    std::int32_t Count() const { return std::int32_t(m_boxes.size()); }
    /// Box by place from 1; raises 9 outside.
    values::Ref<ShownBox> Item(std::int32_t place) const;
    const binding::MemberTable& members() const override;

private:
    std::vector<surface::RecordingForms::Box> m_boxes;
};

} // namespace zan::host
