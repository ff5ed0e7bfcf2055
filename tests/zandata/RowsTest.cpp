#include "DataFixture.h"

#include "zandata/CsvExport.h"
#include "zandata/RecordModel.h"
#include "zandata/data/RecordRows.h"

#include <QFile>
#include <QTemporaryDir>

#include <limits>

using namespace zan;
using namespace zan::zandata;
using values::Ref;

namespace {

/// A history of any length without anything stored: the value of a row is its number.
class LongHistory : public site::History
{
public:
    std::int64_t count = 10'000'000;
    std::int64_t shift = 0; ///< rows that have come before all others
    mutable int rowCalls = 0;
    std::function<void()> onRows;

    QString State() const override { return {}; }
    std::vector<site::HistorySeries> series() const override
    {
        return {{4, QStringLiteral("W"), QStringLiteral("n"), QStringLiteral("Number"), {}, {}, 1000}};
    }
    site::HistorySpan span() const override { return {noon(), noon() + (count - 1) * 1000, count == 0}; }
    std::vector<site::HistoryPoint> points(std::int64_t, HistoryTime, HistoryTime, std::int32_t) const override
    {
        return {};
    }
    std::vector<Past> valuesAt(HistoryTime) const override { return {{}}; }
    std::int64_t rowCount() const override { return count; }
    std::vector<site::HistoryRow> rows(std::int64_t place, std::int32_t most,
                                       const std::vector<std::int64_t>&) const override
    {
        ++rowCalls;
        if (onRows)
            onRows();
        std::vector<site::HistoryRow> result;
        for (std::int64_t at = place; at < std::min(place + most, count); ++at)
            result.push_back({noon() + at * 1000, {Variant(double(at - shift))}});
        return result;
    }
    std::int64_t placeOf(HistoryTime moment) const override
    {
        return std::clamp<std::int64_t>((moment - noon() + 999) / 1000, 0, count);
    }
};

class Rows : public testing::Test
{
protected:
    Rows() { rows.setSource({}, store); }
    Ref<LongHistory> store = values::make<LongHistory>();
    RecordRows rows;
    QTemporaryDir folder;
};

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

} // namespace

