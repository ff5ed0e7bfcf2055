#pragma once

#include "dialogs/FormDescription.h"

/// The setup forms: one description each, in a file of its name.
namespace zan::dialogs {

extern const FormDescription frmCheckBox;

} // namespace zan::dialogs
