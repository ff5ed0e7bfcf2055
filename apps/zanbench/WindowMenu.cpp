#include "zanbench/WindowMenu.h"

#include "window/BenchWindow.h"
#include "window/EditMenus.h"

namespace zan::host {

WindowMenu::WindowMenu(QMenu& menu, const PanelPages& pages, const QList<QAction*>& commands, QObject* parent)
    : QObject(parent)
    , m_menu(menu)
    , m_pages(pages)
    , m_commands(commands)
{
    connect(&menu, &QMenu::aboutToShow, this, &WindowMenu::fill);
    fill();
}

void WindowMenu::fill()
{
    m_menu.clear();
    // Further menus are no entries of their own: clearing leaves them.
    for (QMenu* further : m_menu.findChildren<QMenu*>(Qt::FindDirectChildrenOnly))
        further->deleteLater();
    window::BenchWindow* panel = m_pages.currentPanel();
    if (panel && panel->Controls()) {
        surface::fillMenu(m_menu, window::formRightClickMenu(*panel), [](const surface::MenuItem& item) {
            if (item.choose)
                item.choose();
        });
        m_menu.addSeparator();
    }
    m_menu.addActions(m_commands);
}

} // namespace zan::host
