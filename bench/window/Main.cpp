// From a click to the logger's write: what a button's action costs, the first time and later, in microseconds. Beside
// it the same write called directly. Times are medians of many clicks; the first run is that of a fresh panel.

#include "document/XMLOps.h"
#include "support/FakeSite.h"

#include "surface/forms/RecordingForms.h"
#include "surface/intrinsic/CommandButton.h"
#include "window/BenchWindow.h"

#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace zan;
using values::Name;
using values::Ref;
using values::Variant;

namespace {

double microseconds(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1000;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

struct Clicked
{
    double first;
    double later;
};

Clicked measure(const char* action)
{
    constexpr int FreshPanels = 15;
    constexpr int Clicks = 2000;
    std::vector<double> first;
    std::vector<double> later;
    for (int round = 0; round < FreshPanels; ++round) {
        surface::RecordingForms forms;
        const auto logger = values::make<fake::FakeLogger>();
        logger->link->state = site::LinkState::Connected;
        logger->channel(QStringLiteral("RTD"), QStringLiteral("GATE"));
        const document::Node root = logger->scheme->window(QStringLiteral("A"))->XML();
        root.appendChild(document::XMLOps::LoadDocument(
            QStringLiteral("<CONTROL><TYPE>VB.CommandButton</TYPE><BINDTO>RTD|GATE</BINDTO>%1</CONTROL>")
                .arg(QString::fromLatin1(action))));
        window::BenchWindow panel;
        panel.setForms(&forms);
        panel.InitProperties();
        panel.setLogger(logger);
        panel.LoadWindow(QStringLiteral("A"));
        const Ref<binding::Object> control = panel.Controls()->Control(Variant(1))->Control();
        auto& button = static_cast<surface::CommandButton&>(*control);
        for (int click = 0; click < Clicks; ++click) {
            logger->live->writes.clear();
            QElapsedTimer timer;
            timer.start();
            button.press();
            (click == 0 ? first : later).push_back(microseconds(timer));
            if (logger->live->writes.size() != 1) {
                std::fprintf(stderr, "a click has not written\n");
                std::exit(1);
            }
        }
    }
    return {median(first), median(later)};
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    struct Row
    {
        const char* name;
        const char* action;
    };
    const Row rows[] = {
        {"TOGGLE", "<ACTION><TYPE>TOGGLE</TYPE></ACTION>"},
        {"PUT", "<ACTION><TYPE>PUT</TYPE><PUTVALUE>1</PUTVALUE><PUTADDRESS>5</PUTADDRESS></ACTION>"},
        {"SCRIPT, one line", "<ACTION><TYPE>SCRIPT</TYPE><SCRIPT>Sub Main(): Logger.Live.WriteChannel "
                             "Scheme.Windows(\"RTD\").Item(\"GATE\"), 1: End Sub</SCRIPT></ACTION>"},
    };
    std::printf("%-20s %12s %12s\n", "click to write, us", "first", "later");
    for (const Row& row : rows) {
        const Clicked clicked = measure(row.action);
        std::printf("%-20s %12.2f %12.2f\n", row.name, clicked.first, clicked.later);
    }
    return 0;
}
