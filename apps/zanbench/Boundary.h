#pragma once

#include <QString>

#include <functional>

namespace zan::host {

/// The exception under way in words: "run-time error 13: Type mismatch", or what it says of itself. Inside a catch
/// only.
QString currentFailure();

/// Runs a step of a command; "DOING failed: WHY" when anything was thrown, or nothing. No exception passes.
[[nodiscard]] QString failureOf(const QString& doing, const std::function<void()>& step);

} // namespace zan::host
