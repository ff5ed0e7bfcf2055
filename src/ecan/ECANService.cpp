#include "ecan/ECANService.h"

#include "values/RuntimeError.h"

namespace zan::ecan {

const ECANRecord& ECANResults::Item(std::int32_t index) const
{
    if (index < 1 || index > Count())
        values::raise(values::ErrorNumber::SubscriptOutOfRange);
    return m_document->records()[std::size_t(index) - 1];
}

void ECANService::setURL(const QString& address)
{
    m_answer = address.isEmpty() ? Answer() : m_source.ask(Kind::Document, address);
}

void ECANService::AssessedFlow(std::int32_t site, double& result) const
{
    result = -1;
    if (!m_answer.document)
        return;
    const QString number = QString::number(site);
    for (const ECANRecord& record : m_answer.document->records()) {
        if (record.flow() && record.isOf(number)) {
            result = *record.flow();
            return;
        }
    }
}

void ECANService::Allocation(const QString& site, std::int16_t band, values::Variant& result) const
{
    result = values::Variant::null();
    if (!m_answer.document)
        return;
    for (const ECANRecord& record : m_answer.document->records()) {
        if (record.allocation() && record.band() == band && record.isOf(site)) {
            result = values::Variant(*record.allocation());
            return;
        }
    }
}

} // namespace zan::ecan
