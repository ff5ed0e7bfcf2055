#pragma once

#include "document/Node.h"
#include "site/Logger.h"
#include "values/Convert.h"

#include <functional>
#include <map>
#include <optional>
#include <vector>

/// A site as small as a host can write it: everything a test wants to steer or to look at is a public field.
namespace zan::fake {

using binding::Ref;
using binding::RuntimeError;
using binding::Variant;
using document::Node;
using values::ErrorNumber;
using values::make;
using values::Name;

class FakeChannel : public site::Channel
{
public:
    std::int32_t baseAddress = 0, dataType = 0;
    std::int16_t bytes = 1, useCount = 0;
    float multiplier = 1, offset = 0;
    bool cdt = false, visible = true;
    QString formula, label, format, units;
    Variant value;
    Node node; ///< the CHANNEL element; made when the channel is added to a window

    std::int32_t BaseAddress() const override { return baseAddress; }
    void setBaseAddress(std::int32_t address) override { baseAddress = address; }
    bool CDT() const override { return cdt; }
    void setCDT(bool isProtected) override { cdt = isProtected; }
    std::int32_t DataType() const override { return dataType; }
    void setDataType(std::int32_t type) override { dataType = type; }
    std::int16_t Bytes() const override { return bytes; }
    void setBytes(std::int16_t count) override { bytes = count; }
    float Multiplier() const override { return multiplier; }
    void setMultiplier(float factor) override { multiplier = factor; }
    float Offset() const override { return offset; }
    void setOffset(float distance) override { offset = distance; }
    QString Formula() const override { return formula; }
    void setFormula(const QString& name) override { formula = name; }
    QString Label() const override { return label; }
    void setLabel(const QString& text) override { label = text; }
    QString Format() const override { return format; }
    void setFormat(const QString& text) override { format = text; }
    QString Units() const override { return units; }
    void setUnits(const QString& text) override { units = text; }
    bool Visible() const override { return visible; }
    void setVisible(bool isVisible) override { visible = isVisible; }
    const Variant& Value() const override { return value; }
    void setValue(const Variant& newValue) override { value = newValue; }
    QString Key() const override { return node.child(Name("KEY")).text(); }
    std::int16_t UseCount() const override { return useCount; }
    void setUseCount(std::int16_t count) override { useCount = count; }
    Node XMLNode() const override { return node; }
};

/// Place from 0 of an index from 1 or a key in a list of things with a Key(); nothing for an unknown key.
template <class T>
std::optional<std::size_t> placeOf(const std::vector<Ref<T>>& list, const Variant& indexOrKey)
{
    if (!indexOrKey.isText()) {
        const std::int32_t index = values::toLong(indexOrKey);
        if (index < 1 || std::size_t(index) > list.size())
            values::raise(ErrorNumber::SubscriptOutOfRange);
        return std::size_t(index) - 1;
    }
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i]->Key().compare(indexOrKey.text(), Qt::CaseInsensitive) == 0)
            return i;
    return std::nullopt;
}

class FakeWindow : public site::SchemeWindow
{
public:
    /// A window record whose element stands in no tree yet but belongs to this document.
    explicit FakeWindow(const Node& document, const QString& key = {})
        : node(document.createElement(Name("WINDOW")))
    {
        node.appendChild(node.createElement(Name("KEY"), key));
    }
    Node node; ///< the window node
    std::vector<Ref<FakeChannel>> channels;

    /// The channel of this key, added when the window does not have it.
    Ref<FakeChannel> channel(const QString& key)
    {
        if (const auto place = placeOf(channels, Variant(key)))
            return channels[*place];
        const auto added = make<FakeChannel>();
        Add(added, key);
        return added;
    }

