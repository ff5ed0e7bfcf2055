#include "component/Module.h"

#include "component/Boundary.h"

#include <QApplication>
#include <QThread>

#include <algorithm>

namespace zan::component {

Module::Call::ThreadCheck::ThreadCheck()
{
    const QCoreApplication* application = QCoreApplication::instance();
    if (!application)
        fail(ZAN_E_APPLICATION, "There is no application object: call zanStart first.");
    if (application->thread() != QThread::currentThread())
        fail(ZAN_E_THREAD, "Objects can be reached from the thread of the user interface only.");
    if (!qobject_cast<const QApplication*>(application))
        fail(ZAN_E_APPLICATION, "The application object of this process is one without windows.");
}

Module& Module::get()
{
    static Module module;
    return module;
}

Module::Module()
{
    qAddPostRoutine(&Module::applicationEnds);
}

Module::~Module()
{
    qRemovePostRoutine(&Module::applicationEnds);
    // What a program has never let go is left alone: it stands on libraries that may have ended before us.
    if (!m_handles.isEmpty())
        static_cast<void>(new Handles(std::move(m_handles)));
}

/// No object outlives the application that it was made for, whoever forgot to let it go.
void Module::applicationEnds()
{
    Module& module = get();
    module.m_handles.clear();
    const auto buried = std::move(module.m_buried);
    module.m_buried.clear();
    for (const QPointer<QWidget>& window : buried)
        delete window.data();
}

void Module::bury(QWidget* window)
{
    if (m_depth <= 1) {
        delete window;
        return;
    }
    window->hide();
    m_buried.emplace_back(window);
    window->deleteLater();
}

void Module::endBuried()
{
    if (m_depth > 1)
        return;
    const auto buried = std::move(m_buried);
    m_buried.clear();
    for (const QPointer<QWidget>& window : buried)
        delete window.data();
}

bool Module::isBuryingDone() const
{
    return std::all_of(m_buried.begin(), m_buried.end(), [](const auto& window) { return window.isNull(); });
}

} // namespace zan::component
