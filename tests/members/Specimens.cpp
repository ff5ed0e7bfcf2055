#include "Specimens.h"

#include "display/SiteMapControl.h"
#include "display/StatusLightControl.h"
#include "display/ValueBarControl.h"
#include "script/ScriptControl.h"
#include "site/FormattedRecords.h"
#include "site/NodeObject.h"
#include "support/FakeHistory.h"
#include "support/FakeSite.h"
#include "surface/host/Picture.h"
#include "surface/host/Surface.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/OptionButton.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/Shape.h"
#include "surface/intrinsic/TextBox.h"
#include "trellis/SchemeFile.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"
#include "wrappers/BenchControl.h"
#include "zandata/ENTViewer.h"
#include "zandata/ZanDataControls.h"
#include "zandata/ZanGraph.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zan::test {

using binding::Name;
using binding::Ref;
using binding::Variant;
using values::make;

namespace {

/// Records of a logger that knows the formats of its channels.
class RecordsWithFormats final : public site::FormattedRecords
{
public:
    std::int32_t rowCount() const override { return 0; }
    std::int32_t columnCount() const override { return 2; }
    QString columnLabel(std::int32_t) const override { return QStringLiteral("Flow"); }
    QString columnUnits(std::int32_t) const override { return QStringLiteral("l/s"); }
    QString columnFormat(std::int32_t) const override { return QStringLiteral("0.0"); }
    Variant cell(std::int32_t, std::int32_t) const override { return {}; }
};

} // namespace

struct Specimens::Owners
{
    surface::Surface surface;
    Ref<fake::FakeLogger> logger = make<fake::FakeLogger>();
    window::BenchWindow panel;
    script::ScriptControl script;
    QTemporaryDir folder;
};

Specimens::Specimens()
    : m_owners((zandata::provideControls(), std::make_unique<Owners>()))
{
    addControls();
    addPanel();
    addSite();
    addStoredScheme();
    addScriptObjects();
}

Specimens::~Specimens() = default;

void Specimens::addControls()
{
    surface::Surface& surface = m_owners->surface;
    surface.addArray<surface::Label>(QStringLiteral("Label"));
    surface.addArray<surface::TextBox>(QStringLiteral("Text"));
    surface.addArray<surface::CommandButton>(QStringLiteral("CommandButton"));
    surface.addArray<surface::PictureBox>(QStringLiteral("Pic"));
    surface.addArray<surface::CheckBox>(QStringLiteral("cbCheck"));
    surface.addArray<surface::OptionButton>(QStringLiteral("obOption"));
    surface.addArray<surface::Shape>(QStringLiteral("Shape"));
    surface.addArray<surface::ProgressBar>(QStringLiteral("pbar"));
    surface.addArray<display::StatusLightControl>(QStringLiteral("StatusLight1"));
    surface.addArray<display::ValueBarControl>(QStringLiteral("ValueBar"));
    for (const Ref<surface::ControlArray>& array : surface.arrays()) {
        add(array);
        add(array->load(surface::ControlArray::TemplateIndex + 1));
    }
    const Ref<surface::LiveControl> map =
        surface.addArray<display::SiteMapControl>(QStringLiteral("SiteMap1")).item(1);
    static_cast<display::SiteMapControl&>(*map).SelectSite(1); // its font can be put while a site is selected
    add(map);
    const Ref<surface::LiveControl> graph =
        surface.addArray<zandata::ZanGraph>(QStringLiteral("ZanGraph1")).item(1);
    add(graph);
    add(static_cast<zandata::ZanGraph&>(*graph).Filter());
    add(surface.addArray<zandata::ENTViewer>(QStringLiteral("ENT")).item(1));
    add(make<display::Sites>());
    add(make<surface::FontObject>());
    add(make<surface::Picture>(QImage(4, 4, QImage::Format_RGB32)));
}

void Specimens::addPanel()
{
    window::BenchWindow& panel = m_owners->panel;
    panel.InitProperties();
    panel.setLogger(m_owners->logger);
    add(panel.object());
    add(panel.Controls());
    add(panel.Controls()->Add(QStringLiteral("VB.Label"), QStringLiteral("Flow")));
    add(make<wrappers::iBenchControl>());
    add(panel.Controls()->Add(QStringLiteral("ZanDataControls.ZanGraph"), QStringLiteral("Trend")));
}

void Specimens::addSite()
{
    fake::FakeLogger& logger = *m_owners->logger;
    add(Ref<fake::FakeLogger>(&logger));
    add(logger.link);
    add(logger.live);
    logger.live->history = make<fake::FakeHistory>();
    add(logger.live->history);
    add(logger.live->buffers);
    add(logger.live->buffers->buffers.front());
    add(logger.live->buffers->buffers.front()->records);
    add(make<RecordsWithFormats>());
}

void Specimens::addStoredScheme()
{
    const QString path = m_owners->folder.filePath(QStringLiteral("weir.xml"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "<SCHEME><SCHEMENAME>Weir</SCHEMENAME><WINDOW><KEY>RTD</KEY><CHANNEL><KEY>Flow</KEY></CHANNEL></WINDOW>"
        "</SCHEME>");
    file.close();
    const Ref<trellis::SchemeFile> scheme = trellis::SchemeFile::open(path).scheme;
    ASSERT_TRUE(scheme);
    const Ref<site::SchemeWindow> window = scheme->Windows()->Item(Variant(std::int32_t(1)));
    ASSERT_TRUE(window);
    add(scheme);
    add(scheme->Windows());
    add(window);
    add(window->Item(Variant(std::int32_t(1))));
    const auto node = make<site::NodeObject>(window->XML());
    add(node);
    add(Ref<binding::Object>(&binding::objectOf(node->childNodes())));
}

void Specimens::addScriptObjects()
{
    script::ScriptControl& script = m_owners->script;
    ASSERT_TRUE(
        script.AddCode(QStringLiteral("Set r = New RegExp : r.Pattern = \"(b)\" : Set all = r.Execute(\"abc\")")));
    for (const QString& expression :
         {QStringLiteral("r"), QStringLiteral("all"), QStringLiteral("all(0)"), QStringLiteral("all(0).SubMatches"),
          QStringLiteral("Err"), QStringLiteral("CreateObject(\"Scripting.Dictionary\")")}) {
        const std::optional<Variant> value = script.Eval(expression);
        ASSERT_TRUE(value && value->isObject()) << qPrintable(expression);
        add(Ref<binding::Object>(&binding::objectOf(*value)));
    }
}

} // namespace zan::test
