#pragma once

#include "zanbench/PanelPages.h"

#include <QAction>
#include <QList>
#include <QMenu>
#include <QObject>

namespace zan::host {

/// The Window menu: what a right click on the surface of the panel in front offers, made of the panel's own data each
/// time it opens, and below it commands of the host.
class WindowMenu : public QObject
{
    Q_OBJECT
public:
    /// Menu, pages and commands must outlive this.
    WindowMenu(QMenu& menu, const PanelPages& pages, const QList<QAction*>& commands, QObject* parent = nullptr);

private:
    void fill();

    QMenu& m_menu;
    const PanelPages& m_pages;
    QList<QAction*> m_commands;
};

} // namespace zan::host
