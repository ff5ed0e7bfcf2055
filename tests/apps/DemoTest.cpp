#include "HostFixture.h"

#include "zanbench/LiveValues.h"
#include "zanbench/PanelLoader.h"

#include "display/SiteMapControl.h"
#include "values/Convert.h"

using namespace zan;
using values::Name;

namespace {

QString demo()
{
    return QStringLiteral(DEMO_SCHEME);
}

} // namespace

class DemoTest : public HostTest
{
protected:
    /// A copy that may be written to.
    QString copy(const QByteArray& extra = {}) const
    {
        QFile source(demo());
        EXPECT_TRUE(source.open(QIODevice::ReadOnly));
        QByteArray content = source.readAll();
        content.replace("</SCHEME>", extra + "</SCHEME>");
        write("demo.scheme", content);
        return path("demo.scheme");
    }
};

TEST_F(DemoTest, HasFivePanelsAndSomeFortyChannels)
{
    const auto opened = host::OpenedSite::open(demo(), {});
    ASSERT_TRUE(opened.site) << opened.error.toStdString();
    EXPECT_EQ(opened.site->panelKeys(), (QStringList{"Overview", "Pumps", "Gates", "Trends", "Records"}));
    EXPECT_TRUE(opened.site->canConnect()) << opened.site->loggerProblem().toStdString();
    std::int32_t channels = 0;
    const auto windows = opened.site->scheme().Windows();
    for (std::int32_t i = 1; i <= windows->Count(); ++i)
        channels += windows->Item(binding::Variant(i))->Count();
    EXPECT_GE(channels, 40);
}

TEST_F(DemoTest, EveryBindingLeadsToAChannelAndEveryControlIsBuilt)
{
    const auto opened = host::OpenedSite::open(demo(), {});
    ASSERT_TRUE(opened.site);
    for (const QString& key : opened.site->panelKeys()) {
        const auto panel = host::loadPanel(*opened.site, key);
        const document::Node window = panel->CurrentWindow()->XML();
        EXPECT_EQ(std::size_t(panel->Controls()->Count()), window.children(Name("CONTROL")).size())
            << key.toStdString() << " holds a type that is not known";
        for (std::int16_t i = 1; i <= panel->Controls()->Count(); ++i) {
            const auto control = panel->Controls()->Control(binding::Variant(i));
            EXPECT_TRUE(control->BindTo().isEmpty() || control->Channel()) << control->BindTo().toStdString();
        }
    }
}

TEST_F(DemoTest, NoLightOfAChannelFollowsTheLinkInstead)
{
    const auto opened = host::OpenedSite::open(demo(), {});
    ASSERT_TRUE(opened.site);
    const document::Node scheme = opened.site->scheme().document().documentElement();
    for (const document::Node& window : scheme.children(Name("WINDOW"))) {
        for (const document::Node& control : window.children(Name("CONTROL"))) {
            if (control.child(Name("MODE")).text() != QLatin1String("CHANNEL"))
                continue;
            // A light without a PROGRAM is lit by a connection until the first scan.
            EXPECT_EQ(control.child(Name("PROGRAM")).text(), "DATASTATUS")
                << control.child(Name("BINDTO")).text().toStdString();
        }
    }
}

TEST_F(DemoTest, ControlsLieWithinTheirPanelAndOnItsGrid)
{
    const auto opened = host::OpenedSite::open(demo(), {});
    ASSERT_TRUE(opened.site);
    for (const QString& key : opened.site->panelKeys()) {
        const auto panel = host::loadPanel(*opened.site, key);
        EXPECT_LE(host::contentSize(*panel).width(), 1000) << key.toStdString();
        EXPECT_LE(host::contentSize(*panel).height(), 660) << key.toStdString();
    }
}

