#pragma once

#include "site/Scheme.h"
#include "trellis/ElementIndex.h"
#include "trellis/StoredChannel.h"

namespace zan::trellis {

/// A window record whose channels are the CHANNEL children of a WINDOW element. It keeps the channels that it
/// has handed out, with their values, while their elements stay in the window.
class StoredWindow : public site::SchemeWindow
{
public:
    /// Takes over a WINDOW element, in a scheme or not yet.
    StoredWindow(Node node, Ref<ObjectRegistry> registry);
    ~StoredWindow() override;
    /// The one object of this element.
    static Ref<StoredWindow> of(const Node& node, const Ref<ObjectRegistry>& registry);

    QString Key() const override;
    /// Raises 457 when another window of the scheme has the key.
    void setKey(const QString& key) override;
    Node XML() const override { return m_node; }
    std::int32_t Count() const override;
    Ref<site::Channel> Item(const Variant& indexOrKey) override;
    /// The channel must come from createChannel() of a stored scheme: raises 91 for none, 13 for one of
    /// another library, 5 for one that belongs to a window already.
    Ref<site::Channel> Add(const Ref<site::Channel>& channel, const QString& key = {}) override;

private:
    QString freeKey() const;

    Node m_node;
    Ref<ObjectRegistry> m_registry;
    mutable ElementIndex m_channels; // brings itself up to date on reading
};

} // namespace zan::trellis
