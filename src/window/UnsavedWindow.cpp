#include "window/UnsavedWindow.h"

#include "document/Elements.h"
#include "document/XMLOps.h"

namespace zan::window {

namespace element = document::element;

UnsavedWindow::UnsavedWindow()
    : m_node(document::Node::newDocument().createElement(element::Window))
{}

UnsavedWindow::~UnsavedWindow() = default;

QString UnsavedWindow::Key() const
{
    return document::XMLOps::GetAttribute(m_node, element::Key);
}

void UnsavedWindow::setKey(const QString& key)
{
    document::XMLOps::SetAttribute(m_node, element::Key, key);
}

Ref<site::Channel> UnsavedWindow::Item(const binding::Variant& indexOrKey)
{
    if (!indexOrKey.isText())
        values::raise(values::ErrorNumber::SubscriptOutOfRange);
    return {};
}

Ref<site::Channel> UnsavedWindow::Add(const Ref<site::Channel>&, const QString&)
{
    values::raise(values::ErrorNumber::InvalidCall,
                  QStringLiteral("This window belongs to no scheme and can hold no channels."));
}

} // namespace zan::window
