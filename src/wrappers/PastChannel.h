#pragma once

#include "site/Channel.h"

#include <memory>

namespace zan::wrappers {

using binding::Ref;
using binding::Variant;

/// A channel with the value that it had at a past moment. Everything else is the channel's own, as it is now. It cannot
/// be changed: each setter raises 383.
class PastChannel final : public site::Channel
{
public:
    /// `isMissing` becomes true when somebody reads a value that is not there.
    PastChannel(Ref<site::Channel> now, std::shared_ptr<bool> isMissing)
        : m_now(std::move(now))
        , m_isMissing(std::move(isMissing))
    {}
    /// The value at the moment that is shown; Empty for none.
    void show(const Variant& value) { m_value = value; }
    const Variant& shown() const noexcept { return m_value; }

    std::int32_t BaseAddress() const override { return m_now->BaseAddress(); }
    void setBaseAddress(std::int32_t) override { refuse(); }
    bool CDT() const override { return m_now->CDT(); }
    void setCDT(bool) override { refuse(); }
    std::int32_t DataType() const override { return m_now->DataType(); }
    void setDataType(std::int32_t) override { refuse(); }
    std::int16_t Bytes() const override { return m_now->Bytes(); }
    void setBytes(std::int16_t) override { refuse(); }
    float Multiplier() const override { return m_now->Multiplier(); }
    void setMultiplier(float) override { refuse(); }
    float Offset() const override { return m_now->Offset(); }
    void setOffset(float) override { refuse(); }
    QString Formula() const override { return m_now->Formula(); }
    void setFormula(const QString&) override { refuse(); }
    QString Label() const override { return m_now->Label(); }
    void setLabel(const QString&) override { refuse(); }
    QString Format() const override { return m_now->Format(); }
    void setFormat(const QString&) override { refuse(); }
    QString Units() const override { return m_now->Units(); }
    void setUnits(const QString&) override { refuse(); }
    bool Visible() const override { return m_now->Visible(); }
    void setVisible(bool) override { refuse(); }
    const Variant& Value() const override
    {
        if (m_value.isEmpty())
            *m_isMissing = true;
        return m_value;
    }
    void setValue(const Variant&) override { refuse(); }
    QString Key() const override { return m_now->Key(); }
    std::int16_t UseCount() const override { return m_now->UseCount(); }
    void setUseCount(std::int16_t) override { refuse(); }
    document::Node XMLNode() const override { return m_now->XMLNode(); }

private:
    [[noreturn]] static void refuse()
    {
        values::raise(values::ErrorNumber::ReadOnlyProperty,
                      QStringLiteral("A channel of the past cannot be changed: go back to live first."));
    }

    Ref<site::Channel> m_now;
    std::shared_ptr<bool> m_isMissing;
    Variant m_value;
};

} // namespace zan::wrappers
