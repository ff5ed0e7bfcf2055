#pragma once

#include "site/Logger.h"
#include "surface/host/UsesForms.h"
#include "surface/host/WidgetControl.h"
#include "zandata/data/TimeView.h"

#include <memory>

namespace zan::zandata {

class GraphFilter;
class GraphView;
class Trend;
enum class GraphCommand : std::uint8_t;
struct GraphContent;

/// A live trend of log-buffer channels.
///
/// It is given records as its DataSource, and a History for what lies before them; it reads both when it is given a data
/// source and at no other time, apart from what a user's zooms and moves need. Its widget holds no more points than it
/// has pixels, whatever the number of records.
class ZanGraph final : public surface::WidgetControl, public surface::UsesForms
{
public:
    ZanGraph();
    ~ZanGraph() override;
    const binding::MemberTable& members() const override;

    const QString& Heading() const;
    void setHeading(const QString& heading);
    double UpperLimitLine() const;
    void setUpperLimitLine(double position);
    double LowerLimitLine() const;
    void setLowerLimitLine(double position);
    const QString& UpperLimitLabel() const;
    void setUpperLimitLabel(const QString& label);
    const QString& LowerLimitLabel() const;
    void setLowerLimitLabel(const QString& label);
    Ref<binding::Object> Filter() const;
    const values::Ref<site::LogRecords>& DataSource() const { return m_records; }
    /// Takes the records over and draws the graph anew. Records that fail leave the graph as it is.
    void setDataSource(const values::Ref<site::LogRecords>& records);
    const values::Ref<site::History>& History() const { return m_history; }
    /// Is looked at when the graph gets its next data source.
    void setHistory(const values::Ref<site::History>& history) { m_history = history; }

    const Trend& trend() const;
    TimeView& view();
    /// Reads what the picture of this moment needs, without waiting for a turn of the event loop.
    void complete();
    /// The latest record at a moment or before it, as its store has it; Empty where there is none.
    Variant valueAt(std::size_t channel, HistoryTime moment) const;
    /// Asks for a file and writes what is seen.
    void save(GraphCommand command);

    void setForms(const surface::FormsSource& forms) override { m_forms = forms; }
    bool keepsMouse(QPointF place) const override;
    surface::AccessibleRole accessibleRole() const noexcept override { return surface::AccessibleRole::Chart; }
    QString accessibleText() const override;
    void copyDesign(const surface::LiveControl& source) override;

protected:
    QWidget* createWidget(QWidget* parent) override;
    bool takesInput() const override { return false; }
    void syncWidget(QWidget& widget) override;

private:
    GraphView* view(QWidget* widget) const;
    bool write(GraphCommand command, const QString& file);
    void print();

    std::shared_ptr<GraphContent> m_content;
    values::Ref<site::LogRecords> m_records;
    values::Ref<site::History> m_history;
    surface::FormsSource m_forms;
};

} // namespace zan::zandata
