#pragma once

#include <QString>

#include <cstdint>

namespace zan::host {

/// What a run without a screen has to tell: printed on the standard error as it happens, failures and refused writes
/// counted.
class RunReport
{
public:
    /// Prints what does not fail the run.
    void note(const QString& message);
    /// Counts a failure and prints it.
    void fail(const QString& message);
    /// Counts a failure and prints it as "PLACE: MESSAGE", as compilers do.
    void failAt(const QString& place, const QString& message);
    /// The logger has refused a value that it was sent; counted on its own.
    void writeRefused(const QString& message);

    /// How many writes were refused since the last call. What is taken here fails nobody.
    std::int32_t takeRefusedWrites() noexcept;
    /// The run has ended: refused writes that nobody took become one failure.
    void close();
    int failures() const noexcept { return m_failures; }

private:
    int m_failures = 0;
    std::int32_t m_refusedWrites = 0;
};

} // namespace zan::host
