#pragma once

#include <cstdint>

namespace zan::test {

/// How the memory runs out.
enum class Shortage {
    Once,    ///< one allocation fails, the next ones succeed
    ForGood, ///< from that one on every allocation fails
};

/// Counts what this thread takes by operator new while it lives, and lets the n-th of it (from 1) fail; 0 fails none.
/// Memory that the toolkit takes by malloc is not touched. One lives at a time.
class FailingNew
{
public:
    explicit FailingNew(std::uint64_t failing, Shortage shortage = Shortage::Once);
    ~FailingNew();
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;

    /// Allocations so far.
    std::uint64_t count() const;
    bool hasFailed() const;

    /// Lets nothing fail any more.
    static void end() noexcept;
    /// The place in the code that asked for the memory that failed last; null for none.
    static void* lastAsker() noexcept;
};

} // namespace zan::test
