#pragma once

#include "halyard/Clock.h"
#include "halyard/Driver.h"
#include "halyard/LoggerUri.h"
#include "halyard/SimulatedMemory.h"

namespace zan::halyard {

/// What a simulated logger does, as its URI says; docs/loggers.md tells the options.
struct SimulatedOptions
{
    std::uint64_t seed = 1;
    ByteOrder order = ByteOrder::Big;
    std::int64_t memory = 16 * 1024 * 1024; ///< bytes that the logger has
    SimulatedMemory::Waves waves;

    std::int64_t connectTime = 800; ///< milliseconds
    std::int64_t answerTime = 0;    ///< milliseconds for each read and write
    std::int64_t programTime = 4000;
    std::int64_t unloadTime = 3000;
    std::int64_t logPeriod = 5000; ///< from record to record of those that it keeps while nobody is connected
    std::int64_t keeps = 2000;     ///< records that it keeps at most

    bool refusesConnection = false;
    bool failsProgram = false;
    bool failsUnload = false;
    bool failsWrites = false;
    double dropAfter = 0;         ///< seconds after which a connection breaks; 0 for never
    std::int64_t missingFrom = 0; ///< memory that cannot be read, first address
    std::int64_t missingTo = -1;  ///< last address

    /// Takes the simulation's own options.
    static SimulatedOptions take(UriOptions& options, ByteOrder order);
};

/// A logger that is not there: its memory lives, and it can be told to fail in every way that a logger can.
class SimulatedDriver final : public Driver
{
public:
    SimulatedDriver(SimulatedOptions options, std::shared_ptr<Clock> clock);

    bool isSimulated() const override { return true; }
    DriverResult open(const TextProgress& progress, CancelToken& token) override;
    void prepare(const std::shared_ptr<const MemoryLayout>& layout) override;
    DriverResult readBlock(std::int32_t address, std::int32_t length, QByteArray& bytes,
                           CancelToken& token) override;
    DriverResult writeBlock(std::int32_t address, const QByteArray& bytes, CancelToken& token) override;
    DriverResult check(CancelToken& token) override;
    DriverResult program(const PercentProgress& progress, CancelToken& token) override;
    DriverResult unload(const RecordSink& records, const PercentProgress& progress, CancelToken& token) override;
    void close() noexcept override;

private:
    /// A time without a connection: the logger has kept records in it.
    struct Absence
    {
        std::int64_t from;
        std::int64_t until;
        MemoryImage written; // what its memory had been told by then
    };
    void endAbsence();
    /// Moments of the records that it has kept, the oldest first, and the absence that each lies in.
    std::vector<std::pair<std::int64_t, const Absence*>> keptMoments() const;
    LoggedMemory keptRecord(std::int64_t moment, const Absence& absence) const;
    /// Waits as long as an answer takes; then the connection may have broken.
    DriverResult answer(std::int64_t milliseconds, CancelToken& token);
    bool hasMemory(std::int64_t address, std::int64_t length) const;
    /// Goes from 0 to 100 percent in a time; fails at 60 when told to.
    DriverResult work(std::int64_t milliseconds, const QString& text, bool fails, const PercentProgress& progress,
                      CancelToken& token, const std::function<void(int step)>& take = {});

    SimulatedOptions m_options;
    std::shared_ptr<Clock> m_clock;
    SimulatedMemory m_memory;
    std::int64_t m_birth;      // moment from which the waveforms run
    std::int64_t m_opened = 0; // moment at which the connection was made
    std::int64_t m_closed;     // moment from which there is none, or was none before the one that stands
    MemoryLayout m_layout;
    std::vector<Absence> m_absences;
    bool m_isOpen = false;
};

} // namespace zan::halyard