TEST_F(Rows, KeepAFewChunksHoweverFarTheUserScrolls)
{
    for (std::int64_t place = 0; place < rows.count(); place += 40'000)
        ASSERT_TRUE(rows.readRow(place));
    EXPECT_LE(rows.keptChunks(), RecordRows::MostChunks);
}

TEST_F(Rows, RowsThatAreNotHereAreAskedForOnceAndTheLatestWishComesFirst)
{
    EXPECT_FALSE(rows.row(0));
    EXPECT_FALSE(rows.row(5'000'000));
    EXPECT_FALSE(rows.row(5'000'001));
    EXPECT_EQ(store->rowCalls, 0) << "no read while the table is painted";
    std::vector<std::int64_t> arrived;
    rows.read([] { return true; }, [&](std::int64_t first, std::int32_t) { arrived.push_back(first); });
    ASSERT_EQ(arrived.size(), 1u);
    EXPECT_EQ(arrived[0], 5'000'000 / 256 * 256);
    EXPECT_TRUE(rows.row(5'000'001));
    EXPECT_TRUE(rows.isReadDue());
    rows.read([] { return false; }, [&](std::int64_t, std::int32_t) {});
    EXPECT_FALSE(rows.isReadDue());
    EXPECT_EQ(store->rowCalls, 2);
}

TEST_F(Rows, NewRowsLeaveThoseThatWereReadAndLateOnesDoNot)
{
    ASSERT_TRUE(rows.readRow(0));
    store->count += 10;
    rows.setSource({}, store);
    EXPECT_EQ(rows.count(), 10'000'000) << "no more than the most rows";
    EXPECT_EQ(rows.offset(), 10);
    store->count = 1000;
    rows.setSource({}, store);
    ASSERT_TRUE(rows.readRow(0));
    const int before = store->rowCalls;
    store->count = 1001;
    rows.setSource({}, store);
    ASSERT_TRUE(rows.readRow(0));
    EXPECT_EQ(store->rowCalls, before);
    EXPECT_EQ(values::toDouble(rows.readRow(1000)->cells[0]), 1000);
}

TEST_F(Rows, OfALongerHistoryTheLatestTenMillionAreShown)
{
    store->count = 12'000'000;
    rows.setSource({}, store);
    EXPECT_EQ(rows.count(), RecordRows::MostRows);
    EXPECT_EQ(values::toDouble(rows.readRow(0)->cells[0]), 2'000'000);
    EXPECT_EQ(rows.placeOf(noon() + 2'000'001'000), 1);
}

TEST_F(Rows, StoreThatFailsOrComesBackLeavesEmptyRowsAndNoCrash)
{
    store->onRows = [] { throw 7; };
    EXPECT_FALSE(rows.readRow(0));
    store->onRows = [&] {
        rows.setSource({}, {});
        rows.readRow(300);
    };
    EXPECT_TRUE(rows.readRow(600));
}

TEST(RecordModelTest, TenMillionRowsInBothOrders)
{
    RecordModel model;
    const auto store = values::make<LongHistory>();
    model.setSource({}, store);
    ASSERT_EQ(model.rowCount(), 10'000'000);
    EXPECT_EQ(model.cellText(0, 1), u"9999999");
    EXPECT_EQ(model.rowOf(noon() + 1000), 9'999'998);
    model.setNewestFirst(false);
    EXPECT_EQ(model.cellText(0, 1), u"0");
    EXPECT_EQ(model.rowOf(noon() + 1000), 1);
    EXPECT_EQ(model.cellText(-1, 0), QString());
    EXPECT_EQ(model.cellText(0, 9), QString());
}

// Export -------------------------------------------------------------------------------------------------------

TEST_F(Rows, ExportWritesEveryRowTheOldestFirstInPlainNumbers)
{
    store->count = 3;
    rows.setSource({}, store);
    const QString file = folder.filePath(QStringLiteral("a.csv"));
    CsvExport job(rows, file);
    while (job.step())
        ;
    EXPECT_TRUE(job.isWell());
    EXPECT_EQ(contentOf(file), "Time,Number\r\n2026-03-02 14:00:00,0\r\n2026-03-02 14:00:01,1\r\n"
                               "2026-03-02 14:00:02,2\r\n");
}

TEST_F(Rows, CancelledExportLeavesTheFileThatWasThere)
{
    const QString file = folder.filePath(QStringLiteral("a.csv"));
    QFile old(file);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    CsvExport job(rows, file);
    ASSERT_TRUE(job.step());
    EXPECT_GT(job.written(), 0);
    EXPECT_LT(job.written(), job.count());
    job.cancel();
    EXPECT_FALSE(job.step());
    EXPECT_FALSE(job.isWell());
    EXPECT_EQ(contentOf(file), "old");
}

TEST_F(Rows, ExportThatCannotReadOrWriteSaysSoAndLeavesNoFile)
{
    const QString file = folder.filePath(QStringLiteral("a.csv"));
    store->onRows = [] { throw std::runtime_error("no"); };
    CsvExport job(rows, file);
    while (job.step())
        ;
    EXPECT_EQ(job.error(), u"The stored records cannot be read.");
    EXPECT_EQ(contentOf(file), "no file");
    CsvExport nowhere(rows, QStringLiteral("/nowhere/a.csv"));
    EXPECT_FALSE(nowhere.step());
    EXPECT_FALSE(nowhere.error().isEmpty());
}

TEST_F(Rows, RowsThatMoveWhileTheyAreWrittenAreWrittenOnce)
{
    store->count = 20'000;
    rows.setSource({}, store);
    const QString file = folder.filePath(QStringLiteral("a.csv"));
    CsvExport job(rows, file);
    ASSERT_TRUE(job.step());
    while (job.step())
        ;
    EXPECT_EQ(contentOf(file).count("\r\n"), 20'001);
}

TEST_F(DataTest, TableSavesItselfWithAProgressThatCanCancelIt)
{
    class Impatient : public surface::RecordingForms
    {
    public:
        int calls = 0;
        int most = 1000;
        bool isEnded = false;
        bool progress(QWidget*, const QString&, double share) override
        {
            EXPECT_GE(share, 0);
            EXPECT_LE(share, 1);
            return ++calls < most;
        }
        void progressEnded() override { isEnded = true; }
    };
    const auto store = values::make<LongHistory>();
    store->count = 50'000;
    logger->live->history = store;
    Impatient patient;
    panel->setForms(&patient);
    const auto table = addTable();
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.csv"));
    patient.answer(QStringLiteral("file:") + file);
    table->save();
    EXPECT_TRUE(patient.isEnded);
    EXPECT_EQ(contentOf(file).count("\r\n"), 50'001);
    patient.most = patient.calls + 2;
    patient.answer(QStringLiteral("file:") + file + u'x');
    table->save();
    EXPECT_EQ(contentOf(file + u'x'), "no file");
    panel->setForms(&forms);
}
