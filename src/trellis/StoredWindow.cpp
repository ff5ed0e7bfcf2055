#include "trellis/StoredWindow.h"

#include "trellis/ElementText.h"
#include "trellis/Elements.h"

namespace zan::trellis {

using values::ErrorNumber;

StoredWindow::StoredWindow(Node node, Ref<ObjectRegistry> registry)
    : m_node(std::move(node))
    , m_registry(std::move(registry))
    , m_channels(m_node, element::Channel, m_registry->keyChanges())
{
    m_registry->add(m_node, this);
}

StoredWindow::~StoredWindow()
{
    m_registry->remove(m_node);
}

Ref<StoredWindow> StoredWindow::of(const Node& node, const Ref<ObjectRegistry>& registry)
{
    const auto known = registry->find<StoredWindow>(node);
    return known ? known : values::make<StoredWindow>(node, registry);
}

QString StoredWindow::Key() const
{
    QString key;
    m_node.childText(element::Key, key);
    return key;
}

void StoredWindow::setKey(const QString& key)
{
    const QString folded = key.toCaseFolded();
    for (const Node& sibling : m_node.parent().children(element::Window))
        if (sibling != m_node && sibling.child(element::Key).text().toCaseFolded() == folded)
            values::raise(ErrorNumber::DuplicateKey);
    writeText(m_node, element::Key, key);
}

std::int32_t StoredWindow::Count() const
{
    return std::int32_t(m_channels.count());
}

Ref<site::Channel> StoredWindow::Item(const Variant& indexOrKey)
{
    ElementIndex::Entry* entry = m_channels.item(indexOrKey);
    if (!entry)
        return {};
    if (!entry->object)
        entry->object = StoredChannel::of(entry->node, m_registry);
    return Ref<site::Channel>(static_cast<StoredChannel*>(entry->object.get()));
}

Ref<site::Channel> StoredWindow::Add(const Ref<site::Channel>& channel, const QString& key)
{
    if (!channel)
        values::raise(ErrorNumber::ObjectNotSet);
    const Ref<StoredChannel> stored(dynamic_cast<StoredChannel*>(channel.get()));
    if (!stored)
        values::raise(ErrorNumber::TypeMismatch);
    const Node node = stored->XMLNode();
    if (node.parent())
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("The channel belongs to a window already."));
    if (!key.isEmpty() && m_channels.find(key))
        values::raise(ErrorNumber::DuplicateKey);
    writeText(node, element::Key, key.isEmpty() ? freeKey() : key);
    m_channels.append(node, stored);
    markChanged(m_node);
    return stored;
}

QString StoredWindow::freeKey() const
{
    for (std::size_t number = m_channels.count() + 1;; ++number) {
        const QString key = QStringLiteral("CH%1").arg(number);
        if (!m_channels.find(key))
            return key;
    }
}

} // namespace zan::trellis
