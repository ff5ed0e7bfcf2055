#pragma once

#include "zanbench/hostitem/HostFamily.h"

namespace zan::host {

/// Boxes and forms that nobody sees: Boxes, Answer.
class HostBoxes : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// The boxes so far: a snapshot.
    Ref<binding::Object> Boxes();
    /// Lays an answer ready for the next box or modal form.
    void Answer(const QString& text);

    const binding::MemberTable& members() const override;
};

} // namespace zan::host
