#include "dialogs/ListWidgets.h"

#include "dialogs/RowsModel.h"
#include "surface/ops/ControlOps.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>
#include <QTreeView>

#include <utility>

namespace zan::dialogs {

namespace {

/// A list that unfolds; the rows stay where the field has them.
class ComboWidget : public FieldWidget
{
public:
    ComboWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_combo(new QComboBox(parent))
        , m_rows(new RowsModel(field, m_combo))
    {
        m_combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        m_combo->setMinimumContentsLength(4);
        m_combo->setEditable(field.kind() == FieldKind::ComboBox);
        m_combo->setInsertPolicy(QComboBox::NoInsert);
        m_combo->setModel(m_rows);
        m_combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        if (auto* list = qobject_cast<QListView*>(m_combo->view()))
            list->setUniformItemSizes(true); // a long list unfolds at once
        adopt(m_combo, true, parent);
        QObject::connect(m_combo, &QComboBox::activated, m_combo, [this](int index) {
            m_form.userSelect(m_field, index);
            refresh();
        });
        if (m_combo->isEditable())
            QObject::connect(m_combo->lineEdit(), &QLineEdit::textEdited, m_combo,
                             [this](const QString& text) { m_form.userText(m_field, text); });
    }
    void refill() override
    {
        const QSignalBlocker silent(m_combo);
        m_rows->refill();
        refresh();
    }

private:
    void show() override
    {
        const QSignalBlocker silent(m_combo);
        m_combo->setCurrentIndex(m_field.listIndex());
        if (m_combo->isEditable() && m_combo->currentText() != m_field.text())
            m_combo->setEditText(m_field.text());
    }
    QComboBox* m_combo;
    RowsModel* m_rows;
};

/// A list that stands open: plain, or with icons and two columns.
class ViewWidget : public FieldWidget
{
public:
    ViewWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
    {
        if (field.kind() == FieldKind::ChannelList)
            m_tree = makeTree(parent);
        else
            m_view = makeList(parent);
        m_rows = new RowsModel(field, m_view);
        m_view->setModel(m_rows);
        m_view->setSelectionMode(QAbstractItemView::SingleSelection);
        m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        m_view->setTabKeyNavigation(false);
        m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        m_view->setMinimumHeight(4 * m_view->fontMetrics().lineSpacing());
        adopt(m_view, true, parent);
        QObject::connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, m_view,
                         [this](const QModelIndex& current) { chosen(current.row()); });
        QObject::connect(m_view, &QAbstractItemView::clicked, m_view, [this](const QModelIndex& index) {
            if (m_rows->fieldRow(index.row()) != m_field.listIndex())
                chosen(index.row()); // a click on a row that has the keyboard already but is not the chosen one
        });
    }
    bool isTall() const override { return true; }
    void refill() override
    {
        showing([this] { m_rows->refill(); });
        refresh();
        if (m_tree)
            surface::ControlOps::SizeListColumns(*m_tree);
    }
    void setFilter(const QString& text) override
    {
        showing([this, &text] { m_rows->setFilter(text); });
        refresh();
    }

private:
    QTreeView* makeTree(QWidget* parent)
    {
        auto* tree = new QTreeView(parent);
        tree->setRootIsDecorated(false);
        tree->setItemsExpandable(false);
        tree->setUniformRowHeights(true);
        tree->setAllColumnsShowFocus(true);
        tree->setIconSize({16, 16});
        tree->header()->setSectionsMovable(false);
        tree->header()->setStretchLastSection(true);
        m_view = tree;
        return tree;
    }
    static QListView* makeList(QWidget* parent)
    {
        auto* list = new QListView(parent);
        list->setUniformItemSizes(true);
        return list;
    }
    void chosen(int seenRow)
    {
        const int row = m_rows->fieldRow(seenRow);
        if (row < 0 || m_isShowing)
            return;
        m_form.userSelect(m_field, row);
        refresh();
    }
    void show() override
    {
        const int row = m_rows->seenRow(m_field.listIndex());
        const QModelIndex index = row < 0 ? QModelIndex() : m_rows->index(row, 0);
        if (m_view->currentIndex().row() == row && m_view->selectionModel()->isRowSelected(row))
            return;
        showing([&] {
            m_view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                                 QItemSelectionModel::Rows);
            if (index.isValid())
                m_view->scrollTo(index);
        });
    }
    /// What the view is told is nobody's choice.
    template <class Change>
    void showing(Change&& change)
    {
        const bool before = std::exchange(m_isShowing, true);
        change();
        m_isShowing = before;
    }

    QAbstractItemView* m_view = nullptr;
    QTreeView* m_tree = nullptr;
    RowsModel* m_rows = nullptr;
    bool m_isShowing = false;
};

} // namespace

std::unique_ptr<FieldWidget> makeListWidget(SetupForm& form, Field& field, QWidget* parent)
{
    switch (field.kind()) {
    case FieldKind::ListBox:
    case FieldKind::ChannelList:
        return std::make_unique<ViewWidget>(form, field, parent);
    default:
        return std::make_unique<ComboWidget>(form, field, parent);
    }
}

} // namespace zan::dialogs
