#include "zandata/ZanGraph.h"

#include "binding/MemberTable.h"
#include "surface/forms/HostForms.h"
#include "surface/host/Surface.h"
#include "values/Failure.h"
#include "zandata/data/SeenCsv.h"
#include "zandata/plot/GraphView.h"

#include <QImage>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QSaveFile>

#include <cmath>

namespace zan::zandata {

using values::Ref;

namespace {

/// Characters of a limit's label or of a heading that are kept.
constexpr qsizetype LongestText = 1000;
constexpr double PictureScale = 2; // of a saved picture

surface::FileRequest fileRequest(GraphCommand command)
{
    surface::FileRequest request;
    request.isSaved = true;
    if (command == GraphCommand::SaveCsv) {
        request.title = QStringLiteral("Save what is seen as a table");
        request.filter = QStringLiteral("Tables (*.csv)|*.csv|All Files (*.*)|*.*");
        request.defaultExtension = QStringLiteral(".csv");
        request.file = QStringLiteral("graph.csv");
    } else {
        request.title = QStringLiteral("Save what is seen as a picture");
        request.filter = QStringLiteral("Pictures (*.png)|*.png|All Files (*.*)|*.*");
        request.defaultExtension = QStringLiteral(".png");
        request.file = QStringLiteral("graph.png");
    }
    return request;
}

} // namespace

ZanGraph::ZanGraph()
    : WidgetControl(values::WindowBackground, values::WindowText)
    , m_content(std::make_shared<GraphContent>())
{
    m_content->trend.filter().changed = [this] { changed(Look); };
}

ZanGraph::~ZanGraph()
{
    m_content->trend.filter().changed = {}; // the widget and scripts may hold the rest a little longer
}

const binding::MemberTable& ZanGraph::members() const
{
    using C = ZanGraph;
    using binding::property;
    return binding::table([] {
        return binding::MemberTable(
            "ZanGraph", &widgetMembers(),
            {
                binding::field<&C::m_backColor, &C::restyle>("BackColor", values::WindowBackground),
                binding::field<&C::m_foreColor, &C::restyle>("ForeColor", values::WindowText),
                property<&C::Heading, &C::setHeading>("Heading"),
                property<&C::UpperLimitLine, &C::setUpperLimitLine>("UpperLimitLine"),
                property<&C::LowerLimitLine, &C::setLowerLimitLine>("LowerLimitLine"),
                property<&C::UpperLimitLabel, &C::setUpperLimitLabel>("UpperLimitLabel"),
                property<&C::LowerLimitLabel, &C::setLowerLimitLabel>("LowerLimitLabel"),
                binding::readOnly<&C::Filter>("Filter"),
                property<&C::History, &C::setHistory>("History"),
                property<&C::DataSource, &C::setDataSource>("DataSource"),
            });
    });
}

// What is shown ------------------------------------------------------------------------------------------------

const QString& ZanGraph::Heading() const
{
    return m_content->heading;
}

void ZanGraph::setHeading(const QString& heading)
{
    m_content->heading = heading.left(LongestText);
    changed(Look);
}

double ZanGraph::UpperLimitLine() const
{
    return m_content->upper.position;
}

void ZanGraph::setUpperLimitLine(double position)
{
    m_content->upper.position = position;
    changed(Look);
}

double ZanGraph::LowerLimitLine() const
{
    return m_content->lower.position;
}

void ZanGraph::setLowerLimitLine(double position)
{
    m_content->lower.position = position;
    changed(Look);
}

const QString& ZanGraph::UpperLimitLabel() const
{
    return m_content->upper.label;
}

void ZanGraph::setUpperLimitLabel(const QString& label)
{
    m_content->upper.label = label.left(LongestText);
    changed(Look);
}

const QString& ZanGraph::LowerLimitLabel() const
{
    return m_content->lower.label;
}

void ZanGraph::setLowerLimitLabel(const QString& label)
{
    m_content->lower.label = label.left(LongestText);
    changed(Look);
}

Ref<binding::Object> ZanGraph::Filter() const
{
    return Ref<binding::Object>(&m_content->trend.filter());
}

void ZanGraph::setDataSource(const Ref<site::LogRecords>& records)
{
    const Ref<ZanGraph> alive(this);
    m_records = records;
    m_content->trend.feed(Ref<site::LogRecords>(records), Ref<site::History>(m_history));
    changed(Look);
}

const Trend& ZanGraph::trend() const
{
    return m_content->trend;
}

TimeView& ZanGraph::view()
{
    changed(Look);
    return m_content->trend.view();
}

void ZanGraph::complete()
{
    const Ref<ZanGraph> alive(this);
    if (QWidget* own = ensureWidget())
        view(own)->complete();
}

Variant ZanGraph::valueAt(std::size_t channel, HistoryTime moment) const
{
    const std::vector<TrendChannel>& channels = m_content->trend.channels();
    if (channel >= channels.size())
        return {};
    const Ref<site::History> store = channels[channel].store;
    const std::int64_t id = channels[channel].series;
    Variant value;
    values::attempt([&] {
        const std::vector<site::HistorySeries> series = store->series();
        const std::vector<site::History::Past> pasts = store->valuesAt(moment);
        for (std::size_t i = 0; i < std::min(series.size(), pasts.size()); ++i) {
            if (series[i].id == id)
                value = pasts[i].value;
        }
    });
    return value;
}

void ZanGraph::copyDesign(const surface::LiveControl& source)
{
    const auto& other = static_cast<const ZanGraph&>(source);
    m_content->heading = other.m_content->heading;
    m_content->upper = other.m_content->upper;
    m_content->lower = other.m_content->lower;
    WidgetControl::copyDesign(source);
}

// Widget -------------------------------------------------------------------------------------------------------

GraphView* ZanGraph::view(QWidget* widget) const
{
    return graphViewOf(widget);
}

QWidget* ZanGraph::createWidget(QWidget* parent)
{
    return &makeGraphView(parent, m_content, [this](GraphCommand command) {
                if (surface::Surface* place = surface())
                    place->tell([&](surface::SurfaceEvents&) { save(command); });
            })->widget();
}

void ZanGraph::syncWidget(QWidget& widget)
{
    if (GraphView* shown = view(&widget))
        shown->refresh();
}

/// Its buttons work on an unlocked panel, too.
bool ZanGraph::keepsMouse(QPointF) const
{
    return false;
}

QString ZanGraph::accessibleText() const
{
    const GraphView* shown = view(widget());
    return shown ? shown->summary() : m_content->heading;
}

// Out of the panel ---------------------------------------------------------------------------------------------

void ZanGraph::save(GraphCommand command)
{
    const Ref<ZanGraph> alive(this);
    if (command == GraphCommand::Print) {
        print();
        return;
    }
    surface::HostForms* forms = m_forms ? m_forms() : nullptr;
    if (!forms)
        return;
    const std::optional<QString> file = forms->pickFile(widget(), fileRequest(command));
    if (!file || !isLoaded() || write(command, *file))
        return;
    forms = m_forms();
    if (forms)
        forms->messageBox(widget(), QStringLiteral("\"%1\" cannot be written.").arg(*file),
                          surface::HostForms::Exclamation, QString());
}

bool ZanGraph::write(GraphCommand command, const QString& file)
{
    GraphView* shown = view(widget());
    if (!shown)
        return false;
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly))
        return false;
    if (command == GraphCommand::SaveCsv) {
        shown->complete();
        if (target.write(seenCsv(trend()).toUtf8()) < 0)
            return false;
    } else if (!shown->picture(PictureScale).save(&target, "PNG")) {
        return false;
    }
    return target.commit();
}

void ZanGraph::print()
{
    surface::HostForms* forms = m_forms ? m_forms() : nullptr;
    if (!forms || !widget())
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialog(&printer, widget());
    dialog.setWindowTitle(QStringLiteral("Print what is seen"));
    forms->showModal(dialog);
    if (dialog.result() == QDialog::Accepted && isLoaded() && widget())
        view(widget())->print(printer);
}

} // namespace zan::zandata
