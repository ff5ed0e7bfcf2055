#pragma once

#include "ecan/Fetched.h"

#include <QString>
#include <QStringView>

#include <memory>
#include <vector>

namespace zan::ecan {

/// What a page's table says of one site. Texts are those of the cells, with single blanks.
struct SiteRow
{
    std::vector<QString> sites; ///< the cells that name the site: its number, its name
    QString status;
    QString flow;  ///< empty where the table has no such column
    QString stamp; ///< the same
};

/// A web page with tables of restrictions, as docs/ecan.md describes it.
class RestrictionsPage
{
public:
    // Above these a page is not read on.
    static constexpr std::size_t MostRows = 10'000;
    static constexpr std::size_t MostColumns = 64;

    /// Null for what is no page: another kind of content, an encoding that is not known, nothing at all.
    static std::shared_ptr<const RestrictionsPage> read(const Fetched& fetched);

    /// The row of a site, compared with its whole name or number without regard to case; null when there is none.
    const SiteRow* find(QStringView site) const;
    const std::vector<SiteRow>& rows() const noexcept { return m_rows; }

private:
    std::vector<SiteRow> m_rows;
};

} // namespace zan::ecan
