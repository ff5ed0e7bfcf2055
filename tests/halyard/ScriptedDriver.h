#pragma once

#include "halyard/Driver.h"

#include <atomic>
#include <map>
#include <mutex>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace zan::halyard {

/// What a test knows of a driver and tells it to do. Shared with the driver, which lives on another thread.
struct DriverScript
{
    /// Makes the next calls of a kind ("open", "read", "write", "program", "unload", "check") wait for release(); they
    /// go on when cancelled, too, unless the driver is stubborn.
    void hold(const std::string& call)
    {
        const std::lock_guard lock(mutex);
        held = call;
    }
    void release()
    {
        const std::lock_guard lock(mutex);
        held.clear();
        ++releases;
        if (waiting)
            waiting->notify();
    }
    bool isWaiting() const
    {
        const std::lock_guard lock(mutex);
        return waiting != nullptr;
    }
    void setResult(const std::string& call, DriverResult result)
    {
        const std::lock_guard lock(mutex);
        results[call] = result;
    }
    void setByte(std::int32_t address, std::uint8_t byte)
    {
        const std::lock_guard lock(mutex);
        memory[address] = byte;
    }
    std::vector<std::string> takeCalls()
    {
        const std::lock_guard lock(mutex);
        return std::exchange(calls, {});
    }

    mutable std::mutex mutex;
    std::string held;
    std::atomic<int> releases = 0;
    CancelToken* waiting = nullptr;
    std::map<std::string, DriverResult> results;
    std::map<std::int32_t, DriverStatus> blockStatus; ///< by an address inside the block
    std::vector<LoggedMemory> kept;                   // what an unload hands over; set before it begins
    std::map<std::int32_t, std::uint8_t> memory;      ///< bytes that are not 0
    std::vector<std::string> calls;                   ///< as they came, "read 100+4"
    bool throws = false;                              ///< every call throws
    std::atomic<bool> isAlive = false;
    std::atomic<int> interrupts = 0;
    bool isStubborn = false; ///< waits without looking at its token, until interrupt() or release()
    bool isDeaf = false;     ///< does not hear interrupt() either
    std::binary_semaphore interrupted{0};
};

class ScriptedDriver final : public Driver
{
public:
    explicit ScriptedDriver(std::shared_ptr<DriverScript> script)
        : m_script(std::move(script))
    {
        m_script->isAlive = true;
    }
    ~ScriptedDriver() override { m_script->isAlive = false; }

    BlockLimits limits() const override { return {64, 8, 1}; }
    DriverResult open(const TextProgress& progress, CancelToken& token) override
    {
        progress(QStringLiteral("Dialling"));
        return call("open", "open", token);
    }
    void prepare(const std::shared_ptr<const MemoryLayout>& layout) override
    {
        const std::lock_guard lock(m_script->mutex);
        m_script->calls.push_back("prepare " + std::to_string(layout->size()));
    }
    DriverResult readBlock(std::int32_t address, std::int32_t length, QByteArray& bytes,
                           CancelToken& token) override
    {
        const DriverResult result =
            call("read", "read " + std::to_string(address) + "+" + std::to_string(length), token);
        const std::lock_guard lock(m_script->mutex);
        for (const auto& status : m_script->blockStatus) {
            if (status.first >= address && status.first < address + length)
                return {status.second, QStringLiteral("bad block")};
        }
        bytes.resize(length);
        for (std::int32_t i = 0; i < length; ++i) {
            const auto found = m_script->memory.find(address + i);
            bytes[i] = found == m_script->memory.end() ? '\0' : char(found->second);
        }
        return result;
    }
    DriverResult writeBlock(std::int32_t address, const QByteArray& bytes, CancelToken& token) override
    {
        const DriverResult result =
            call("write", "write " + std::to_string(address) + "=" + bytes.toHex().toStdString(), token);
        const std::lock_guard lock(m_script->mutex);
        for (qsizetype i = 0; result.isOk() && i < bytes.size(); ++i)
            m_script->memory[address + std::int32_t(i)] = std::uint8_t(bytes[i]);
        return result;
    }
    DriverResult check(CancelToken& token) override { return call("check", "check", token); }
    DriverResult program(const PercentProgress& progress, CancelToken& token) override
    {
        progress(50, QStringLiteral("Half way"));
        return call("program", "program", token);
    }
    DriverResult unload(const RecordSink& records, const PercentProgress& progress, CancelToken& token) override
    {
        progress(-1, QStringLiteral("Reading"));
        if (!m_script->kept.empty())
            records(m_script->kept);
        return call("unload", "unload", token);
    }
    void close() noexcept override
    {
        const std::lock_guard lock(m_script->mutex);
        m_script->calls.push_back("close");
    }
    void interrupt() noexcept override
    {
        ++m_script->interrupts;
        if (m_script->isStubborn && !m_script->isDeaf)
            m_script->interrupted.release();
    }

private:
    DriverResult call(const std::string& kind, const std::string& text, CancelToken& token)
    {
        bool isHeld = false;
        int releases = 0;
        {
            const std::lock_guard lock(m_script->mutex);
            m_script->calls.push_back(text);
            isHeld = m_script->held == kind;
            releases = m_script->releases;
            if (isHeld)
                m_script->waiting = &token;
            if (m_script->throws)
                throw std::runtime_error("the library gave up");
        }
        bool isDone = true;
        if (isHeld && m_script->isStubborn)
            m_script->interrupted.acquire();
        else if (isHeld)
            isDone = token.waitUntil([&] { return m_script->releases != releases; });
        const std::lock_guard lock(m_script->mutex);
        m_script->waiting = nullptr;
        if (!isDone || token.isCancelled())
            return {DriverStatus::Cancelled, {}};
        return m_script->results[kind];
    }

    std::shared_ptr<DriverScript> m_script;
};

} // namespace zan::halyard
