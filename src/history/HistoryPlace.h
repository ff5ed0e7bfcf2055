#pragma once

#include <QString>

#include <cstdint>

namespace zan::history {

/// Where a history is kept, and how much of it.
///
/// The text of a scheme's HISTORY: nothing for a file beside the scheme (`NAME.history`; in the user's own folder when
/// nothing can be written there), `none`, `user:` for a file in the user's own folder, `sqlite:FILE` (relative to the
/// scheme's folder), `postgresql://USER@HOST:PORT/DATABASE`. Options follow `?`, joined by `&`: `days` and `megabytes`
/// are what is kept at most, `site` names the site on a server.
struct HistoryPlace
{
    enum class Kind { None, Sqlite, Postgres };

    Kind kind = Kind::None;
    QString file; ///< of SQLite, absolute

    QString host;
    int port = 5432;
    QString database;
    QString user;
    QString password;
    QString schema; ///< where the site's tables lie in the database

    std::int64_t days = 0;         ///< age of the oldest record kept; 0 for any
    std::int64_t megabytes = 4096; ///< size of a file; 0 for any. A server's store is limited by age alone

    /// Where it is, for a person: never with a password.
    QString text() const;

    /// Reads the text of a scheme's HISTORY. Returns what is wrong with it, empty when nothing is. `ownFolder`: where the
    /// user's own histories lie.
    [[nodiscard]] static QString parse(const QString& text, const QString& scheme, const QString& ownFolder,
                                       HistoryPlace& place);
};

} // namespace zan::history
