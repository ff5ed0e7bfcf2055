#include "trellis/StoredWindows.h"

#include "document/XmlText.h"
#include "trellis/ElementText.h"
#include "trellis/Elements.h"

#include <algorithm>

namespace zan::trellis {

using values::ErrorNumber;

namespace {

void copyParameters(const site::Channel& from, site::Channel& to)
{
    to.setBaseAddress(from.BaseAddress());
    to.setCDT(from.CDT());
    to.setDataType(std::clamp(from.DataType(), 0, site::DataTypeCount - 1));
    to.setBytes(from.Bytes());
    to.setMultiplier(from.Multiplier());
    to.setOffset(from.Offset());
    to.setFormula(from.Formula());
    to.setLabel(from.Label());
    to.setFormat(from.Format());
    to.setUnits(from.Units());
    to.setVisible(from.Visible());
}

} // namespace

StoredWindows::StoredWindows(Node root)
    : m_root(std::move(root))
    , m_windows(m_root, element::Window, m_registry->keyChanges())
{}

std::int32_t StoredWindows::Count() const
{
    return std::int32_t(m_windows.count());
}

Ref<site::SchemeWindow> StoredWindows::Item(const Variant& indexOrKey)
{
    ElementIndex::Entry* entry = m_windows.item(indexOrKey);
    if (!entry)
        return {};
    if (!entry->object)
        entry->object = StoredWindow::of(entry->node, m_registry);
    return Ref<site::SchemeWindow>(static_cast<StoredWindow*>(entry->object.get()));
}

Ref<site::SchemeWindow> StoredWindows::Add(const Ref<site::SchemeWindow>& window, const QString& key)
{
    if (!window)
        values::raise(ErrorNumber::ObjectNotSet);
    if (m_windows.find(key))
        values::raise(ErrorNumber::DuplicateKey);
    Ref<StoredWindow> stored(dynamic_cast<StoredWindow*>(window.get()));
    // A window of another stored scheme has that scheme's registry for its channels, so it counts as a
    // stranger.
    if (!stored || stored->XML().parent() || stored->XML().ownerDocument() != m_root.ownerDocument())
        stored = copyOf(*window);
    stored->setKey(key);
    m_windows.append(stored->XML(), stored);
    markChanged(m_root);
    return stored;
}

void StoredWindows::Remove(const Variant& indexOrKey)
{
    const ElementIndex::Entry* entry = m_windows.item(indexOrKey);
    if (!entry)
        values::raise(ErrorNumber::InvalidCall);
    m_root.removeChild(entry->node);
    markChanged(m_root);
}

Ref<site::SchemeWindow> StoredWindows::createWindow()
{
    return newWindow();
}

Ref<site::Channel> StoredWindows::createChannel()
{
    return values::make<StoredChannel>(m_root.createElement(element::Channel), m_registry);
}

Ref<StoredWindow> StoredWindows::newWindow() const
{
    Node node = m_root.createElement(element::Window);
    node.appendChild(node.createElement(element::Key));
    return values::make<StoredWindow>(node, m_registry);
}

Ref<StoredWindow> StoredWindows::copyOf(site::SchemeWindow& window)
{
    const Ref<StoredWindow> copy = newWindow();
    Node panel = copy->XML();
    const document::ParseResult source = document::parseXml(window.XML().xml());
    Node child = source.document.documentElement().firstChild();
    while (child) {
        const Node next = child.nextSibling();
        if (child.name() != element::Key)
            panel.appendChild(child);
        child = next;
    }
    // A host may keep its channels outside the tree of the window.
    if (copy->Count() == 0) {
        for (std::int32_t place = 1; place <= window.Count(); ++place) {
            const Ref<site::Channel> original = window.Item(Variant(place));
            if (!original)
                continue;
            const Ref<site::Channel> channel = createChannel();
            copyParameters(*original, *channel);
            const QString key = original->Key();
            copy->Add(channel, copy->Item(Variant(key)) ? QString() : key);
        }
    }
    return copy;
}

} // namespace zan::trellis
