#pragma once

#include "site/FormattedRecords.h"
#include "support/FakeHistory.h"
#include "support/FakeSite.h"
#include "surface/forms/RecordingForms.h"
#include "window/BenchWindow.h"
#include "zandata/ENTViewer.h"
#include "zandata/ZanDataControls.h"
#include "zandata/ZanGraph.h"
#include "zandata/data/LogTime.h"

#include <gtest/gtest.h>

#include <memory>

namespace zan::zandata {

/// 2 March 2026, 14:00 local time.
inline HistoryTime noon()
{
    static const HistoryTime time = *timeFromText(QStringLiteral("2026-03-02 14:00:00"), 0);
    return time;
}

/// A log buffer of these channels ("label|units"), with a record for each row, a second apart.
inline values::Ref<fake::FakeRecords> records(const std::vector<const char*>& channels,
                                              const std::vector<std::vector<Variant>>& rows,
                                              HistoryTime first = noon(), std::int64_t step = 1000)
{
    auto result = values::make<fake::FakeRecords>();
    result->labels.push_back(QStringLiteral("Time"));
    result->units.emplace_back();
    for (const char* channel : channels) {
        const QString text = QString::fromUtf8(channel);
        result->labels.push_back(text.section(u'|', 0, 0));
        result->units.push_back(text.section(u'|', 1));
    }
    HistoryTime time = first;
    for (const std::vector<Variant>& row : rows) {
        std::vector<Variant> cells{Variant(dateOf(time))};
        cells.insert(cells.end(), row.begin(), row.end());
        result->rows.push_back(std::move(cells));
        time += step;
    }
    return result;
}

/// Records of a logger that knows its channels' formats; the first is that of the time.
class FormattedFake final : public site::FormattedRecords
{
public:
    FormattedFake(values::Ref<fake::FakeRecords> table, std::vector<QString> formats)
        : m_table(std::move(table))
        , m_formats(std::move(formats))
    {}
    std::int32_t rowCount() const override { return m_table->rowCount(); }
    std::int32_t columnCount() const override { return m_table->columnCount(); }
    QString columnLabel(std::int32_t column) const override { return m_table->columnLabel(column); }
    QString columnUnits(std::int32_t column) const override { return m_table->columnUnits(column); }
    QString columnFormat(std::int32_t column) const override { return m_formats.at(std::size_t(column)); }
    Variant cell(std::int32_t row, std::int32_t column) const override { return m_table->cell(row, column); }

private:
    values::Ref<fake::FakeRecords> m_table;
    std::vector<QString> m_formats;
};

/// A panel on whose surface graphs and tables can be placed.
class DataTest : public testing::Test
{
protected:
    DataTest()
    {
        provideControls();
        panel = std::make_unique<window::BenchWindow>();
        panel->setForms(&forms);
        panel->InitProperties();
        panel->setShowSiteMap(false);
        panel->setLogger(logger);
        panel->resize(900, 600);
        panel->show();
    }
    /// Places a control of this type by itself.
    template <class Control>
    values::Ref<Control> add(const char* type)
    {
        wrapper = panel->Controls()->Add(QString::fromLatin1(type));
        return values::Ref<Control>(dynamic_cast<Control*>(wrapper->Control().get()));
    }
    values::Ref<ZanGraph> addGraph() { return add<ZanGraph>("ZanDataControls.ZanGraph"); }
    values::Ref<ENTViewer> addTable() { return add<ENTViewer>("ZanDataControls.ENTViewer"); }
    void setRecords(const values::Ref<fake::FakeRecords>& list)
    {
        logger->live->buffers->buffers.front()->records = list;
    }

    surface::RecordingForms forms;
    values::Ref<fake::FakeLogger> logger = values::make<fake::FakeLogger>();
    std::unique_ptr<window::BenchWindow> panel;
    values::Ref<wrappers::iBenchControl> wrapper;
};

} // namespace zan::zandata
