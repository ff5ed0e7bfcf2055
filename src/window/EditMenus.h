#pragma once

#include "surface/forms/PopupMenu.h"

namespace zan::window {

class BenchWindow;

/// The menu of a right click on the panel itself: new controls, paste, properties, lock.
std::shared_ptr<surface::PopupMenu> formRightClickMenu(BenchWindow& panel);
/// The menu of a right click on a control: edit, copy, delete, send to back.
std::shared_ptr<surface::PopupMenu> controlRightClickMenu(BenchWindow& panel);

} // namespace zan::window
