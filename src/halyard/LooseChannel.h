#pragma once

#include "site/Channel.h"

namespace zan::halyard {

using values::Variant;

/// A channel of its own that belongs to no window and is stored nowhere, as for a single write to an address.
class LooseChannel final : public site::Channel
{
public:
    std::int32_t BaseAddress() const override { return m_baseAddress; }
    void setBaseAddress(std::int32_t address) override { m_baseAddress = address; }
    bool CDT() const override { return m_isProtected; }
    void setCDT(bool isProtected) override { m_isProtected = isProtected; }
    std::int32_t DataType() const override { return m_dataType; }
    void setDataType(std::int32_t type) override { m_dataType = type; }
    std::int16_t Bytes() const override { return m_bytes; }
    void setBytes(std::int16_t bytes) override { m_bytes = bytes; }
    float Multiplier() const override { return m_multiplier; }
    void setMultiplier(float multiplier) override { m_multiplier = multiplier; }
    float Offset() const override { return m_offset; }
    void setOffset(float offset) override { m_offset = offset; }
    QString Formula() const override { return m_formula; }
    void setFormula(const QString& formula) override { m_formula = formula; }
    QString Label() const override { return m_label; }
    void setLabel(const QString& label) override { m_label = label; }
    QString Format() const override { return m_format; }
    void setFormat(const QString& format) override { m_format = format; }
    QString Units() const override { return m_units; }
    void setUnits(const QString& units) override { m_units = units; }
    bool Visible() const override { return m_isVisible; }
    void setVisible(bool visible) override { m_isVisible = visible; }
    const Variant& Value() const override { return m_value; }
    void setValue(const Variant& value) override { m_value = value; }
    QString Key() const override { return {}; }
    std::int16_t UseCount() const override { return m_useCount; }
    void setUseCount(std::int16_t count) override { m_useCount = count; }
    document::Node XMLNode() const override { return {}; }

private:
    std::int32_t m_baseAddress = 0;
    std::int32_t m_dataType = 0;
    std::int16_t m_bytes = 0;
    std::int16_t m_useCount = 0;
    float m_multiplier = 1;
    float m_offset = 0;
    bool m_isProtected = false;
    bool m_isVisible = false;
    QString m_formula;
    QString m_label;
    QString m_format;
    QString m_units;
    Variant m_value;
};

} // namespace zan::halyard
