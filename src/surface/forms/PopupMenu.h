#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <vector>

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

} // namespace zan::surface
