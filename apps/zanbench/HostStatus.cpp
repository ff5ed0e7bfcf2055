#include "zanbench/HostStatus.h"

#include "zanbench/LinkWords.h"

#include "site/Logger.h"

#include <QElapsedTimer>

namespace zan::host {

namespace {

constexpr int RefreshMilliseconds = 500;

QLabel* addField(QStatusBar& bar, const QString& name)
{
    auto* label = new QLabel(&bar);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText); // what a logger says is no markup
    label->setContentsMargins(8, 0, 8, 0);
    bar.addPermanentWidget(label);
    return label;
}

HostStatus::Clock steadyClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

} // namespace

HostStatus::HostStatus(Clock clock, QWidget* parent)
    : QStatusBar(parent)
    , m_clock(clock ? std::move(clock) : steadyClock())
    , m_simulated(addField(*this, QStringLiteral("simulated")))
    , m_link(addField(*this, QStringLiteral("linkState")))
    , m_age(addField(*this, QStringLiteral("dataAge")))
    , m_lock(addField(*this, QStringLiteral("lockState")))
    , m_changed(addField(*this, QStringLiteral("changes")))
{
    QPalette colours = m_simulated->palette();
    colours.setColor(QPalette::WindowText, QColor(0x9a, 0x4b, 0x00));
    m_simulated->setPalette(colours);
    m_simulated->hide();
    m_timer.setInterval(RefreshMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &HostStatus::refreshAge);
    m_timer.start();
}

void HostStatus::clearSite()
{
    m_siteOpen = false;
    m_lastData.reset();
    clearMessage();
    setSimulated(false);
    m_link->clear();
    m_age->clear();
    m_lock->clear();
    m_changed->clear();
}

void HostStatus::setLinkState(int state)
{
    m_siteOpen = true;
    m_link->setText(linkStateText(state));
    if (state != int(site::LinkState::Connecting))
        clearMessage();
    refreshAge();
}

void HostStatus::setNoLogger()
{
    m_siteOpen = true;
    m_link->setText(QStringLiteral("No logger"));
}

void HostStatus::setSimulated(bool simulated)
{
    m_simulated->setText(simulated ? QStringLiteral("Simulated logger") : QString());
    m_simulated->setToolTip(simulated ? QStringLiteral("The values are made up; no logger is asked.") : QString());
    m_simulated->setVisible(simulated);
}

void HostStatus::setProgress(const QString& text)
{
    if (text.isEmpty())
        clearMessage();
    else
        showMessage(text);
}

void HostStatus::dataArrived()
{
    m_lastData = m_clock();
    refreshAge();
}

void HostStatus::setLocked(bool locked)
{
    m_lock->setText(locked ? QStringLiteral("Locked") : QStringLiteral("Controls can be moved"));
}

void HostStatus::setChanged(bool changed)
{
    m_changed->setText(changed ? QStringLiteral("Unsaved changes") : QStringLiteral("Saved"));
}

void HostStatus::refreshAge()
{
    if (!m_siteOpen)
        return;
    m_age->setText(dataAgeText(m_lastData ? std::optional(m_clock() - *m_lastData) : std::nullopt));
}

} // namespace zan::host
