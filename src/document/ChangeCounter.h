#pragma once

#include <cstdint>

namespace zan::document {

/// Counts the changes of the nodes that its owner watches: the owner keeps something that was derived from them, and
/// derives it anew when the count is another (see Node::watch).
///
/// A node remembers its watchers as bits, of which there are few; each counter takes the bit that the fewest others
/// have. Counters of one bit count each other's changes too, which costs a look that was not needed and never leaves
/// out one that was. A counter belongs to the thread that made it.
class ChangeCounter
{
public:
    ChangeCounter() noexcept;
    ~ChangeCounter();
    ChangeCounter(const ChangeCounter&) = delete;
    ChangeCounter& operator=(const ChangeCounter&) = delete;

    /// Never 0. What was derived from watched nodes at an equal count still holds.
    std::uint32_t value() const noexcept;

    // To the nodes only ----------------------------------------------------------------------------------------

    static constexpr int Bits = 8;
    std::uint8_t bit() const noexcept { return std::uint8_t(1U << m_place); }
    /// Counts one change for everybody who has one of these bits.
    static void count(unsigned bits) noexcept;

private:
    std::uint8_t m_place;
};

/// While it lives, every node of which something is read on this thread is watched: a routine tells by its reading
/// alone what its result depends on. Reads through a Node's own functions are seen, whoever makes them and however
/// deep in the call; a read of an element's text watches everything that the text is made of, and a search that finds
/// nothing watches the list that was searched.
///
/// A recorder within another takes the reads over until it ends.
class ReadRecorder
{
public:
    explicit ReadRecorder(const ChangeCounter& counter) noexcept;
    ~ReadRecorder();
    ReadRecorder(const ReadRecorder&) = delete;
    ReadRecorder& operator=(const ReadRecorder&) = delete;

    /// The bit of the one that is at work; 0 when none is.
    static std::uint8_t activeBit() noexcept;

private:
    std::uint8_t m_outer;
};

} // namespace zan::document
