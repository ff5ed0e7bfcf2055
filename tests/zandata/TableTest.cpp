#include "DataFixture.h"

#include "zandata/RecordModel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTableView>

using namespace zan;
using namespace zan::zandata;
using values::Name;
using values::Ref;

namespace {

class Table : public DataTest
{
protected:
    QString cell(int row, int column) { return table->model().cellText(row, column); }
    void show(const Ref<fake::FakeRecords>& list)
    {
        setRecords(list);
        table = addTable();
    }
    Ref<ENTViewer> table;
};

Ref<fake::FakeRecords> levels()
{
    return records({"Level|m", "Flow"}, {{1.5, 10.0}, {2.5, Variant()}, {3.5, 30.0}});
}

} // namespace

TEST_F(Table, HasTheWindowsLoggerAndUsesNoWindowSettings)
{
    show(levels());
    EXPECT_EQ(table->Logger().get(), logger.get());
    EXPECT_FALSE(wrapper->UseWindowSettings());
    EXPECT_EQ(table->name(), u"ENT");
}

TEST_F(Table, HasAColumnForEachChannelWithLabelAndUnit)
{
    show(levels());
    ASSERT_EQ(table->model().columnCount(), 3);
    EXPECT_EQ(table->model().columnName(0), u"Time");
    EXPECT_EQ(table->model().columnName(1), u"Level (m)");
    EXPECT_EQ(table->model().columnName(2), u"Flow");
}

TEST_F(Table, RecordsWithoutAHistoryHaveTheFormatsOfTheirChannels)
{
    RecordModel model;
    const QString endless(100'000, u'0');
    model.setSource(
        values::make<FormattedFake>(levels(), std::vector<QString>{{}, QStringLiteral("0.00"), endless}), {});
    EXPECT_EQ(model.cellText(0, 1), u"3.50");
    EXPECT_EQ(model.cellText(0, 2), u"30") << "nobody means such a format";
}

TEST_F(Table, ShowsTheNewestRecordFirstOrLast)
{
    show(levels());
    EXPECT_EQ(cell(0, 0), u"2026-03-02 14:00:02");
    EXPECT_EQ(cell(0, 1), u"3.5");
    EXPECT_EQ(cell(1, 2), QString());
    table->put(Name("NewestFirst"), Variant(false));
    EXPECT_EQ(cell(0, 1), u"1.5");
    EXPECT_EQ(cell(2, 1), u"3.5");
}

TEST_F(Table, RecordThatTheHistoryStoresAMomentLaterIsSeenWithoutAnotherOne)
{
    const auto store = values::make<fake::FakeHistory>();
    store->list.push_back({1, QStringLiteral("W"), QStringLiteral("A"), QStringLiteral("A"), {}, {}, 1000});
    store->put(1, noon(), 1.0);
    logger->live->history = store;
    table = addTable();
    EXPECT_FALSE(table->nextLook().isActive());
    Q_EMIT logger->NewENTData();
    EXPECT_EQ(table->model().rowCount(), 1);
    store->put(1, noon() + 1000, 2.0);
    while (table->nextLook().isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(table->model().rowCount(), 2);
}

TEST_F(Table, FollowsItsLoggerByItself)
{
    show(levels());
    setRecords(records({"Level|m", "Flow"}, {{1.5, 10.0}, {2.5, 20.0}, {3.5, 30.0}, {4.5, 40.0}}));
    Q_EMIT logger->NewENTData();
    EXPECT_EQ(table->model().rowCount(), 4);
    EXPECT_EQ(cell(0, 1), u"4.5");
    table->setLogger({});
    EXPECT_EQ(table->model().rowCount(), 0);
}

TEST_F(Table, ShowsValuesUnderTheChannelsFormats)
{
    const auto history = values::make<fake::FakeHistory>();
    history->list = {
        {3, {}, QStringLiteral("lev"), QStringLiteral("Level"), QStringLiteral("m"), QStringLiteral("0.00"), 1000}};
    history->put(3, noon(), 1.5);
    history->put(3, noon() + 1000, QStringLiteral("text"));
    logger->live->history = history;
    show(levels());
    EXPECT_EQ(table->model().columnCount(), 2);
    EXPECT_EQ(cell(1, 1), u"1.50");
    EXPECT_EQ(cell(0, 1), u"text");
}

TEST_F(Table, FindsATime)
{
    show(levels());
    EXPECT_EQ(table->model().rowOf(noon() + 500), 1); // newest first: the record one second later
    EXPECT_EQ(table->model().rowOf(noon() + 90'000), 0);
    EXPECT_EQ(table->model().rowOf(noon() - 90'000), 2);
    forms.answer(QStringLiteral("14:00:01"));
    table->askForTime();
    panel->flush();
    ASSERT_TRUE(table->ensureWidget());
    forms.answer(QStringLiteral("14:00:01"));
    table->askForTime();
    EXPECT_EQ(static_cast<QTableView*>(table->widget())->currentIndex().row(), 1);
    forms.answer(QStringLiteral("no time at all"));
    table->askForTime();
    EXPECT_EQ(forms.boxes().back().text, u"\"no time at all\" is no time.");
}

TEST_F(Table, CopiesTheSelectionAsTextThatASpreadsheetTakes)
{
    auto list = levels();
    list->labels[1] = QStringLiteral("=cmd()");
    list->rows[0][2] = QStringLiteral("@SUM(1)\t2\n3");
    list->rows[1][1] = -2.5;
    show(list);
    EXPECT_EQ(table->model().selectionText(0, 1, 2, 2), u"'=cmd() (m)\tFlow\n3.5\t30\n-2.5\t\n1.5\t'@SUM(1) 2 3\n");
    EXPECT_EQ(table->model().selectionText(2, 1, 0, 2), QString());
}

TEST_F(Table, LoggerThatFailsInAnyWayLeavesATableThatShowsNothing)
{
    logger->onLive = [] { throw std::runtime_error("no"); };
    show(levels());
    EXPECT_EQ(table->model().rowCount(), 0);
    logger->onLive = {};
    logger->live->buffers = nullptr;
    Q_EMIT logger->NewENTData();
    EXPECT_EQ(table->model().rowCount(), 0);
    logger->live = nullptr;
    Q_EMIT logger->NewENTData();
    EXPECT_EQ(table->model().rowCount(), 0);
}

TEST_F(Table, LoggerThatTakesItsTableAwayWhenAskedIsNoCrash)
{
    show(levels());
    bool isDone = false;
    logger->onLive = [&] {
        if (!std::exchange(isDone, true))
            panel->Controls()->Clear();
    };
    Q_EMIT logger->NewENTData();
    EXPECT_EQ(panel->Controls()->Count(), 0);
}
