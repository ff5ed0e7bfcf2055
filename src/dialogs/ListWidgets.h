#pragma once

#include "dialogs/FieldWidget.h"

namespace zan::dialogs {

/// What shows a field that is a list.
std::unique_ptr<FieldWidget> makeListWidget(SetupForm& form, Field& field, QWidget* parent);

} // namespace zan::dialogs
