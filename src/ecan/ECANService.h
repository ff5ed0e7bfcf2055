#pragma once

#include "ecan/Restrictions.h"
#include "ecan/Source.h"
#include "values/Variant.h"

namespace zan::ecan {

/// The records of a document, from 1.
class ECANResults
{
public:
    explicit ECANResults(std::shared_ptr<const Restrictions> document)
        : m_document(std::move(document))
    {}
    std::int32_t Count() const { return m_document ? std::int32_t(m_document->records().size()) : 0; }
    /// Raises 9 for a place that does not exist.
    const ECANRecord& Item(std::int32_t index) const;

private:
    std::shared_ptr<const Restrictions> m_document;
};

/// The web service's restrictions of one site, as a label asks for them. Nothing waits: while the document is fetched,
/// the service isUnderWay() and not Connected.
class ECANService
{
public:
    /// The source must outlive the service.
    explicit ECANService(Source& source)
        : m_source(source)
    {}

    /// Address of the restrictions document; asks for it.
    void setURL(const QString& address);
    bool isUnderWay() const { return m_answer.state == Answer::State::UnderWay; }
    /// Whether the document could be fetched, and is one.
    bool Connected() const { return m_answer.state == Answer::State::Here; }
    /// Whether the document holds restrictions.
    bool HasRestrictions() const { return Results().Count() > 0; }
    /// Flow assessed at the site; -1 when there is no figure.
    void AssessedFlow(std::int32_t site, double& result) const;
    /// Percentage allocated to the band at the site; Null when there is no figure, as no number would be true.
    void Allocation(const QString& site, std::int16_t band, values::Variant& result) const;
    ECANResults Results() const { return ECANResults(m_answer.document); }

private:
    Source& m_source;
    Answer m_answer;
};

} // namespace zan::ecan
