// A panel of 1,000 bound controls from moment to moment of the past, beside the live scan of the same panel with as many
// values changed. Times are medians in milliseconds; the history is in memory, so that what is measured is the panel.

#include "document/XMLOps.h"
#include "support/FakeHistory.h"
#include "support/FakeSite.h"

#include "window/BenchWindow.h"

#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace zan;
using values::Variant;

namespace {

constexpr int Controls = 1000;
constexpr int Rounds = 200;
constexpr site::HistoryTime First = 1'600'000'000'000;
constexpr site::HistoryTime Period = 1000;

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

template <class Step>
double medianOf(Step step)
{
    std::vector<double> times;
    for (int round = 0; round < Rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        step(round);
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return median(std::move(times));
}

/// Answers at once, whatever the moment: a value for each series that differs from the one before.
class MovingHistory : public fake::FakeHistory
{
public:
    std::vector<Past> valuesAt(Time moment) const override
    {
        std::vector<Past> values(list.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = {moment, Variant(double(moment / Period % 100) + double(i % 10) / 10)};
        return values;
    }
};

struct Kind
{
    const char* name;
    const char* type;
    const char* rest;
};

void measure(const Kind& kind)
{
    const auto logger = values::make<fake::FakeLogger>();
    const auto history = values::make<MovingHistory>();
    logger->live->history = history;
    document::Node root = logger->scheme->window(QStringLiteral("A"))->XML();
    std::vector<values::Ref<fake::FakeChannel>> channels;
    for (int i = 0; i < Controls; ++i) {
        const QString key = QStringLiteral("C%1").arg(i);
        channels.push_back(logger->channel(QStringLiteral("RTD"), key));
        channels.back()->value = Variant(1.0);
        history->list.push_back({i + 1, QStringLiteral("RTD"), key, {}, {}, {}, Period});
        root.appendChild(document::XMLOps::LoadDocument(
            QStringLiteral(
                "<CONTROL><TYPE>%1</TYPE><LEFT>%2</LEFT><TOP>%3</TOP><BINDTO>RTD|%4</BINDTO>%5</CONTROL>")
                .arg(QLatin1String(kind.type))
                .arg(i % 40 * 400)
                .arg(i / 40 * 300)
                .arg(key, QLatin1String(kind.rest))));
    }
    window::BenchWindow panel;
    panel.InitProperties();
    panel.setShowSiteMap(false);
    panel.setLogger(logger);
    panel.LoadWindow(QStringLiteral("A"));
    panel.resize(1100, 800);
    const double live = medianOf([&](int round) {
        for (const auto& channel : channels)
            channel->value = Variant(double(round % 100));
        Q_EMIT logger->NewBenchData();
    });
    QElapsedTimer entering;
    entering.start();
    panel.showMoment(First);
    const double enter = double(entering.nsecsElapsed()) / 1e6;
    const double moment = medianOf([&](int round) { panel.showMoment(First + (round + 1) * Period); });
    QElapsedTimer leaving;
    leaving.start();
    panel.ShowLive();
    std::printf("%-28s %10.2f %10.2f %10.2f %10.2f\n", kind.name, live, moment, enter,
                double(leaving.nsecsElapsed()) / 1e6);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const Kind kinds[] = {
        {"labels", "VB.Label", ""},
        {"labels with names and units", "VB.Label", "<SHOWLABELS>-1</SHOWLABELS>"},
        {"lights", "ZanBenchWindow.StatusLight", "<COMPARISON>&lt;</COMPARISON><COMPAREVALUE>50</COMPAREVALUE>"},
        {"value bars", "ZanBenchWindow.ValueBar", ""},
        {"check boxes", "VB.CheckBox", ""},
    };
    std::printf("%-28s %10s %10s %10s %10s\n", "1,000 of them, ms", "live scan", "a moment", "entering", "leaving");
    for (const Kind& kind : kinds)
        measure(kind);
    return 0;
}
