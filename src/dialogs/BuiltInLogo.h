#pragma once

#include "surface/host/Picture.h"

namespace zan::dialogs {

/// The program's own logo, which a picture control shows for the file name "DEFAULT".
values::Ref<surface::Picture> builtInLogo();

} // namespace zan::dialogs
