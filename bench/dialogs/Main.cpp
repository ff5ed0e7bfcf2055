// What a big scheme costs in front of a setup form: opening it until it is painted, narrowing its list by a letter, a
// page of scrolling. Each figure stands beside its aim. Times are medians of processor time, which other programs on the
// machine disturb least.

#include "BenchSite.h"

#include "dialogs/SetupForm.h"
#include "surface/forms/RecordingForms.h"
#include "window/BenchWindow.h"
#include "window/PanelEditor.h"
#include "window/PanelSetup.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

using namespace zan;
using dialogs::SetupForm;
using values::Ref;
using values::Variant;

namespace {

constexpr int Rounds = 9;
constexpr double OpenAim = 150; ///< ms, for 10,000 channels
constexpr double FrameAim = 16; ///< ms: what a person sees as at once

/// Processor time of the program so far, in milliseconds.
double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

double timeOf(const std::function<void()>& work)
{
    const double start = processorTime();
    work();
    return processorTime() - start;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void paintPending()
{
    for (int turn = 0; turn < 3; ++turn)
        QCoreApplication::processEvents();
}

/// A window of so many channels, and one with a control for each form; the last of the channels is the bound one.
void writeScheme(const QString& path, int channels)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        std::exit(1);
    }
    QByteArray text = "<SCHEME><NAME>Bench</NAME><WINDOW><KEY>RTD</KEY>";
    for (int place = 0; place < channels; ++place)
        text +=
            QStringLiteral("<CHANNEL><KEY>C%1</KEY><LABEL>Channel %1</LABEL><UNITS>m</UNITS><FORMAT>0.00</FORMAT>"
                           "<BASEADDRESS>%2</BASEADDRESS><DATATYPE>2</DATATYPE></CHANNEL>")
                .arg(place)
                .arg(place * 2)
                .toUtf8();
    text += "</WINDOW><WINDOW><KEY>MAIN</KEY>";
    for (const char* type : {"VB.Label", "VB.CheckBox", "ZanBenchWindow.ValueBar"})
        text += QStringLiteral("<CONTROL><TYPE>%1</TYPE><BINDTO>RTD|C%2</BINDTO></CONTROL>")
                    .arg(QLatin1String(type))
                    .arg(channels - 1)
                    .toUtf8();
    file.write(text + "</WINDOW></SCHEME>");
}

struct Figures
{
    double open = 0;
    double filter = 0;
    double scroll = 0;
};

class Panel
{
public:
    Panel(const QString& path, int channels)
    {
        writeScheme(path, channels);
        m_scheme = trellis::SchemeFile::open(path).scheme;
        m_panel.setForms(&m_forms);
        m_panel.InitProperties();
        m_panel.setShowSiteMap(false);
        m_panel.setLogger(values::make<bench::BenchLogger>(m_scheme));
        m_panel.LoadWindow(QStringLiteral("MAIN"));
        m_panel.show();
        paintPending();
    }

    Figures measure(int place, const QString& list)
    {
        std::vector<double> opened, filtered, scrolled;
        for (int round = 0; round < Rounds; ++round) {
            const double start = processorTime();
            m_forms.onForm = [&](surface::ModalForm& shown) {
                auto& form = static_cast<SetupForm&>(shown);
                QDialog* dialog = form.dialog(nullptr);
                dialog->show();
                paintPending();
                opened.push_back(processorTime() - start);
                auto* view = dialog->findChild<QAbstractItemView*>(list);
                scrolled.push_back(timeOf([view] {
                    view->verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepSub);
                    paintPending();
                }));
                filtered.push_back(timeOf([&form] {
                    form.userText(form.field(u"txtFilter"), QStringLiteral("9"));
                    paintPending();
                }));
            };
            const Ref<wrappers::iBenchControl> control = m_panel.Controls()->Control(Variant(place));
            m_panel.edit([&](window::PanelEditor&) { m_panel.setup().edit(control); });
        }
        return {median(opened), median(filtered), median(scrolled)};
    }

private:
    surface::RecordingForms m_forms;
    Ref<trellis::SchemeFile> m_scheme;
    window::BenchWindow m_panel;
};

struct Form
{
    const char* name;
    int place;
    const char* list;
};

constexpr Form forms[] = {
    {"frmChannel", 1, "lboChannels"}, {"frmCheckBox", 2, "lvChannels"}, {"frmValueBar", 3, "lvChannels"}};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTemporaryDir folder;
    std::printf("processor time in ms; aims at 10,000 channels: open %.0f, filter and scroll %.0f\n", OpenAim,
                FrameAim);
    std::printf("%-12s %9s %10s %10s %10s\n", "form", "channels", "open", "filter", "scroll");
    bool isMet = true;
    for (const int channels : {100, 1'000, 10'000}) {
        Panel panel(folder.filePath(QStringLiteral("%1.scheme").arg(channels)), channels);
        for (const Form& form : forms) {
            const Figures figures = panel.measure(form.place, QString::fromLatin1(form.list));
            std::printf("%-12s %9d %10.2f %10.2f %10.2f\n", form.name, channels, figures.open, figures.filter,
                        figures.scroll);
            isMet = isMet && figures.open < OpenAim && figures.filter < FrameAim && figures.scroll < FrameAim;
        }
    }
    std::printf("%s\n", isMet ? "all aims are met" : "an aim is missed");
    return 0;
}
