#pragma once

#include "site/Logger.h"

namespace zan::site {

/// Records that also know the formats of their channels, for values as text. Whoever reads records asks for it; those of
/// a host that has no formats are shown without.
class FormattedRecords : public LogRecords
{
public:
    /// Format of a column's values; empty for none, for the time and outside the table.
    virtual QString columnFormat(std::int32_t column) const = 0;

    const binding::MemberTable& members() const override;
};

} // namespace zan::site