TEST_F(DemoTest, LoadedSavedAndLoadedAgainItIsTheSameTree)
{
    const QString file = copy("<VENDOR kind=\"x\"><NOTE>kept</NOTE><!-- and this --></VENDOR>");
    const auto first = trellis::SchemeFile::open(file);
    ASSERT_TRUE(first);
    const QString tree = first.scheme->document().documentElement().xml();
    EXPECT_TRUE(tree.contains("kind=\"x\""));
    EXPECT_TRUE(tree.contains("<!-- and this -->"));
    first.scheme->saveAs(path("again.scheme"));
    const auto second = trellis::SchemeFile::open(path("again.scheme"));
    ASSERT_TRUE(second);
    EXPECT_EQ(second.scheme->document().documentElement().xml(), tree);
}

TEST_F(DemoTest, APanelSavedTwiceIsTheSameFileTheSecondTime)
{
    const QString file = copy("<VENDOR><NOTE>kept</NOTE></VENDOR>");
    const auto save = [&] {
        const auto opened = host::OpenedSite::open(file, {});
        ASSERT_TRUE(opened.site);
        for (const QString& key : opened.site->panelKeys()) {
            const auto panel = host::loadPanel(*opened.site, key);
            panel->SaveWindow();
        }
        EXPECT_FALSE(opened.site->scheme().isChanged());
    };
    save();
    const QByteArray once = read("demo.scheme");
    EXPECT_TRUE(once.contains("kept"));
    save();
    EXPECT_EQ(read("demo.scheme"), once);
}

TEST_F(DemoTest, EveryPanelShowsLiveValuesAfterConnecting)
{
    const auto opened = host::OpenedSite::open(demo(), {});
    ASSERT_TRUE(opened.site);
    const auto panel = host::loadPanel(*opened.site, "Overview");
    int events = 0;
    QObject::connect(opened.site->logger().get(), &site::Logger::NewBenchData, panel.get(), [&] { ++events; });
    opened.site->connectLink();
    ASSERT_TRUE(QTest::qWaitFor([&] { return events > 0; }, DeadlineMilliseconds));
    const auto windows = opened.site->scheme().Windows();
    for (std::int32_t w = 1; w <= windows->Count(); ++w) {
        const auto window = windows->Item(binding::Variant(w));
        for (std::int32_t i = 1; i <= window->Count(); ++i)
            EXPECT_FALSE(window->Item(binding::Variant(i))->Value().isEmpty())
                << window->Item(binding::Variant(i))->Key().toStdString();
    }
    EXPECT_TRUE(host::liveValues(*panel).contains("Overview|STAGE"));
    for (std::int16_t i = 1; i <= panel->Controls()->Count(); ++i) {
        const auto control = panel->Controls()->Control(binding::Variant(i));
        if (control->ControlType() == "VB.Label" && control->Channel()) {
            const QString caption = values::toText(control->Control()->get(Name("Caption")));
            EXPECT_FALSE(caption.isEmpty()) << control->BindTo().toStdString();
            EXPECT_NE(caption, "ERROR!") << control->BindTo().toStdString();
        }
    }
}

TEST_F(DemoTest, RegionHasADozenSitesTwoOfWhichAreSchemes)
{
    const QString folder = QFileInfo(demo()).path();
    QDir::setCurrent(folder);
    const auto opened = host::OpenedSite::open(folder + QStringLiteral("/region.scheme"), {});
    ASSERT_TRUE(opened.site) << opened.error.toStdString();
    const auto panel = host::loadPanel(*opened.site, QStringLiteral("Region"));
    const display::SiteChart& chart = panel->SiteMap()->chart();
    ASSERT_EQ(chart.shownCount(), 12);
    QStringList schemes;
    for (int site = 1; site <= chart.count(); ++site) {
        if (!chart.site(site).scheme.isEmpty())
            schemes << chart.site(site).scheme;
    }
    EXPECT_EQ(schemes, (QStringList{"tarn.scheme", "weir.scheme"}));
    for (const QString& scheme : schemes) {
        const auto site = host::OpenedSite::open(folder + u'/' + scheme, {});
        ASSERT_TRUE(site.site) << site.error.toStdString();
        EXPECT_TRUE(site.site->canConnect()) << site.site->loggerProblem().toStdString();
    }
    // No site lies on another.
    for (int site = 1; site <= chart.count(); ++site)
        EXPECT_EQ(chart.siteAt(chart.site(site).label.pixels().center()), site);
}
