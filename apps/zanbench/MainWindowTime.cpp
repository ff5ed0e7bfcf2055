// The window's way into the past.

#include "zanbench/MainWindow.h"

#include "values/Failure.h"

namespace zan::host {

void MainWindow::connectTime()
{
    m_timeBar->hide();
    connect(m_actions.timeTravel, &QAction::toggled, this, [this](bool isOn) {
        if (isOn)
            m_time->refresh();
        else
            m_time->goLive();
        m_timeBar->setVisible(isOn);
    });
    connect(m_actions.live, &QAction::triggered, m_time, &TimeTravel::goLive);
    connect(m_time, &TimeTravel::changed, this, &MainWindow::followTime);
    connect(m_time, &TimeTravel::failed, m_errors, &ErrorBar::showError);
    followTime();
}

void MainWindow::beginTime()
{
    Ref<site::History> history;
    values::attempt([&] { history = values::given(m_site->logger()->Live())->History(); });
    m_time->begin(history);
}

void MainWindow::followTime()
{
    QString reason;
    if (!m_site)
        reason = QStringLiteral("Open a scheme first");
    else if (!m_time->isPossible())
        reason = QStringLiteral("This site keeps no history");
    m_actions.timeTravel->setEnabled(reason.isEmpty() && !m_kiosk);
    m_actions.timeTravel->setToolTip(reason.isEmpty() ? QStringLiteral("Show the panels as they were") : reason);
    m_actions.timeTravel->setStatusTip(reason);
    if (!m_actions.timeTravel->isEnabled())
        m_actions.timeTravel->setChecked(false);
    m_actions.live->setEnabled(m_time->isPast());
}

} // namespace zan::host
