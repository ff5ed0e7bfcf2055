#pragma once

#include <QString>

#include <cstdint>

class QComboBox;
class QHeaderView;
class QLineEdit;
class QListWidget;
class QTreeView;

namespace zan::surface::ControlOps {

/// Selects the first entry equal to the text without regard to case, else the entry `otherwise` (-1 for none).
/// An empty list stays as it is.
void SelectListItem(QComboBox& list, const QString& text, int otherwise);
void SelectListItem(QListWidget& list, const QString& text, int otherwise);

/// Appends an entry that carries a number.
void AddListItem(QComboBox& list, const QString& text, std::int32_t data);
void AddListItem(QListWidget& list, const QString& text, std::int32_t data);

/// Makes an edit field take digits only, or any character again.
void SetWindowStyleBit(QLineEdit& field, bool on);

/// Has the system move a window with the pointer, from the press that is being handled until its button goes up;
/// then the window lies where it was let go. Nothing when no button is held.
void StartWindowDrag(std::int32_t hWnd);

/// Each column fits its content and its header; the last one fills what remains of the view.
void SizeListColumns(QTreeView& view);

} // namespace zan::surface::ControlOps
