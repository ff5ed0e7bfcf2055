#include "surface/ops/ControlOps.h"

#include "surface/edit/WindowMoves.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpressionValidator>
#include <QTreeView>

#include <algorithm>

namespace zan::surface::ControlOps {

void StartWindowDrag(std::int32_t hWnd)
{
    moveWindow(hWnd);
}

void SelectListItem(QComboBox& list, const QString& text, int otherwise)
{
    for (int place = 0; place < list.count(); ++place) {
        if (list.itemText(place).compare(text, Qt::CaseInsensitive) == 0) {
            list.setCurrentIndex(place);
            return;
        }
    }
    if (list.count() > 0)
        list.setCurrentIndex(otherwise);
}

void SelectListItem(QListWidget& list, const QString& text, int otherwise)
{
    for (int place = 0; place < list.count(); ++place) {
        if (list.item(place)->text().compare(text, Qt::CaseInsensitive) == 0) {
            list.setCurrentRow(place);
            return;
        }
    }
    if (list.count() > 0)
        list.setCurrentRow(otherwise);
}

void AddListItem(QComboBox& list, const QString& text, std::int32_t data)
{
    list.addItem(text, data);
}

void AddListItem(QListWidget& list, const QString& text, std::int32_t data)
{
    auto* item = new QListWidgetItem(text, &list);
    item->setData(Qt::UserRole, data);
}

void SetWindowStyleBit(QLineEdit& field, bool on)
{
    if (on == (field.validator() != nullptr))
        return;
    static const QRegularExpression digits(QStringLiteral("[0-9]*"));
    const QValidator* before = field.validator();
    field.setValidator(on ? new QRegularExpressionValidator(digits, &field) : nullptr);
    delete before;
}

void SizeListColumns(QTreeView& view)
{
    QHeaderView* header = view.header();
    const int columns = header->count();
    int used = 0;
    for (int column = 0; column < columns; ++column) {
        view.resizeColumnToContents(column);
        const int width = std::max(view.columnWidth(column), header->sectionSizeHint(column));
        const bool last = column == columns - 1;
        header->resizeSection(column, last ? std::max(width, view.viewport()->width() - used) : width);
        used += header->sectionSize(column);
    }
}

} // namespace zan::surface::ControlOps
