#include "window/EditMenus.h"

#include "window/BenchWindow.h"
#include "window/ControlFactory.h"
#include "window/PanelEditor.h"
#include "window/PanelSetup.h"

#include <QPointer>

namespace zan::window {

using surface::MenuItem;
using surface::PopupMenu;

namespace {

/// An entry that calls a command of the panel's editor; nothing when the panel has gone meanwhile. What the command
/// raises is the host's.
MenuItem entry(BenchWindow& panel, const char16_t* caption, std::function<void(PanelEditor&)> command)
{
    MenuItem item{.caption = QString::fromUtf16(caption)};
    item.choose = [alive = QPointer<BenchWindow>(&panel), command = std::move(command)] {
        if (alive)
            alive->edit(command);
    };
    return item;
}

std::shared_ptr<PopupMenu> newControlMenu(BenchWindow& panel)
{
    auto menu = std::make_shared<PopupMenu>();
    menu->name = QStringLiteral("mnuNewControl");
    for (const NewControlMenuItem& type : panel.newControlMenu()) {
        MenuItem item =
            entry(panel, u"", [key = type.typeKey.toString()](PanelEditor& editor) { editor.newControl(key); });
        item.caption = type.caption.toString();
        menu->items.push_back(std::move(item));
    }
    return menu;
}

} // namespace

std::shared_ptr<PopupMenu> formRightClickMenu(BenchWindow& panel)
{
    auto menu = std::make_shared<PopupMenu>();
    menu->name = QStringLiteral("mnuFormRightClick");
    menu->items.push_back({.caption = QStringLiteral("&Add"), .menu = newControlMenu(panel)});
    menu->items.push_back(entry(panel, u"&Paste", &PanelEditor::paste));
    menu->items.push_back(entry(panel, u"&Properties", [&panel](PanelEditor&) { panel.setup().editWindow(); }));
    MenuItem lock = entry(panel, u"&Lock Positions", &PanelEditor::toggleLockPositions);
    lock.checkable = true;
    lock.checked = panel.LockPositions();
    menu->items.push_back(std::move(lock));
    return menu;
}

std::shared_ptr<PopupMenu> controlRightClickMenu(BenchWindow& panel)
{
    auto menu = std::make_shared<PopupMenu>();
    menu->name = QStringLiteral("mnuCtlRightClick");
    menu->items.push_back(
        entry(panel, u"&Edit", [&panel](PanelEditor& editor) { panel.setup().edit(editor.currentControl()); }));
    menu->items.push_back(entry(panel, u"&Copy", &PanelEditor::copy));
    menu->items.push_back({});
    menu->items.push_back(entry(panel, u"&Delete", &PanelEditor::remove));
    menu->items.push_back(entry(panel, u"&Send to Back", &PanelEditor::sendToBack));
    return menu;
}

} // namespace zan::window
