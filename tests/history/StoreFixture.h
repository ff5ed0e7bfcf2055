#pragma once

#include "history/HistoryStore.h"
#include "support/ChildProcess.h"
#include "support/FakeHistory.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <unistd.h>

namespace zan::history {

using test::inChild;
using values::make;
using values::Ref;

constexpr HistoryTime Noon = 1'782'900'000'000 / 86'400'000 * 86'400'000 + 12 * 3'600'000; // of some day of 2026

inline std::shared_ptr<const site::HistoryColumns> columns(int count, int from = 0)
{
    auto result = std::make_shared<site::HistoryColumns>();
    for (int i = from; i < from + count; ++i)
        result->push_back({0, QStringLiteral("RTD"), QStringLiteral("C%1").arg(i),
                           QStringLiteral("Channel %1").arg(i), QStringLiteral("m"), QStringLiteral("0.00"), 1000});
    return result;
}

/// A folder of its own for every test.
class StoreFolder : public testing::Test
{
protected:
    QString at(const char* name = "weir.history") const { return m_folder.filePath(QString::fromUtf8(name)); }
    QString folder() const { return m_folder.path(); }
    HistoryPlace place(const char* name = "weir.history") const
    {
        HistoryPlace place;
        place.kind = HistoryPlace::Kind::Sqlite;
        place.file = at(name);
        return place;
    }
    /// Few records make a tail long enough to go into blocks.
    static StoreWriter::Limits shortTail(std::size_t records = 16)
    {
        StoreWriter::Limits limits;
        limits.tailRecords = records;
        return limits;
    }
    Ref<HistoryStore> opened() const { return make<HistoryStore>(place()); }

    static void write(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(content), content.size());
    }
    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList names(const QString& pattern = QStringLiteral("*")) const
    {
        return QDir(m_folder.path()).entryList({pattern}, QDir::Files, QDir::Name);
    }

private:
    QTemporaryDir m_folder;
};

/// Waits until a condition holds that another thread brings about; false when it has not come about in a minute, which
/// no machine takes.
inline bool comesTrue(const std::function<bool()>& condition)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.hasExpired(60'000))
            return false;
        ::usleep(1000);
    }
    return true;
}

/// Stores what was handed over; a machine may be busy, so that there is more patience than any needs.
inline bool isFlushed(HistoryStore& store)
{
    return store.flush(std::chrono::minutes(5));
}

inline double numberIn(const Variant& value)
{
    double number = -999;
    EXPECT_EQ(values::tryToDouble(value, number), values::ErrorNumber::None);
    return number;
}

} // namespace zan::history
