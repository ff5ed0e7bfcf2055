#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QMenu;

namespace zan::surface {

struct PopupMenu;

/// One entry of a menu. An entry without a caption is a separator.
struct MenuItem
{
    QString caption; ///< '&' marks the access key
    bool checkable = false;
    bool checked = false;
    bool enabled = true;
    std::shared_ptr<PopupMenu> menu = {}; ///< of an entry that opens a further menu
    std::function<void()> choose =
        {}; ///< what the entry does; it looks itself whether what it works on is still there

    bool isSeparator() const { return caption.isEmpty(); }
};

/// A menu as data: shown as a window on a desktop, kept for being asked and chosen from where there is none.
struct PopupMenu
{
    QString name; ///< of the menu as a whole, as mnuCtlRightClick
    std::vector<MenuItem> items;
};

using ItemChosen = std::function<void(const MenuItem&)>;

/// Adds the entries to a menu of the toolkit, further menus included. `chosen` is called with the entry that the user
/// takes; what it does is the caller's to start.
void fillMenu(QMenu& shown, const std::shared_ptr<PopupMenu>& menu, const ItemChosen& chosen);

} // namespace zan::surface
