#include "history/Database.h"

#include <QFileInfo>
#include <QSqlError>
#include <QUrl>

#include <atomic>

namespace zan::history {

namespace {

using Reason = StoreFailure::Reason;

/// Milliseconds for which a call waits for a lock: the writer may, a window must not.
constexpr int WriterPatience = 2000;
constexpr int ReaderPatience = 100;

// Results of SQLite, without their details in the upper bytes.
constexpr int SqliteBusy = 5;
constexpr int SqliteLocked = 6;
constexpr int SqliteCorrupt = 11;
constexpr int SqliteFull = 13;
constexpr int SqliteNoDatabase = 26;

Reason sqliteReason(int code)
{
    switch (code & 0xFF) {
    case SqliteBusy:
    case SqliteLocked:
        return Reason::Busy;
    case SqliteCorrupt:
    case SqliteNoDatabase:
        return Reason::Damaged;
    case SqliteFull:
        return Reason::Full;
    default:
        return Reason::Other;
    }
}

/// A server's states: classes 53 (no resources), 55 and 57014 (locks, time).
Reason serverReason(const QString& state)
{
    if (state == QLatin1String("53100"))
        return Reason::Full;
    if (state == QLatin1String("57014") || state.startsWith(QLatin1String("55")))
        return Reason::Busy;
    return Reason::Other;
}

QString sqliteOptions(const HistoryPlace& place, Database::Access access)
{
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1")
                          .arg(access == Database::Access::Write ? WriterPatience : ReaderPatience);
    if (access == Database::Access::Read)
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    Q_UNUSED(place);
    return options;
}

/// In a folder that cannot be written SQLite reads a store only when told that nobody writes it.
QString readableName(const HistoryPlace& place, QString& options)
{
    const QFileInfo file(place.file);
    if (QFileInfo(file.path()).isWritable() || QFileInfo::exists(place.file + QStringLiteral("-wal")))
        return place.file;
    options += QStringLiteral(";QSQLITE_OPEN_URI");
    return QStringLiteral("file:%1?immutable=1")
        .arg(QString::fromLatin1(QUrl::toPercentEncoding(place.file, QByteArrayLiteral("/"))));
}

} // namespace

Database::Database(const HistoryPlace& place, Access access)
    : m_isServer(place.kind == HistoryPlace::Kind::Postgres)
{
    static std::atomic<int> count{0};
    m_name = QStringLiteral("zan-history-%1").arg(++count);
    try {
        open(place, access);
        setUp(place, access);
    } catch (...) {
        m_statements.clear();
        m_connection = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_name);
        throw;
    }
}

Database::~Database()
{
    m_statements.clear();
    m_connection.close();
    m_connection = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

void Database::open(const HistoryPlace& place, Access access)
{
    const QString driver = m_isServer ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE");
    if (!QSqlDatabase::isDriverAvailable(driver))
        throw StoreFailure{Reason::Other, QStringLiteral("the database driver %1 is not installed").arg(driver)};
    m_connection = QSqlDatabase::addDatabase(driver, m_name);
    if (m_isServer) {
        m_connection.setHostName(place.host);
        m_connection.setPort(place.port);
        m_connection.setDatabaseName(place.database);
        m_connection.setUserName(place.user);
        m_connection.setPassword(place.password);
        m_connection.setConnectOptions(QStringLiteral("connect_timeout=3;application_name=zanbench"));
    } else {
        if (access == Access::Read && !QFileInfo::exists(place.file))
            throw StoreFailure{Reason::Other, QStringLiteral("there is no file %1").arg(place.file)};
        QString options = sqliteOptions(place, access);
        m_connection.setDatabaseName(access == Access::Read ? readableName(place, options) : place.file);
        m_connection.setConnectOptions(options);
    }
    if (!m_connection.open())
        fail(m_connection.lastError());
}

void Database::setUp(const HistoryPlace& place, Access access)
{
    if (m_isServer) {
        // A window waits for a server no longer than for anything else.
        runOnce(QStringLiteral("SET statement_timeout = %1").arg(access == Access::Write ? 20'000 : 2'000));
        runOnce(QStringLiteral("SET client_min_messages = warning"));
        if (access == Access::Write)
            runOnce(QStringLiteral("CREATE SCHEMA IF NOT EXISTS \"%1\"").arg(place.schema));
        runOnce(QStringLiteral("SET search_path TO \"%1\"").arg(place.schema));
        return;
    }
    // A file from elsewhere may hold more than tables: none of it is run.
    runOnce(QStringLiteral("PRAGMA trusted_schema = OFF"));
    runOnce(QStringLiteral("PRAGMA cell_size_check = ON"));
    runOnce(QStringLiteral("PRAGMA cache_size = %1").arg(access == Access::Write ? -32'000 : -8'000));
}

QSqlQuery& Database::prepared(const char* sql)
{
    std::unique_ptr<QSqlQuery>& statement = m_statements[sql];
    if (statement)
        return *statement;
    auto made = std::make_unique<QSqlQuery>(m_connection);
    made->setForwardOnly(true);
    if (!made->prepare(QString::fromLatin1(sql))) {
        m_statements.erase(sql);
        fail(made->lastError());
    }
    statement = std::move(made);
    return *statement;
}

void Database::each(const char* sql, Values values, const std::function<void(const QSqlQuery&)>& look)
{
    QSqlQuery& query = prepared(sql);
    int place = 0;
    for (const QVariant& value : values)
        query.bindValue(place++, value);
    if (!query.exec()) {
        const QSqlError error = query.lastError();
        query.finish();
        fail(error);
    }
    while (query.isSelect() && query.next())
        look(query);
    const QSqlError error = query.lastError();
    query.finish();
    if (error.isValid())
        fail(error);
}

void Database::run(const char* sql, Values values)
{
    each(sql, values, [](const QSqlQuery&) {});
}

std::int64_t Database::number(const char* sql, Values values)
{
    std::int64_t result = 0;
    bool isFirst = true;
    each(sql, values, [&](const QSqlQuery& row) {
        if (std::exchange(isFirst, false))
            result = row.value(0).toLongLong();
    });
    return result;
}

void Database::runOnce(const QString& sql)
{
    QSqlQuery query(m_connection);
    if (!query.exec(sql))
        fail(query.lastError());
}

void Database::fail(const QSqlError& error) const
{
    const QString code = error.nativeErrorCode();
    QString text = error.driverText();
    if (!error.databaseText().isEmpty())
        text = error.databaseText();
    text = text.section(u'\n', 0, 0).trimmed();
    if (text.endsWith(u'.'))
        text.chop(1);
    throw StoreFailure{m_isServer ? serverReason(code) : sqliteReason(code.toInt()), text};
}

Database::Transaction::Transaction(Database& database, Access access)
    : m_database(database)
{
    if (database.isServer())
        database.runOnce(access == Access::Read
                             ? QStringLiteral("BEGIN TRANSACTION ISOLATION LEVEL REPEATABLE READ READ ONLY")
                             : QStringLiteral("BEGIN"));
    else
        database.run(access == Access::Read ? "BEGIN" : "BEGIN IMMEDIATE");
}

Database::Transaction::~Transaction()
{
    if (!m_isOpen)
        return;
    try {
        m_database.runOnce(QStringLiteral("ROLLBACK"));
    } catch (const StoreFailure&) {
        // The connection is lost, or the failure that ended the transaction has rolled it back by itself.
    }
}

void Database::Transaction::commit()
{
    m_database.runOnce(QStringLiteral("COMMIT"));
    m_isOpen = false;
}

} // namespace zan::history
