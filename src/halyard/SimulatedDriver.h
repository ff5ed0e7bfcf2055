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
    DriverResult unload(const PercentProgress& progress, CancelToken& token) override;
    void close() noexcept override { m_isOpen = false; }

private:
    /// Waits as long as an answer takes; then the connection may have broken.
    DriverResult answer(std::int64_t milliseconds, CancelToken& token);
    bool hasMemory(std::int64_t address, std::int64_t length) const;
    /// Goes from 0 to 100 percent in a time; fails at 60 when told to.
    DriverResult work(std::int64_t milliseconds, const QString& text, bool fails, const PercentProgress& progress,
                      CancelToken& token);

    SimulatedOptions m_options;
    std::shared_ptr<Clock> m_clock;
    SimulatedMemory m_memory;
    std::int64_t m_birth;      // moment from which the waveforms run
    std::int64_t m_opened = 0; // moment at which the connection was made
    bool m_isOpen = false;
};

} // namespace zan::halyard
