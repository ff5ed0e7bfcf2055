#include "surface/forms/PopupMenu.h"

#include <QMenu>

namespace zan::surface {

void fillMenu(QMenu& shown, const std::shared_ptr<PopupMenu>& menu, const ItemChosen& chosen)
{
    for (std::size_t place = 0; place < menu->items.size(); ++place) {
        const MenuItem& item = menu->items[place];
        if (item.isSeparator()) {
            shown.addSeparator();
            continue;
        }
        QAction* action = nullptr;
        if (item.menu) {
            QMenu* further = shown.addMenu(item.caption);
            fillMenu(*further, item.menu, chosen);
            action = further->menuAction();
        } else {
            action = shown.addAction(item.caption);
            // What is chosen may make the menu anew: the entry is held until it has run.
            QObject::connect(action, &QAction::triggered, &shown,
                             [menu, place, chosen] { chosen(menu->items[place]); });
        }
        action->setCheckable(item.checkable);
        action->setChecked(item.checked);
        action->setEnabled(item.enabled);
    }
}

} // namespace zan::surface
