#pragma once

#include "site/Channel.h"
#include "trellis/ObjectRegistry.h"
#include "values/ChangeCount.h"

namespace zan::trellis {

using binding::Variant;
using document::Node;
using values::Ref;

/// A channel whose parameters are the children of a CHANNEL element. Reads look the element up each time, so
/// that an edit of the tree by anybody is seen at once. Missing or wrong parameters read as something usable:
/// numbers as their leading number, kept inside the range of their type, data types outside 0 to 8 as 0, a
/// missing multiplier as 1, missing bytes as the size of the data type. Value and UseCount are the object's
/// own and not stored.
class StoredChannel : public site::Channel
{
public:
    /// Takes over a CHANNEL element, in a window or not yet.
    StoredChannel(Node node, Ref<ObjectRegistry> registry);
    ~StoredChannel() override;
    /// The one object of this element.
    static Ref<StoredChannel> of(const Node& node, const Ref<ObjectRegistry>& registry);

    std::int32_t BaseAddress() const override;
    void setBaseAddress(std::int32_t address) override;
    bool CDT() const override;
    void setCDT(bool isProtected) override;
    std::int32_t DataType() const override;
    /// Raises 380 outside 0 to 8.
    void setDataType(std::int32_t type) override;
    std::int16_t Bytes() const override;
    void setBytes(std::int16_t bytes) override;
    float Multiplier() const override;
    void setMultiplier(float multiplier) override;
    float Offset() const override;
    void setOffset(float offset) override;
    QString Formula() const override;
    void setFormula(const QString& formula) override;
    QString Label() const override;
    void setLabel(const QString& label) override;
    QString Format() const override;
    void setFormat(const QString& format) override;
    QString Units() const override;
    void setUnits(const QString& units) override;
    bool Visible() const override;
    void setVisible(bool visible) override;
    const Variant& Value() const override { return m_value; }
    void setValue(const Variant& value) override;
    QString Key() const override;
    std::int16_t UseCount() const override { return m_useCount; }
    void setUseCount(std::int16_t count) override { m_useCount = count; }
    Node XMLNode() const override { return m_node; }

    /// Counts changes of the value. Those of the parameters are changes of the document, which a ReadRecorder sees.
    std::uint32_t revision() const override { return m_changes.value(); }

private:
    Node m_node;
    Ref<ObjectRegistry> m_registry;
    Variant m_value;
    std::int16_t m_useCount = 0;
    values::ChangeCount m_changes;
};

} // namespace zan::trellis
