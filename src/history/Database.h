#pragma once

#include "history/HistoryPlace.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <functional>
#include <initializer_list>
#include <memory>
#include <unordered_map>

namespace zan::history {

/// Why a store could not do what it was asked. Thrown inside this folder only, caught where a step or a call begins.
struct StoreFailure
{
    enum class Reason {
        Full,    ///< no room
        Busy,    ///< somebody else had it for too long
        Damaged, ///< what is in it cannot be
        Foreign, ///< it is no history, or one of a later program
        Other,   ///< cannot be opened, read or written; may be another time
    };
    Reason reason = Reason::Other;
    QString text; ///< for the user, without a full stop
};

/// A connection to a store, for the one thread that opened it. Statements are prepared once for each text, which is
/// the same literal each time.
class Database
{
public:
    enum class Access { Read, Write };

    /// Opens a store; a file that is missing is made for writing. Throws StoreFailure.
    Database(const HistoryPlace& place, Access access);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    using Values = std::initializer_list<QVariant>;
    /// Runs a statement. Throws StoreFailure.
    void run(const char* sql, Values values = {});
    /// Runs a statement and looks at each row of its result. Throws StoreFailure. `look` runs no statement.
    void each(const char* sql, Values values, const std::function<void(const QSqlQuery&)>& look);
    /// The first column of the first row, or 0.
    std::int64_t number(const char* sql, Values values = {});
    /// Runs statements of which none is kept, for the making of tables.
    void runOnce(const QString& sql);

    bool isServer() const noexcept { return m_isServer; }

    /// What is done while it lives is done as a whole or not at all; reads see one moment.
    class Transaction
    {
    public:
        Transaction(Database& database, Access access);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        void commit();

    private:
        Database& m_database;
        bool m_isOpen = true;
    };

private:
    void open(const HistoryPlace& place, Access access);
    void setUp(const HistoryPlace& place, Access access);
    QSqlQuery& prepared(const char* sql);
    [[noreturn]] void fail(const QSqlError& error) const;

    QString m_name;
    bool m_isServer;
    QSqlDatabase m_connection;
    std::unordered_map<const char*, std::unique_ptr<QSqlQuery>> m_statements;
};

} // namespace zan::history
