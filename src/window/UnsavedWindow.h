#pragma once

#include "document/Node.h"
#include "site/Scheme.h"

namespace zan::window {

using values::Ref;

/// A window record that belongs to no scheme and has no channels: what is edited on a panel that was cleared while
/// there was no scheme to make one.
class UnsavedWindow : public site::SchemeWindow
{
public:
    UnsavedWindow();
    ~UnsavedWindow() override;

    QString Key() const override;
    void setKey(const QString& key) override;
    document::Node XML() const override { return m_node; }
    std::int32_t Count() const override { return 0; }
    /// Empty for any key; raises 9 for any index.
    Ref<site::Channel> Item(const binding::Variant& indexOrKey) override;
    /// Raises 5: channels belong to windows of a scheme.
    Ref<site::Channel> Add(const Ref<site::Channel>& channel, const QString& key) override;

private:
    document::Node m_node;
};

} // namespace zan::window
