#include "halyard/SimulatedDriver.h"

#include "halyard/BlockPlan.h"

#include <algorithm>
#include <limits>

namespace zan::halyard {

namespace {

constexpr std::int64_t LongestTime = 3'600'000; // an hour in milliseconds
/// Steps in which programming and unloading go from 0 to 100 percent.
constexpr int WorkSteps = 20;
/// Times without a connection that the logger remembers.
constexpr std::size_t MostAbsences = 1000;
constexpr std::int64_t EndOfMemory = std::int64_t(std::numeric_limits<std::int32_t>::max()) + 1;

void takeWaves(UriOptions& options, SimulatedOptions& result)
{
    const QString prefix = QStringLiteral("wave.");
    for (const LoggerUri::Option& option : options.withPrefix(prefix)) {
        bool isNumber = false;
        const qlonglong address = option.first.toLongLong(&isNumber);
        Waveform wave;
        if (!isNumber || address < 0 || address >= EndOfMemory)
            options.reject(prefix + option.first, option.second,
                           QStringLiteral("an address after the dot of its name"));
        else if (!Waveform::parse(option.second, result.seed + std::uint64_t(address), wave))
            options.reject(prefix + option.first, option.second, Waveform::syntax());
        else
            result.waves[std::int32_t(address)] = wave;
    }
}

void takeMissing(UriOptions& options, SimulatedOptions& result)
{
    const QString name = QStringLiteral("missing");
    const QString text = options.text(name);
    if (text.isEmpty())
        return;
    const qsizetype dash = text.indexOf(u'-');
    bool isFrom = false;
    bool isTo = false;
    result.missingFrom = text.left(dash < 0 ? text.size() : dash).toLongLong(&isFrom);
    result.missingTo = dash < 0 ? result.missingFrom : text.mid(dash + 1).toLongLong(&isTo);
    if (!isFrom || (dash >= 0 && !isTo) || result.missingFrom < 0 || result.missingTo < result.missingFrom)
        options.reject(name, text, QStringLiteral("an address or two joined by a dash"));
}

} // namespace

SimulatedOptions SimulatedOptions::take(UriOptions& options, ByteOrder order)
{
    SimulatedOptions result;
    result.order = order;
    result.seed = std::uint64_t(options.integer(QStringLiteral("seed"), 1, 0, std::numeric_limits<qint64>::max()));
    result.memory = options.integer(QStringLiteral("memory"), result.memory, 1, EndOfMemory);
    result.connectTime = options.integer(QStringLiteral("connect"), result.connectTime, 0, LongestTime);
    result.answerTime = options.integer(QStringLiteral("slow"), result.answerTime, 0, LongestTime);
    result.programTime = options.integer(QStringLiteral("programtime"), result.programTime, 0, LongestTime);
    result.unloadTime = options.integer(QStringLiteral("unloadtime"), result.unloadTime, 0, LongestTime);
    result.keeps = options.integer(QStringLiteral("keeps"), result.keeps, 0, 100'000);
    result.refusesConnection = options.flag(QStringLiteral("refuse"));
    result.failsProgram = options.flag(QStringLiteral("programerror"));
    result.failsUnload = options.flag(QStringLiteral("unloaderror"));
    result.failsWrites = options.flag(QStringLiteral("writeerror"));
    result.dropAfter = options.number(QStringLiteral("drop"), 0, 0, 1e6);
    takeMissing(options, result);
    takeWaves(options, result);
    return result;
}

SimulatedDriver::SimulatedDriver(SimulatedOptions options, std::shared_ptr<Clock> clock)
    : m_options(std::move(options))
    , m_clock(std::move(clock))
    , m_memory(m_options.seed, m_options.order, m_options.waves)
    , m_birth(m_clock->now())
    , m_closed(m_birth)
{}

DriverResult SimulatedDriver::open(const TextProgress& progress, CancelToken& token)
{
    static const char* const steps[] = {"Dialling...", "Waiting for prompt...", "Signing on..."};
    constexpr std::int64_t count = std::size(steps);
    for (std::int64_t i = 0; i < count; ++i) {
        progress(QLatin1String(steps[i]));
        const std::int64_t time = m_options.connectTime * (i + 1) / count - m_options.connectTime * i / count;
        if (!m_clock->sleep(time, token))
            return {DriverStatus::Cancelled, {}};
        if (m_options.refusesConnection)
            return {DriverStatus::Failed, QStringLiteral("The logger does not answer.")};
        progress(QStringLiteral("OK"));
    }
    m_opened = m_clock->now();
    m_isOpen = true;
    endAbsence();
    return {};
}

void SimulatedDriver::endAbsence()
{
    m_absences.push_back({m_closed, m_opened, m_memory.written()});
    // What its store does not hold any more is forgotten, and with it the absences that lie further back.
    std::int64_t records = 0;
    for (std::size_t i = m_absences.size(); i-- > 0;) {
        records += (m_absences[i].until - m_absences[i].from) / m_options.logPeriod;
        if (records >= m_options.keeps || m_absences.size() - i >= MostAbsences) {
            m_absences.erase(m_absences.begin(), m_absences.begin() + std::ptrdiff_t(i));
            return;
        }
    }
}

void SimulatedDriver::close() noexcept
{
    if (std::exchange(m_isOpen, false))
        m_closed = m_clock->now();
}

DriverResult SimulatedDriver::answer(std::int64_t milliseconds, CancelToken& token)
{
    if (!m_clock->sleep(milliseconds, token))
        return {DriverStatus::Cancelled, {}};
    const double age = double(m_clock->now() - m_opened) / 1000.0;
    if (m_isOpen && (m_options.dropAfter <= 0 || age < m_options.dropAfter))
        return {};
    close();
    return {DriverStatus::Broken, QStringLiteral("The logger does not answer any more.")};
}

bool SimulatedDriver::hasMemory(std::int64_t address, std::int64_t length) const
{
    const std::int64_t end = address + length;
    const bool isMissing = address <= m_options.missingTo && end > m_options.missingFrom;
    return address >= 0 && length >= 0 && end <= m_options.memory && !isMissing;
}

void SimulatedDriver::prepare(const std::shared_ptr<const MemoryLayout>& layout)
{
    m_memory.setLayout(*layout);
    m_layout = *layout;
}

DriverResult SimulatedDriver::readBlock(std::int32_t address, std::int32_t length, QByteArray& bytes,
                                        CancelToken& token)
{
    DriverResult result = answer(m_options.answerTime, token);
    if (!result.isOk())
        return result;
    if (!hasMemory(address, length))
        return {DriverStatus::Unavailable,
                QStringLiteral("The logger has no memory of %1 bytes at address %2.").arg(length).arg(address)};
    bytes = m_memory.read(address, length, double(m_clock->now() - m_birth) / 1000.0);
    return result;
}

DriverResult SimulatedDriver::writeBlock(std::int32_t address, const QByteArray& bytes, CancelToken& token)
{
    DriverResult result = answer(m_options.answerTime, token);
    if (!result.isOk())
        return result;
    if (m_options.failsWrites)
        return {DriverStatus::Failed, QStringLiteral("The logger refused the value for address %1.").arg(address)};
    if (!hasMemory(address, bytes.size()))
        return {
            DriverStatus::Unavailable,
            QStringLiteral("The logger has no memory of %1 bytes at address %2.").arg(bytes.size()).arg(address)};
    m_memory.write(address, bytes);
    return result;
}

DriverResult SimulatedDriver::check(CancelToken& token)
{
    return answer(0, token);
}

DriverResult SimulatedDriver::program(const PercentProgress& progress, CancelToken& token)
{
    DriverResult result =
        work(m_options.programTime, QStringLiteral("Sending program..."), m_options.failsProgram, progress, token);
    if (result.isOk()) {
        m_memory.reset();
        m_absences.clear();
    }
    return result;
}

std::vector<std::pair<std::int64_t, const SimulatedDriver::Absence*>> SimulatedDriver::keptMoments() const
{
    std::vector<std::pair<std::int64_t, const Absence*>> moments;
    for (auto absence = m_absences.rbegin(); absence != m_absences.rend(); ++absence) {
        const std::int64_t count = (absence->until - absence->from) / m_options.logPeriod;
        for (std::int64_t i = count; i > 0 && std::int64_t(moments.size()) < m_options.keeps; --i)
            moments.emplace_back(absence->from + i * m_options.logPeriod, &*absence);
    }
    std::reverse(moments.begin(), moments.end());
    return moments;
}

LoggedMemory SimulatedDriver::keptRecord(std::int64_t moment, const Absence& absence) const
{
    LoggedMemory record{moment, {}};
    const double seconds = double(moment - m_birth) / 1000.0;
    for (const MemoryBlock& block : planBlocks(m_layout, limits())) {
        const auto keep = [&](std::int32_t address, std::int32_t length) {
            if (hasMemory(address, length))
                record.blocks.emplace_back(address, m_memory.read(address, length, seconds, absence.written));
        };
        if (hasMemory(block.address, block.length)) {
            keep(block.address, block.length);
            continue;
        }
        for (const MemoryField& field : m_layout) { // a hole does not take its neighbours along
            if (field.address >= block.address && field.address < block.address + block.length)
                keep(field.address, field.length);
        }
    }
    return record;
}

DriverResult SimulatedDriver::unload(const RecordSink& records, const PercentProgress& progress, CancelToken& token)
{
    const auto moments = keptMoments();
    std::size_t done = 0;
    const auto take = [&](int step) {
        std::vector<LoggedMemory> piece;
        for (const std::size_t end = moments.size() * std::size_t(step) / WorkSteps; done < end; ++done)
            piece.push_back(keptRecord(moments[done].first, *moments[done].second));
        if (!piece.empty())
            records(std::move(piece));
    };
    return work(m_options.unloadTime, QStringLiteral("Unloading data..."), m_options.failsUnload, progress, token,
                take);
}

DriverResult SimulatedDriver::work(std::int64_t milliseconds, const QString& text, bool fails,
                                   const PercentProgress& progress, CancelToken& token,
                                   const std::function<void(int step)>& take)
{
    constexpr int steps = WorkSteps;
    constexpr int failingStep = 12;
    progress(-1, QStringLiteral("Waiting for prompt..."));
    for (int step = 0; step <= steps; ++step) {
        progress(step * 100 / steps, text);
        if (take)
            take(step);
        if (fails && step == failingStep)
            return {DriverStatus::Failed, QStringLiteral("the logger reported an error.")};
        const std::int64_t time = milliseconds * (step + 1) / steps - milliseconds * step / steps;
        if (const DriverResult result = answer(step < steps ? time : 0, token); !result.isOk())
            return result;
    }
    return {};
}

} // namespace zan::halyard
