#include "zanbench/hostitem/ShownRecords.h"

#include "binding/MemberTable.h"
#include "values/Calendar.h"
#include "values/Convert.h"
#include "zandata/RecordModel.h"
#include "zandata/data/Trend.h"

namespace zan::host {

using binding::readOnly;
using values::ErrorNumber;
using zandata::TrendChannel;

namespace {

/// A channel that was there when it was asked for may be gone with the next records.
const TrendChannel& channelAt(const zandata::ZanGraph& graph, std::size_t place)
{
    if (place >= graph.trend().channels().size())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    return graph.trend().channels()[place];
}

} // namespace

// A channel ----------------------------------------------------------------------------------------------------

QString ShownSeries::Label() const
{
    return channelAt(*m_graph, m_place).label;
}

QString ShownSeries::Units() const
{
    return channelAt(*m_graph, m_place).units;
}

bool ShownSeries::Visible() const
{
    return m_graph->trend().isShown(channelAt(*m_graph, m_place));
}

double ShownSeries::Points() const
{
    const zandata::TimeView& view = m_graph->trend().view();
    std::int64_t records = 0;
    for (const site::HistoryPoint& point : channelAt(*m_graph, m_place).cache.points()) {
        if (point.last >= view.from() && point.first < view.until())
            records += point.count;
    }
    return double(records);
}

Variant ShownSeries::Value(const Variant& time) const
{
    const std::optional<zandata::HistoryTime> moment = zandata::timeOf(Variant(values::toDate(time)));
    if (!moment)
        values::raise(ErrorNumber::Overflow);
    channelAt(*m_graph, m_place);
    return m_graph->valueAt(m_place, *moment);
}

const binding::MemberTable& ShownSeries::members() const
{
    using C = ShownSeries;
    return binding::table([] {
        return binding::MemberTable("ShownSeries", nullptr,
                                    {readOnly<&C::Label>("Label"), readOnly<&C::Units>("Units"),
                                     readOnly<&C::Visible>("Visible"), readOnly<&C::Points>("Points"),
                                     readOnly<&C::Value>("Value")});
    });
}

std::int32_t ShownSeriesList::Count() const
{
    return std::int32_t(m_graph->trend().channels().size());
}

Ref<ShownSeries> ShownSeriesList::Item(std::int32_t number) const
{
    if (number < 1 || number > Count())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    return values::make<ShownSeries>(m_graph, std::size_t(number - 1));
}

const binding::MemberTable& ShownSeriesList::members() const
{
    using C = ShownSeriesList;
    return binding::table([] {
        return binding::MemberTable("ShownSeriesList", nullptr,
                                    {readOnly<&C::Count>("Count"), readOnly<&C::Item>("Item").asDefault()});
    });
}

// Graph and table ----------------------------------------------------------------------------------------------

const binding::MemberTable& ShownLimits::members() const
{
    using C = ShownLimits;
    return binding::table([] {
        return binding::MemberTable("ShownLimits", nullptr,
                                    {readOnly<&C::Upper>("Upper"), readOnly<&C::Lower>("Lower"),
                                     readOnly<&C::UpperLabel>("UpperLabel"),
                                     readOnly<&C::LowerLabel>("LowerLabel")});
    });
}

const binding::MemberTable& ShownGraph::members() const
{
    using C = ShownGraph;
    return binding::table([] {
        return binding::MemberTable(
            "ShownGraph", nullptr,
            {readOnly<&C::Heading>("Heading"), readOnly<&C::Series>("Series"), readOnly<&C::Limits>("Limits")});
    });
}

std::int32_t ShownTable::Rows() const
{
    return m_table->model().rowCount();
}

std::int32_t ShownTable::Columns() const
{
    return m_table->model().columnCount();
}

QString ShownTable::Cell(std::int32_t row, std::int32_t column) const
{
    if (row < 0 || row > Rows() || column < 1 || column > Columns())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    return row == 0 ? m_table->model().columnName(column - 1) : m_table->model().cellText(row - 1, column - 1);
}

const binding::MemberTable& ShownTable::members() const
{
    using C = ShownTable;
    return binding::table([] {
        return binding::MemberTable(
            "ShownTable", nullptr,
            {readOnly<&C::Rows>("Rows"), readOnly<&C::Columns>("Columns"), readOnly<&C::Cell>("Cell")});
    });
}

} // namespace zan::host
