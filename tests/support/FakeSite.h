#pragma once

#include "site/Logger.h"
#include "support/FakeScheme.h"

#include <functional>
#include <map>
#include <optional>
#include <vector>

/// A site whose link, live data and scheme are as small as a host can write them, all of it open to a test.
namespace zan::fake {

class FakeLink : public site::Link
{
public:
    site::LinkState state = site::LinkState::NotConnected;
    int connects = 0, disconnects = 0; ///< how often each has been asked for
    std::function<void()> onConnect, onDisconnect;
    std::function<void()> onState; ///< called by State

    /// Takes on a state and announces it.
    void enter(site::LinkState newState)
    {
        state = newState;
        Q_EMIT StateChange(int(newState));
    }

    site::LinkState State() const override
    {
        if (onState)
            onState();
        return state;
    }
    void Connect() override
    {
        ++connects;
        if (onConnect)
            onConnect();
    }
    void Disconnect() override
    {
        ++disconnects;
        if (onDisconnect)
            onDisconnect();
    }
};

/// A table of numbers; column 0 is the time.
class FakeRecords : public site::LogRecords
{
public:
    std::vector<QString> labels, units;
    std::vector<std::vector<Variant>> rows;

    std::int32_t rowCount() const override { return std::int32_t(rows.size()); }
    std::int32_t columnCount() const override { return std::int32_t(labels.size()); }
    QString columnLabel(std::int32_t column) const override { return at(labels, column); }
    QString columnUnits(std::int32_t column) const override { return at(units, column); }
    Variant cell(std::int32_t row, std::int32_t column) const override { return at(at(rows, row), column); }

private:
    template <class T>
    static T at(const std::vector<T>& list, std::int32_t place)
    {
        return place >= 0 && std::size_t(place) < list.size() ? list[std::size_t(place)] : T();
    }
};

class FakeBuffer : public site::LogBuffer
{
public:
    Ref<FakeRecords> records = make<FakeRecords>();
    std::int16_t RecordCount() const override { return std::int16_t(records->rows.size()); }
    Ref<site::LogRecords> Records() override { return records; }
};

class FakeBuffers : public site::LogBuffers
{
public:
    std::vector<Ref<FakeBuffer>> buffers{make<FakeBuffer>()};
    std::int32_t Count() const override { return std::int32_t(buffers.size()); }
    Ref<site::LogBuffer> Item(std::int32_t index) override
    {
        if (index < 1 || index > Count())
            values::raise(ErrorNumber::SubscriptOutOfRange);
        return buffers[std::size_t(index) - 1];
    }
};

class FakeLive : public site::Live
{
public:
    struct Write
    {
        Ref<site::Channel> channel;
        Variant value;
    };
    std::vector<Write> writes;             ///< in order of arrival
    std::map<std::int32_t, double> memory; ///< what ReadMemory answers per address, whatever the length
    std::optional<RuntimeError> failure;   ///< raised by WriteChannel while set, after recording
    Ref<FakeBuffers> buffers = make<FakeBuffers>();
    Ref<site::History> history; ///< Nothing unless a test gives one

    Ref<site::LogBuffers> Buffers() override { return buffers; }
    Ref<site::History> History() override { return history; }
    double ReadMemory(std::int32_t address, std::int16_t bytes) override
    {
        const auto found = memory.find(address);
        if (bytes < 1 || bytes > 8 || found == memory.end())
            values::raise(ErrorNumber::InvalidCall);
        return found->second;
    }
    void WriteChannel(const Ref<site::Channel>& channel, const Variant& value) override
    {
        writes.push_back({channel, value});
        if (failure)
            throw *failure;
    }
};

class FakeLogger : public site::Logger
{
public:
    Ref<FakeLink> link = make<FakeLink>();
    Ref<FakeScheme> scheme = make<FakeScheme>();
    Ref<FakeLive> live = make<FakeLive>();
    std::int32_t actions = 0;                       ///< the flags that stand at this moment
    std::function<void()> onLink, onScheme, onLive; ///< called where each is asked for
    bool makesChannels = true;

    /// The channel of a window, both made when they do not exist.
    Ref<FakeChannel> channel(const QString& window, const QString& key)
    {
        return scheme->window(window)->channel(key);
    }
    /// Gives a channel a value without announcing it; Q_EMIT NewBenchData() announces.
    void setValue(const QString& window, const QString& key, const Variant& value)
    {
        channel(window, key)->value = value;
    }

    Ref<site::Link> Link() override { return asked(onLink, link); }
    Ref<site::Scheme> Scheme() override { return asked(onScheme, scheme); }
    Ref<site::Live> Live() override { return asked(onLive, live); }
    std::int32_t Actions() const override { return actions; }
    void AddAction(std::int32_t flag) override { actions |= flag; }
    void RemoveActions(std::int32_t flags) override { actions &= ~flags; }
    Ref<site::Channel> createChannel() override { return makesChannels ? make<FakeChannel>() : nullptr; }

private:
    template <class T>
    static const Ref<T>& asked(const std::function<void()>& action, const Ref<T>& part)
    {
        if (action)
            action();
        return part;
    }
};

} // namespace zan::fake
