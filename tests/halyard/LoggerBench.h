#pragma once

#include "ManualClock.h"
#include "Quiet.h"
#include "ScriptedDriver.h"
#include "halyard/HalyardLogger.h"
#include "halyard/LoggerFactory.h"
#include "support/ErrorOf.h"
#include "support/FakeSite.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zan::halyard {

using test::errorOf;

using testing::ElementsAre;
using values::make;

/// Runs the event loop until a condition holds; false when it does not within a generous time.
template <class Condition>
bool spinUntil(Condition condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(60'000))
            return false;
        QCoreApplication::processEvents();
        std::this_thread::yield();
    }
    return true;
}

/// Waits for what another thread does; nothing that is on its way to this one arrives meanwhile.
template <typename Condition>
bool waitHearingNothing(Condition condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(60'000))
            return false;
        std::this_thread::yield();
    }
    return true;
}

/// A logger with a site and a clock of its own, and a list of everything it announces.
class LoggerBench : public testing::Test
{
protected:
    ~LoggerBench() override
    {
        logger = nullptr;
        QCoreApplication::processEvents();
    }

    /// A logger over the scripted driver.
    void start(const LiveSettings& settings = {})
    {
        logger = make<HalyardLogger>(std::make_unique<ScriptedDriver>(script), scheme, clock, settings);
        listen();
    }
    /// A logger of a URI.
    void start(const QString& uri)
    {
        LoggerResult result = createLogger(uri, scheme, clock);
        ASSERT_EQ(result.error.toStdString(), "");
        logger = values::Ref<HalyardLogger>(dynamic_cast<HalyardLogger*>(result.logger.get()));
        listen();
    }
    void listen()
    {
        const auto note = [this](const QString& event) {
            events.push_back(event.toStdString());
            if (onEvent)
                onEvent(event.toStdString());
        };
        HalyardLogger* source = logger.get();
        QObject::connect(source->Link().get(), &site::Link::StateChange, &context,
                         [note](int state) { note(QStringLiteral("State %1").arg(state)); });
        QObject::connect(source, &site::Logger::NewBenchData, &context, [note] { note(QStringLiteral("Data")); });
        QObject::connect(source, &site::Logger::NewENTData, &context, [note] { note(QStringLiteral("Records")); });
        QObject::connect(source, &site::Logger::Connected, &context, [note] { note(QStringLiteral("Connected")); });
        QObject::connect(source, &site::Logger::Disconnected, &context,
                         [note] { note(QStringLiteral("Disconnected")); });
        QObject::connect(source, &site::Logger::ConnectionError, &context,
                         [note](const QString& text) { note(QStringLiteral("Error ") + text); });
        QObject::connect(source, &site::Logger::ConnectionProgress, &context,
                         [note](const QString& text) { note(QStringLiteral("Progress ") + text); });
        QObject::connect(source, &site::Logger::ProgramComplete, &context,
                         [note] { note(QStringLiteral("ProgramComplete")); });
        QObject::connect(source, &site::Logger::UnloadComplete, &context,
                         [note] { note(QStringLiteral("UnloadComplete")); });
        QObject::connect(source, &site::Logger::ProgramLoggerProgress, &context,
                         [note](int percent, const QString& text) {
                             note(QStringLiteral("Program %1 %2").arg(percent).arg(text));
                         });
        QObject::connect(source, &site::Logger::UnloadLoggerProgress, &context,
                         [note](int percent, const QString& text) {
                             note(QStringLiteral("Unload %1 %2").arg(percent).arg(text));
                         });
        QObject::connect(source, &HalyardLogger::WriteFailed, &context, [note](int address, const QString& text) {
            note(QStringLiteral("WriteFailed %1 %2").arg(address).arg(text));
        });
    }

    /// A channel of the site.
    values::Ref<fake::FakeChannel> channel(const QString& key, std::int32_t address, DataType type)
    {
        const auto added = scheme->window(QStringLiteral("RTD"))->channel(key);
        added->baseAddress = address;
        added->dataType = std::int32_t(type);
        return added;
    }
    bool waitForEvent(const std::string& event, int times = 1)
    {
        return spinUntil([&] { return std::count(events.begin(), events.end(), event) >= times; });
    }
    bool waitForState(site::LinkState state)
    {
        return spinUntil([&] { return logger->Link()->State() == state; });
    }
    void connectLogger()
    {
        logger->Link()->Connect();
        ASSERT_TRUE(waitForEvent("Connected"));
    }
    /// Connects with live polling and waits for the first data.
    void goLive()
    {
        if (scheme->windows->windows.empty())
            channel(QStringLiteral("A"), 100, DataType::UnsignedByte);
        logger->AddAction(site::LiveAction);
        connectLogger();
        ASSERT_TRUE(waitForEvent("Data"));
    }
    /// Lets the period pass and waits for the data of the poll.
    void nextPoll()
    {
        const auto before = std::count(events.begin(), events.end(), "Data");
        ASSERT_TRUE(spinUntil([&] { return clock->hasTimer(); }));
        clock->advance(1000);
        ASSERT_TRUE(waitForEvent("Data", int(before) + 1));
    }
    std::vector<std::string> takeEvents() { return std::exchange(events, {}); }
    /// Handles everything that is on its way already: a task goes through the driver and its result comes back.
    void settle() { EXPECT_TRUE(waitForQuiet()); }

    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<DriverScript> script = std::make_shared<DriverScript>();
    values::Ref<fake::FakeScheme> scheme = make<fake::FakeScheme>();
    values::Ref<HalyardLogger> logger;
    std::vector<std::string> events;
    std::function<void(const std::string&)> onEvent;
    QObject context;
};

} // namespace zan::halyard
