#pragma once

#include "ecan/Fetched.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace zan::ecan {

/// One record of a restrictions document: what is allowed to a band at a site.
class ECANRecord
{
public:
    /// Time stamp of the record, as the service gives it; empty for none.
    const QString& LastUpdate() const noexcept { return m_lastUpdate; }

    /// Whether the record is of a site: of this number, or of this very text. One that names no site is of every site,
    /// as it was a site's document that was asked for.
    bool isOf(QStringView site) const;
    std::optional<std::int32_t> band() const noexcept { return m_band; }
    std::optional<double> flow() const noexcept { return m_flow; }
    std::optional<double> allocation() const noexcept { return m_allocation; } ///< percent

private:
    friend class RestrictionsReader;

    QString m_site;
    QString m_lastUpdate;
    std::optional<double> m_siteNumber;
    std::optional<std::int32_t> m_band;
    std::optional<double> m_flow;
    std::optional<double> m_allocation;
};

/// A restrictions document, as docs/ecan.md describes it.
class Restrictions
{
public:
    /// Records above which a document is not read on.
    static constexpr std::size_t MostRecords = 1000;

    /// Null for anything that is no restrictions document: text that is no XML, one with a doctype, another root.
    static std::shared_ptr<const Restrictions> read(const Fetched& fetched);

    const std::vector<ECANRecord>& records() const noexcept { return m_records; }

private:
    friend class RestrictionsReader;

    std::vector<ECANRecord> m_records;
};

} // namespace zan::ecan
