#pragma once

#include "dialogs/FormDescription.h"

/// The setup forms: one description each, in a file of its name.
namespace zan::dialogs {

extern const FormDescription frmBenchProp;
extern const FormDescription frmChannel;
extern const FormDescription frmCheckBox;
extern const FormDescription frmCmd;
extern const FormDescription frmGraph;
extern const FormDescription frmPicture;
extern const FormDescription frmProgressBar;
extern const FormDescription frmStatusLight;
extern const FormDescription frmValueBar;

} // namespace zan::dialogs
