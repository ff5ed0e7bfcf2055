#pragma once

#include "halyard/CancelToken.h"
#include "site/Channel.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <vector>

namespace zan::halyard {

enum class DriverStatus {
    Ok,
    Cancelled,   ///< the token was cancelled before the work was done
    Unavailable, ///< the logger has no such memory; the connection stands
    Failed,      ///< the logger refused or spoilt this one request; the connection stands
    Broken,      ///< there is no connection (any more)
};

struct DriverResult
{
    DriverStatus status = DriverStatus::Ok;
    QString message; ///< for the user: what went wrong and, where known, what to do; empty when Ok

    bool isOk() const noexcept { return status == DriverStatus::Ok; }
};

/// What one readBlock may ask for.
struct BlockLimits
{
    std::int32_t longest = 4096; ///< bytes in one block, at least 8
    std::int32_t widestGap = 32; ///< unused bytes between two channels that are still cheaper to read than to skip
    std::int32_t alignment = 1;  ///< blocks start at and are as long as multiples of this many bytes
};

/// One value in the logger's memory, as its channel describes it.
struct MemoryField
{
    std::int32_t address = 0;
    std::int32_t length = 0; ///< bytes
    site::DataType type = site::DataType::UnsignedByte;

    friend bool operator==(const MemoryField&, const MemoryField&) = default;
};
/// Fields in order of address, then longest first.
using MemoryLayout = std::vector<MemoryField>;

/// What a logger has kept of its memory by itself, at one moment.
struct LoggedMemory
{
    std::int64_t moment = 0;                                 ///< of the clock that the driver was made with
    std::vector<std::pair<std::int32_t, QByteArray>> blocks; ///< address and bytes; what is missing was not kept
};
/// Takes some of the records that a logger has kept, in any order; the same ones any number of times.
using RecordSink = std::function<void(std::vector<LoggedMemory> records)>;

/// Text that a user may see while a call is under way.
using TextProgress = std::function<void(const QString& text)>;
/// Percentage 0 to 100, negative for a text alone.
using PercentProgress = std::function<void(int percentage, const QString& text)>;

/// A way of talking to one logger, in blocking calls.
///
/// All calls but limits() and interrupt() come one at a time from the one thread of the logger, which also destroys
/// the driver; what belongs to a thread (sockets, say) is made in open() and taken down in close(). A call that waits
/// returns Cancelled soon after its token is cancelled: it waits on the token, or interrupt() ends its wait. Memory
/// is handed over as raw bytes; values are made of them elsewhere. A driver may be opened again after close().
class Driver
{
public:
    virtual ~Driver() = default;

    /// Fixed for the driver's life; may be called from any thread.
    virtual BlockLimits limits() const { return {}; }
    /// Whether the values are made up: a host says so wherever it shows them. Fixed for the driver's life.
    virtual bool isSimulated() const { return false; }
    /// Connects. Anything but Ok leaves the driver closed.
    virtual DriverResult open(const TextProgress& progress, CancelToken& token) = 0;
    /// The fields that the following reads are made for: called before the first read and after each change.
    virtual void prepare(const std::shared_ptr<const MemoryLayout>& layout) { Q_UNUSED(layout); }
    /// Reads `length` bytes from `address` on; `bytes` has that length exactly when the result is Ok.
    virtual DriverResult readBlock(std::int32_t address, std::int32_t length, QByteArray& bytes,
                                   CancelToken& token) = 0;
    virtual DriverResult writeBlock(std::int32_t address, const QByteArray& bytes, CancelToken& token) = 0;
    /// Finds out whether the connection still stands while nothing is read.
    virtual DriverResult check(CancelToken& token)
    {
        Q_UNUSED(token);
        return {};
    }
    /// Sends the logger its program, which resets it.
    virtual DriverResult program(const PercentProgress& progress, CancelToken& token) = 0;
    /// Fetches the data that the logger has stored, of the fields that it was prepared for, and hands it over piece by
    /// piece. What was handed over counts, even when the rest fails.
    virtual DriverResult unload(const RecordSink& records, const PercentProgress& progress, CancelToken& token) = 0;
    /// Ends the connection, if there is one.
    virtual void close() noexcept = 0;

    /// Makes a call that is blocked outside of its token's reach return soon. Comes from another thread while that
    /// call runs, after its token has been cancelled.
    virtual void interrupt() noexcept {}
};

/// Runs one call of a driver; a library's exception counts as a broken connection with its text.
template <class Call>
DriverResult guarded(Call call)
{
    try {
        return call();
    } catch (const std::exception& error) {
        return {DriverStatus::Broken, QString::fromLocal8Bit(error.what())};
    }
}

} // namespace zan::halyard
