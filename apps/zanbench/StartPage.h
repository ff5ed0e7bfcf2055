#pragma once

#include <QListWidget>
#include <QWidget>

class QAction;

namespace zan::host {

/// What the window shows while no scheme is open: the ways to one.
class StartPage : public QWidget
{
    Q_OBJECT
public:
    /// A button for each action, in this order.
    StartPage(const QList<QAction*>& actions, QWidget* parent = nullptr);

    void setRecentFiles(const QStringList& files);

Q_SIGNALS:
    void recentFileChosen(const QString& file);

private:
    QListWidget* m_recent;
    QWidget* m_recentTitle;
};

} // namespace zan::host
