#pragma once

#include "site/History.h"

#include <memory>
#include <vector>

namespace zan::site {

/// What a record's values belong to, in their order; `id` is not used, a series is named by `window` and `key`.
using HistoryColumns = std::vector<HistorySeries>;

/// A history that takes records. Whoever logs hands each record over once and does not wait: it is stored soon.
class HistoryKeeper : public History
{
public:
    /// Takes the values of some channels at a moment, in any order of time. What is stored for that moment already
    /// stays as it is, so that a record may be handed over any number of times. Empty says that a channel had no value
    /// then. `columns` and `values` are of one length; columns that are the same object as at the last call cost
    /// nothing.
    virtual void keep(HistoryTime time, const std::shared_ptr<const HistoryColumns>& columns,
                      const std::vector<Variant>& values) = 0;
};

} // namespace zan::site
