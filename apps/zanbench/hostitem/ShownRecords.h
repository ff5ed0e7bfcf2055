#pragma once

#include "binding/Object.h"
#include "zandata/ENTViewer.h"
#include "zandata/ZanGraph.h"

namespace zan::host {

using binding::Ref;
using binding::Variant;

/// One channel of a graph.
class ShownSeries : public binding::Object
{
public:
    ShownSeries(Ref<zandata::ZanGraph> graph, std::size_t place)
        : m_graph(std::move(graph))
        , m_place(place)
    {}
    QString Label() const;
    QString Units() const;
    bool Visible() const;
    /// Records in the stretch of time that is seen.
    double Points() const;
    /// The latest record at a time or before it; Empty for none.
    Variant Value(const Variant& time) const;
    const binding::MemberTable& members() const override;

private:
    Ref<zandata::ZanGraph> m_graph;
    std::size_t m_place;
};

/// The channels of a graph, from 1; none before its first record.
class ShownSeriesList : public binding::Object
{
public:
    explicit ShownSeriesList(Ref<zandata::ZanGraph> graph)
        : m_graph(std::move(graph))
    {}
    std::int32_t Count() const;
    /// Raises 9 for a number that there is not.
    Ref<ShownSeries> Item(std::int32_t number) const;
    const binding::MemberTable& members() const override;

private:
    Ref<zandata::ZanGraph> m_graph;
};

class ShownLimits : public binding::Object
{
public:
    explicit ShownLimits(Ref<zandata::ZanGraph> graph)
        : m_graph(std::move(graph))
    {}
    double Upper() const { return m_graph->UpperLimitLine(); }
    double Lower() const { return m_graph->LowerLimitLine(); }
    QString UpperLabel() const { return m_graph->UpperLimitLabel(); }
    QString LowerLabel() const { return m_graph->LowerLimitLabel(); }
    const binding::MemberTable& members() const override;

private:
    Ref<zandata::ZanGraph> m_graph;
};

class ShownGraph : public binding::Object
{
public:
    explicit ShownGraph(Ref<zandata::ZanGraph> graph)
        : m_graph(std::move(graph))
    {}
    QString Heading() const { return m_graph->Heading(); }
    Ref<ShownSeriesList> Series() const { return values::make<ShownSeriesList>(m_graph); }
    Ref<ShownLimits> Limits() const { return values::make<ShownLimits>(m_graph); }
    const binding::MemberTable& members() const override;

private:
    Ref<zandata::ZanGraph> m_graph;
};

/// The rows of a log buffer's table as they are shown.
class ShownTable : public binding::Object
{
public:
    explicit ShownTable(Ref<zandata::ENTViewer> table)
        : m_table(std::move(table))
    {}
    std::int32_t Rows() const;
    std::int32_t Columns() const;
    /// Text of a cell, both from 1; row 0 is the header. Raises 9 outside.
    QString Cell(std::int32_t row, std::int32_t column) const;
    const binding::MemberTable& members() const override;

private:
    Ref<zandata::ENTViewer> m_table;
};

} // namespace zan::host
