#pragma once

#include "history/HistoryStore.h"
#include "trellis/SchemeFile.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace zan::host {

using values::Ref;

/// What a site's records are kept for.
enum class HistoryUse {
    None,      ///< nothing is connected
    Temporary, ///< for this run alone
    Kept,      ///< where the scheme says
    Looked,    ///< where the scheme says, to be read alone
};

/// The history of an opened site.
struct SiteHistory
{
    std::unique_ptr<QTemporaryDir> folder; ///< of a temporary one; gone after the store
    Ref<history::HistoryStore> store;      ///< null for none
    QString problem;                       ///< what is wrong with the scheme's HISTORY; empty when nothing is

    static SiteHistory open(const trellis::SchemeFile& scheme, HistoryUse use);
    /// Where the scheme's history is kept; what is wrong with its HISTORY, or nothing.
    [[nodiscard]] static QString placeOf(const trellis::SchemeFile& scheme, history::HistoryPlace& place);
};

} // namespace zan::host
