#pragma once

#include "site/Channel.h"

#include <functional>

namespace zan::site {

/// A window record of a scheme and, at the same time, the keyed list of its channels.
class SchemeWindow : public binding::Object
{
public:
    virtual QString Key() const = 0;
    virtual void setKey(const QString& key) = 0;
    /// The window node: its CONTAINER and CONTROL children are the panel.
    virtual document::Node XML() const = 0;
    virtual std::int32_t Count() const = 0; ///< number of channels
    /// Channel by index from 1 or by key (case ignored). Empty for an unknown key; raises 9 for an index outside.
    virtual Ref<Channel> Item(const Variant& indexOrKey) = 0;
    /// Appends a channel. Without a key one is made up that the window does not have yet. Raises 457 for a key
    /// that exists, 13 for a channel of another library.
    virtual Ref<Channel> Add(const Ref<Channel>& channel, const QString& key = {}) = 0;

    const binding::MemberTable& members() const override;
    std::unique_ptr<binding::Enumerator> enumerate() override;
};

/// The windows of a scheme.
class SchemeWindows : public binding::Object
{
public:
    virtual std::int32_t Count() const = 0;
    /// Window by index from 1 or by key (case ignored). Empty for an unknown key; raises 9 for an index outside.
    virtual Ref<SchemeWindow> Item(const Variant& indexOrKey) = 0;
    /// Adds a window under a key and returns the stored window, which may be another object than the one given.
    /// Raises 457 for a key that exists.
    virtual Ref<SchemeWindow> Add(const Ref<SchemeWindow>& window, const QString& key) = 0;
    /// Takes a window out of the scheme, by index from 1 or by key (case ignored); whoever holds it goes on holding it.
    /// Raises 5 for an unknown key, 9 for an index outside.
    virtual void Remove(const Variant& indexOrKey) = 0;
    /// A new window record that belongs to no scheme yet.
    virtual Ref<SchemeWindow> createWindow() = 0;
    /// A new channel that belongs to no window yet, its value Empty and its parameters those of a plain byte.
    virtual Ref<Channel> createChannel() = 0;

    const binding::MemberTable& members() const override;
    std::unique_ptr<binding::Enumerator> enumerate() override;
};

/// A site's store of windows and channels.
class Scheme : public binding::Object
{
public:
    virtual QString Name() const = 0; ///< display name of the site
    virtual void setName(const QString& name) = 0;
    virtual Ref<SchemeWindows> Windows() = 0;
    /// Stores the scheme. Raises a run-time error that says what, where and what to do when it cannot.
    virtual void Save() = 0;

    const binding::MemberTable& members() const override;
};

/// Resolves a bind string of window key, "|", channel key. Nothing for an empty text, one without "|", an unknown
/// key or any error on the way.
Ref<Channel> findChannel(const Ref<SchemeWindows>& windows, const QString& bindString) noexcept;

} // namespace zan::site
