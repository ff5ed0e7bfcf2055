#pragma once

#include "zanbench/hostitem/HostFamily.h"

#include <optional>

namespace zan::host {

/// What a script says of itself: Echo, Assert, Quit.
class HostReport : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// Prints its arguments in one line, a blank between them.
    static Variant Echo(binding::Object& self, binding::Arguments arguments);
    /// Counts a failure and prints its place and the text unless the condition holds. The script goes on.
    void Assert(bool condition, const std::optional<QString>& text);
    /// Ends the run with this code. A run with failures never ends with 0.
    void Quit(std::optional<std::int32_t> code);

    const binding::MemberTable& members() const override;
};

} // namespace zan::host
