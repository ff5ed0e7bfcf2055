#include "document/ChangeCounter.h"

#include "values/ChangeCount.h"

#include <algorithm>
#include <array>

namespace zan::document {

namespace {

struct Tally
{
    values::ChangeCount changes;
    std::uint32_t counters = 0;
};

constinit thread_local std::array<Tally, ChangeCounter::Bits> tallies{};
// Asked at every read of a node: found without a call.
[[gnu::tls_model("initial-exec")]] constinit thread_local std::uint8_t recordingBit = 0;

} // namespace

ChangeCounter::ChangeCounter() noexcept
{
    const auto emptiest = std::min_element(tallies.begin(), tallies.end(),
                                           [](const Tally& a, const Tally& b) { return a.counters < b.counters; });
    ++emptiest->counters;
    m_place = std::uint8_t(emptiest - tallies.begin());
}

ChangeCounter::~ChangeCounter()
{
    --tallies[m_place].counters;
}

std::uint32_t ChangeCounter::value() const noexcept
{
    return tallies[m_place].changes.value();
}

void ChangeCounter::count(unsigned bits) noexcept
{
    for (Tally& tally : tallies) {
        if (bits & 1U)
            tally.changes.add();
        bits >>= 1U;
    }
}

ReadRecorder::ReadRecorder(const ChangeCounter& counter) noexcept
    : m_outer(recordingBit)
{
    recordingBit = counter.bit();
}

ReadRecorder::~ReadRecorder()
{
    recordingBit = m_outer;
}

std::uint8_t ReadRecorder::activeBit() noexcept
{
    return recordingBit;
}

} // namespace zan::document
