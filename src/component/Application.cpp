#include "component/Application.h"

#include "component/Boundary.h"
#include "component/Module.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include <memory>
#include <vector>

namespace zan::component::Application {

namespace {

/// The toolkit keeps looking at these for as long as the application lives.
struct Own
{
    QByteArray words[3];
    char* arguments[4] = {};
    int count = 3;
    std::unique_ptr<QApplication> application;
    Alive alive;
};

Own* own = nullptr; // left alone at the end of a program that forgets zanEnd()
int starts = 0;
std::vector<QEventLoop*> loops; // those that are running, outermost first

/// The platforms to try, in order. The last one works everywhere: where even the desktop's fails, the toolkit would end
/// the process otherwise.
QByteArray platforms(bool wantsDisplay)
{
    QByteArray names;
    if (wantsDisplay) {
        const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
        if (!chosen.isEmpty())
            names += chosen + ';';
        if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
            names += "wayland;";
        if (qEnvironmentVariableIsSet("DISPLAY"))
            names += "xcb;";
    }
    return names + "offscreen";
}

bool choosesOffscreen()
{
    return qgetenv("QT_QPA_PLATFORM").startsWith("offscreen");
}

std::unique_ptr<Own> makeApplication(bool wantsDisplay)
{
    auto made = std::make_unique<Own>();
    made->words[0] = "zanbench";
    made->words[1] = "-platform";
    made->words[2] = platforms(wantsDisplay);
    for (int i = 0; i < made->count; ++i)
        made->arguments[i] = made->words[i].data();
    made->application = std::make_unique<QApplication>(made->count, made->arguments);
    QApplication::setQuitOnLastWindowClosed(false); // an event loop that was quit runs no more
    return made;
}

} // namespace

void start(std::int32_t how)
{
    if (how != ZAN_DESKTOP && how != ZAN_OFFSCREEN)
        values::raise(values::ErrorNumber::InvalidCall);
    if (QCoreApplication::instance()) {
        const Module::Call call; // the application and the thread are right
        ++starts;
        return;
    }
    const bool wantsDisplay = how == ZAN_DESKTOP && !choosesOffscreen();
    std::unique_ptr<Own> made = makeApplication(wantsDisplay);
    if (wantsDisplay && QApplication::platformName() == QLatin1String("offscreen"))
        fail(ZAN_E_APPLICATION, "There is no display that windows could be shown on.");
    own = made.release();
    starts = 1;
}

void end()
{
    const Module::Call call;
    if (starts == 0)
        values::raise(values::ErrorNumber::InvalidCall);
    if (starts > 1 || !own) {
        --starts;
        return;
    }
    Module::get().endBuried();
    if (!Module::get().handles().isEmpty() || !Module::get().isBuryingDone() || !loops.empty())
        fail(ZAN_E_ALIVE, "The application cannot end while there are living objects.");
    starts = 0;
    delete std::exchange(own, nullptr);
}

void processEvents(std::int32_t milliseconds)
{
    const Module::Call call;
    if (milliseconds < 0)
        values::raise(values::ErrorNumber::InvalidCall);
    Module::get().endBuried();
    QEventLoop loop;
    loops.push_back(&loop);
    if (milliseconds > 0) {
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
    } else {
        loop.processEvents();
    }
    loops.pop_back();
    Module::get().endBuried();
}

void stopEvents()
{
    const Module::Call call;
    if (loops.empty())
        values::raise(values::ErrorNumber::InvalidCall);
    loops.back()->quit();
}

} // namespace zan::component::Application