    QString Key() const override { return node.child(Name("KEY")).text(); }
    void setKey(const QString& key) override { node.child(Name("KEY")).setText(key); }
    Node XML() const override { return node; }
    std::int32_t Count() const override { return std::int32_t(channels.size()); }
    Ref<site::Channel> Item(const Variant& indexOrKey) override
    {
        const auto place = placeOf(channels, indexOrKey);
        return place ? Ref<site::Channel>(channels[*place]) : nullptr;
    }
    Ref<site::Channel> Add(const Ref<site::Channel>& channel, const QString& key = {}) override
    {
        const Ref<FakeChannel> own(dynamic_cast<FakeChannel*>(channel.get()));
        if (!own)
            values::raise(ErrorNumber::TypeMismatch);
        const QString name = key.isEmpty() ? QStringLiteral("CH%1").arg(channels.size() + 1) : key;
        if (placeOf(channels, Variant(name)))
            values::raise(ErrorNumber::DuplicateKey);
        own->node = node.createElement(Name("CHANNEL"));
        own->node.appendChild(node.createElement(Name("KEY"), name));
        node.appendChild(own->node);
        channels.push_back(own);
        return own;
    }
};

class FakeWindows : public site::SchemeWindows
{
public:
    Node document = Node::newDocument();
    Node root = document.createElement(Name("SCHEME"));
    std::vector<Ref<FakeWindow>> windows;
    std::optional<RuntimeError> failure; ///< raised by Item while set

    FakeWindows() { document.appendChild(root); }
    std::int32_t Count() const override { return std::int32_t(windows.size()); }
    Ref<site::SchemeWindow> Item(const Variant& indexOrKey) override
    {
        if (failure)
            throw *failure;
        const auto place = placeOf(windows, indexOrKey);
        return place ? Ref<site::SchemeWindow>(windows[*place]) : nullptr;
    }
    Ref<site::SchemeWindow> Add(const Ref<site::SchemeWindow>& window, const QString& key) override
    {
        const Ref<FakeWindow> own(dynamic_cast<FakeWindow*>(window.get()));
        if (!own)
            values::raise(ErrorNumber::TypeMismatch);
        if (placeOf(windows, Variant(key)))
            values::raise(ErrorNumber::DuplicateKey);
        own->setKey(key);
        root.appendChild(own->node);
        windows.push_back(own);
        return own;
    }
    Ref<site::SchemeWindow> createWindow() override { return make<FakeWindow>(document); }
    Ref<site::Channel> createChannel() override { return make<FakeChannel>(); }
};

class FakeScheme : public site::Scheme
{
public:
    QString name = QStringLiteral("Site");
    Ref<FakeWindows> windows = make<FakeWindows>();
    int saves = 0;                       ///< how often Save has been called
    std::optional<RuntimeError> failure; ///< raised by Save while set

    /// The window of this key, added when the scheme does not have it.
    Ref<FakeWindow> window(const QString& key)
    {
        if (const auto place = placeOf(windows->windows, Variant(key)))
            return windows->windows[*place];
        const auto added = make<FakeWindow>(windows->document);
        windows->Add(added, key);
        return added;
    }

    QString Name() const override { return name; }
    void setName(const QString& text) override { name = text; }
    Ref<site::SchemeWindows> Windows() override { return windows; }
    void Save() override
    {
        ++saves;
        if (failure)
            throw *failure;
    }
};

class FakeLink : public site::Link
{
public:
    site::LinkState state = site::LinkState::NotConnected;
    int connects = 0, disconnects = 0; ///< how often each has been asked for
    std::function<void()> onConnect, onDisconnect;

    /// Takes on a state and announces it.
    void enter(site::LinkState newState)
    {
        state = newState;
        Q_EMIT StateChange(int(newState));
    }

    site::LinkState State() const override { return state; }
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

    Ref<site::LogBuffers> Buffers() override { return buffers; }
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
    std::int32_t actions = 0; ///< the flags that stand at this moment

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

    Ref<site::Link> Link() override { return link; }
    Ref<site::Scheme> Scheme() override { return scheme; }
    Ref<site::Live> Live() override { return live; }
    std::int32_t Actions() const override { return actions; }
    void AddAction(std::int32_t flag) override { actions |= flag; }
    void RemoveActions(std::int32_t flags) override { actions &= ~flags; }
    Ref<site::Channel> createChannel() override { return make<FakeChannel>(); }
};

} // namespace zan::fake
