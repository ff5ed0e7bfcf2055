#pragma once

#include "document/Node.h"
#include "site/Scheme.h"
#include "values/Convert.h"

#include <functional>
#include <optional>
#include <vector>

/// A scheme as small as a host can write it: everything a test wants to steer or to look at is a public field.
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
    std::function<void()> onCount, onChannel, onAddChannel; ///< called by Count, Item, Add
    bool givesChannels = true, storesChannels = true;       ///< false: Item, Add give Nothing

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
    std::int32_t Count() const override
    {
        if (onCount)
            onCount();
        return std::int32_t(channels.size());
    }
    Ref<site::Channel> Item(const Variant& indexOrKey) override
    {
        if (onChannel)
            onChannel();
        const auto place = placeOf(channels, indexOrKey);
        return place && givesChannels ? Ref<site::Channel>(channels[*place]) : nullptr;
    }
    Ref<site::Channel> Add(const Ref<site::Channel>& channel, const QString& key = {}) override
    {
        if (onAddChannel)
            onAddChannel();
        if (!storesChannels)
            return {};
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
    std::function<void()> onItem, onCreate, onAdd, onRemove;
    std::function<void()> onCreateChannel;
    std::function<void(FakeWindow&)> onStored;      ///< called with each window that Add has stored
    bool makesWindows = true, storesWindows = true; ///< false: createWindow, Add give Nothing
    bool makesChannels = true;                      ///< false: createChannel gives Nothing

    FakeWindows() { document.appendChild(root); }
    std::int32_t Count() const override { return std::int32_t(windows.size()); }
    Ref<site::SchemeWindow> Item(const Variant& indexOrKey) override
    {
        if (failure)
            throw *failure;
        if (onItem)
            onItem();
        const auto place = placeOf(windows, indexOrKey);
        return place ? Ref<site::SchemeWindow>(windows[*place]) : nullptr;
    }
    Ref<site::SchemeWindow> Add(const Ref<site::SchemeWindow>& window, const QString& key) override
    {
        if (onAdd)
            onAdd();
        if (!storesWindows)
            return {};
        const Ref<FakeWindow> own(dynamic_cast<FakeWindow*>(window.get()));
        if (!own)
            values::raise(ErrorNumber::TypeMismatch);
        if (placeOf(windows, Variant(key)))
            values::raise(ErrorNumber::DuplicateKey);
        own->setKey(key);
        root.appendChild(own->node);
        windows.push_back(own);
        if (onStored)
            onStored(*own);
        return own;
    }
    void Remove(const Variant& indexOrKey) override
    {
        if (onRemove)
            onRemove();
        const auto place = placeOf(windows, indexOrKey);
        if (!place)
            values::raise(ErrorNumber::InvalidCall);
        root.removeChild(windows[*place]->node);
        windows.erase(windows.begin() + std::ptrdiff_t(*place));
    }
    Ref<site::SchemeWindow> createWindow() override
    {
        if (onCreate)
            onCreate();
        return makesWindows ? make<FakeWindow>(document) : nullptr;
    }
    Ref<site::Channel> createChannel() override
    {
        if (onCreateChannel)
            onCreateChannel();
        return makesChannels ? make<FakeChannel>() : nullptr;
    }
};

class FakeScheme : public site::Scheme
{
public:
    QString name = QStringLiteral("Site");
    Ref<FakeWindows> windows = make<FakeWindows>();
    int saves = 0;                       ///< how often Save has been called
    std::optional<RuntimeError> failure; ///< raised by Save while set
    std::function<void()> onSave, onWindows;

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
    Ref<site::SchemeWindows> Windows() override
    {
        if (onWindows)
            onWindows();
        return windows;
    }
    void Save() override
    {
        ++saves;
        if (onSave)
            onSave();
        if (failure)
            throw *failure;
    }
};

} // namespace zan::fake
