#pragma once

#include <QLabel>
#include <QTabBar>
#include <QWidget>

namespace zan::host {

/// The line below a kiosk's panel: a tab for each window of the scheme, and the mark of a simulated logger. Nothing
/// is shown of it that is not needed.
class KioskBar : public QWidget
{
    Q_OBJECT
public:
    explicit KioskBar(QWidget* parent = nullptr);

    /// The windows and which of them is shown; -1 for none.
    void setWindows(const QStringList& keys, int shown);
    void setSimulated(bool simulated);
    /// Outside a kiosk the line is hidden.
    void setActive(bool active);

Q_SIGNALS:
    void windowChosen(const QString& key);

private:
    void follow();

    QTabBar* m_tabs;
    QLabel* m_simulated;
    QStringList m_keys;
    bool m_isActive = false;
    bool m_isSimulated = false;
};

} // namespace zan::host
