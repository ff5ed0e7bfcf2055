// A scan of a panel whose labels are all bound to one site of the web service, beside as many labels bound to channels:
// while the document is fetched, while a failure stands, and after it was served. Times are medians of processor time;
// the server is a real one on the loopback address.

#include "document/XMLOps.h"
#include "ecan/NetworkSource.h"
#include "support/FakeSite.h"
#include "support/LoopbackServer.h"
#include "window/BenchWindow.h"
#include "window/PanelDocument.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

using namespace zan;
using values::Ref;

namespace {

constexpr int Labels = 1000;
constexpr int Scans = 51;
const char* const SitePath = "/lowflow/Service.svc/Xml/Restrictions/Site/66401";
const QByteArray Document =
    "<Restrictions><Site>66401</Site><AssessedFlow>12.4</AssessedFlow><LastUpdate>2024-02-03 08:00</LastUpdate>"
    "<Restriction><Band>1</Band><Allocation>75</Allocation></Restriction></Restrictions>";

/// Processor time of the program so far, in microseconds. The network has threads of its own: they count too.
double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e6 + double(now.tv_nsec) / 1e3;
}

template <class Work>
double measure(Work&& work)
{
    std::vector<double> times;
    for (int run = 0; run < Scans; ++run) {
        const double start = processorTime();
        work();
        times.push_back(processorTime() - start);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

struct Panel
{
    explicit Panel(const QString& bindText)
    {
        channel->label = QStringLiteral("Stage");
        channel->value = values::Variant(1.5);
        const QString control =
            QStringLiteral("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>%1</BINDTO></CONTROL>").arg(bindText);
        const document::Node tree = document::XMLOps::LoadDocument(
            QStringLiteral("<X>") + control.repeated(Labels) + QStringLiteral("</X>"));
        const document::Node window = logger->scheme->window(QStringLiteral("Main"))->XML();
        while (const document::Node child = tree.firstChildElement())
            window.appendChild(child);
        panel.InitProperties();
        panel.setShowSiteMap(false);
        panel.setLogger(logger);
    }
    void load() { panel.LoadWindow(QStringLiteral("Main")); }
    double scan()
    {
        panel.Refresh();
        panel.Refresh();
        return measure([&] { panel.Refresh(); });
    }
    Ref<fake::FakeLogger> logger = values::make<fake::FakeLogger>();
    Ref<fake::FakeChannel> channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"));
    window::BenchWindow panel;
};

void row(const char* what, double microseconds)
{
    std::printf("%-62s %9.1f us  %7.3f us a label\n", what, microseconds, microseconds / Labels);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM",
            qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ? qgetenv("QT_QPA_PLATFORM") : "offscreen");
    const QApplication application(argc, argv);
    std::printf("A scan of %d labels\n", Labels);
    {
        Panel plain(QStringLiteral("RTD|STAGE"));
        plain.load();
        row("bound to a channel that does not count its changes", plain.scan());
    }
    {
        Panel unbound({});
        unbound.load();
        row("bound to nothing", unbound.scan());
    }
    test::LoopbackServer server;
    server.hold(SitePath);
    Panel bound(QStringLiteral("ECANSVC|66401|1"));
    bound.load();
    row("of one site, without a server", bound.scan());
    bound.panel.setECANHost(server.host());
    bound.panel.Refresh();
    if (!test::waitUntil([&] { return server.count() == 1; }))
        return 1;
    row("of one site, while its document is fetched", bound.scan());
    bool isTold = false;
    QObject::connect(&bound.panel.document().restrictionSource(), &ecan::NetworkSource::ended, &bound.panel,
                     [&] { isTold = true; });
    const double start = processorTime();
    server.release(Document);
    if (!test::waitUntil([&] { return isTold; }))
        return 1;
    row("of one site, being served, the network's work included", processorTime() - start);
    row("of one site, that were served", bound.scan());
    std::printf("requests: %d\n", server.count());
    return 0;
}
