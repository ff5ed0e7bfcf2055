#include "zanbench/KioskBar.h"

#include <QHBoxLayout>
#include <QSignalBlocker>

namespace zan::host {

KioskBar::KioskBar(QWidget* parent)
    : QWidget(parent)
    , m_tabs(new QTabBar(this))
    , m_simulated(new QLabel(QStringLiteral("Simulated logger"), this))
{
    setObjectName(QStringLiteral("kioskBar"));
    m_tabs->setObjectName(QStringLiteral("kioskTabs"));
    m_tabs->setShape(QTabBar::RoundedSouth);
    m_tabs->setDrawBase(false);
    m_tabs->setUsesScrollButtons(true);
    m_tabs->setAccessibleName(QStringLiteral("Windows of the scheme"));
    m_simulated->setObjectName(QStringLiteral("kioskSimulated"));
    m_simulated->setContentsMargins(8, 0, 8, 0);
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int place) {
        if (place >= 0 && place < m_keys.size())
            Q_EMIT windowChosen(QString(m_keys[place])); // the list may be another one afterwards
    });
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_tabs, 1);
    row->addWidget(m_simulated);
    follow();
}

void KioskBar::setWindows(const QStringList& keys, int shown)
{
    const QSignalBlocker blocker(m_tabs);
    if (keys != m_keys) {
        m_keys = keys;
        while (m_tabs->count() > 0)
            m_tabs->removeTab(0);
        for (QString key : keys)
            m_tabs->addTab(key.replace(QLatin1Char('&'), QLatin1String("&&"))); // no shortcut
    }
    m_tabs->setCurrentIndex(shown);
    follow();
}

void KioskBar::setSimulated(bool simulated)
{
    m_isSimulated = simulated;
    follow();
}

void KioskBar::setActive(bool active)
{
    m_isActive = active;
    follow();
}

void KioskBar::follow()
{
    m_tabs->setVisible(m_keys.size() > 1);
    m_simulated->setVisible(m_isSimulated);
    setVisible(m_isActive && (m_keys.size() > 1 || m_isSimulated));
}

} // namespace zan::host
