#pragma once

#include "dialogs/FieldWidget.h"

#include <vector>

class QDialog;
class QTabWidget;

namespace zan::dialogs {

/// The widgets of a form, laid out by its rows.
struct LaidOutForm
{
    std::vector<std::unique_ptr<FieldWidget>> widgets; ///< one for each field, in order
    QTabWidget* tabs = nullptr;                        ///< null for a form without
};

LaidOutForm layOut(SetupForm& form, QDialog& dialog);

} // namespace zan::dialogs
