// Labels with irrigation restrictions in the host program, beside a real server on the loopback address.

#include "HostFixture.h"

#include "zanbench/PanelLoader.h"

#include "support/LoopbackServer.h"
#include "values/Convert.h"

using namespace zan;
using binding::Variant;
using host::MainWindow;

namespace {

QString caption(const window::BenchWindow& panel, int place)
{
    return values::toText(panel.Controls()->Control(Variant(place))->Control()->get(values::Name("Caption")));
}

QByteArray example(const char* name)
{
    QFile file(QStringLiteral("examples/ecan/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST(EcanExample, ItsLabelsShowWhatItsDocumentAndItsPageSay)
{
    test::LoopbackServer server;
    server.serve("/lowflow/Service.svc/Xml/Restrictions/Site/66401", example("restrictions.xml"));
    server.serve("/restrictions.html", example("restrictions.html"), "text/html");
    host::OpenedSiteResult opened = host::OpenedSite::open(QStringLiteral("examples/ecan/river.scheme"), {});
    ASSERT_TRUE(opened.site) << opened.error.toStdString();
    const auto panel = host::loadPanel(*opened.site, QStringLiteral("Restrictions"), std::nullopt,
                                       [&](window::BenchWindow& made) { made.setECANHost(server.host()); });
    const auto page = panel->Controls()->Control(Variant(2));
    EXPECT_TRUE(page->BindTo().endsWith(QStringLiteral("|http://127.0.0.1:8080/restrictions.html")));
    page->setBindTo(QStringLiteral("ECANSCRAPE|Tarn outlet|") + server.url("/restrictions.html"));
    panel->Refresh();
    EXPECT_TRUE(test::waitUntil([&] {
        return caption(*panel, 1) ==
                   QLatin1String("ECAN @ 2024-02-03 08:00\r\nAssessed Flow=12.4\r\nAllocation=75%") &&
               caption(*panel, 2) ==
                   QLatin1String("Partial restriction Flow (m3): 1.85\r\nFrom ECAN @ 2024-02-03 08:15");
    })) << caption(*panel, 1).toStdString()
        << caption(*panel, 2).toStdString();
}

class EcanHost : public HostTest
{
protected:
    EcanHost()
    {
        writeScheme("<WINDOW><KEY>Ecan</KEY><CONTROL><TYPE>VB.Label</TYPE><BINDTO>ECANSVC|1|1</BINDTO></CONTROL>"
                    "</WINDOW>");
    }
    test::LoopbackServer server;
};

TEST_F(EcanHost, PanelsOfTheWindowAskTheServerOfTheSettings)
{
    server.serve("/lowflow/Service.svc/Xml/Restrictions/Site/1", "<Restrictions/>");
    settings.setEcanHost(server.host());
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    window.showWindow("Ecan");
    EXPECT_TRUE(
        test::waitUntil([&] { return caption(*window.currentPanel(), 1).endsWith("\r\nNo restrictions"); }));
    EXPECT_FALSE(window.hasUnsavedChanges());
}

TEST_F(EcanHost, WithoutOneNobodyIsAsked)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    window.showWindow("Ecan");
    EXPECT_EQ(caption(*window.currentPanel(), 1), "Error connecting to ECAN Server");
    EXPECT_EQ(server.connections(), 0);
}
