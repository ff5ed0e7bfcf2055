#pragma once

#include "trellis/StoredWindow.h"

namespace zan::trellis {

/// The WINDOW children of a scheme's document element.
class StoredWindows : public site::SchemeWindows
{
public:
    explicit StoredWindows(Node root);

    std::int32_t Count() const override;
    Ref<site::SchemeWindow> Item(const Variant& indexOrKey) override;
    /// A window of a stored scheme that stands in no tree yet is taken in itself; of any other window a copy
    /// is. Raises 91 for none, 457 for a key that exists.
    Ref<site::SchemeWindow> Add(const Ref<site::SchemeWindow>& window, const QString& key) override;
    void Remove(const Variant& indexOrKey) override;
    Ref<site::SchemeWindow> createWindow() override;
    Ref<site::Channel> createChannel() override;

private:
    Ref<StoredWindow> newWindow() const;
    Ref<StoredWindow> copyOf(site::SchemeWindow& window);

    Node m_root;
    Ref<ObjectRegistry> m_registry = values::make<ObjectRegistry>();
    mutable ElementIndex m_windows; // brings itself up to date on reading
};

} // namespace zan::trellis
