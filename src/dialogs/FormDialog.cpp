#include "dialogs/FormDialog.h"

#include "dialogs/FormLayout.h"
#include "values/Twips.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QScreen>
#include <QStackedWidget>
#include <QTabWidget>

namespace zan::dialogs {

FormDialog::FormDialog(SetupForm& form, QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint)
    , m_form(form.weak_from_this())
{
    setObjectName(form.name());
    setWindowTitle(form.title());
    LaidOutForm laidOut = layOut(form, *this);
    m_widgets = std::move(laidOut.widgets);
    m_tabs = laidOut.tabs;
    if (m_tabs) {
        m_tabs->setCurrentIndex(form.tab());
        QObject::connect(m_tabs, &QTabWidget::currentChanged, this, [this](int tab) {
            if (const auto shown = m_form.lock())
                shown->userTab(tab);
        });
    }
    for (const Field& field : form.fields()) {
        if (field.isList())
            listChanged(field);
        else
            fieldChanged(field);
    }
    form.setView(this);
    fitSize();
}

FormDialog::~FormDialog()
{
    if (const auto shown = m_form.lock())
        shown->setView(nullptr);
}

FieldWidget* FormDialog::find(const Field& field) const
{
    for (const std::unique_ptr<FieldWidget>& widget : m_widgets) {
        if (widget && &widget->field() == &field)
            return widget.get();
    }
    return nullptr;
}

QWidget* FormDialog::widgetOf(const Field& field) const
{
    const FieldWidget* found = find(field);
    return found ? found->widget() : nullptr;
}

// Size ---------------------------------------------------------------------------------------------------------

/// The client area of the description, or what a large font needs.
void FormDialog::fitSize()
{
    const auto shown = m_form.lock();
    if (!shown)
        return;
    const FormDescription& description = shown->description();
    const QSize given(values::twipsToPixels(description.width), values::twipsToPixels(description.height));
    ensurePolished();
    // Every measure that a layout has kept is taken anew.
    for (QWidget* widget : findChildren<QWidget*>())
        widget->updateGeometry();
    for (QLayout* inner : findChildren<QLayout*>())
        inner->invalidate();
    layout()->invalidate();
    const QSize size = given.expandedTo(layout()->totalMinimumSize());
    if (size != minimumSize() || size != maximumSize())
        setFixedSize(size);
}

void FormDialog::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    // The fields hear of a new font or style after their window does.
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        QMetaObject::invokeMethod(this, &FormDialog::fitSize, Qt::QueuedConnection);
}

void FormDialog::showEvent(QShowEvent* event)
{
    fitSize();
    const auto shown = m_form.lock();
    if (shown && shown->description().isCentred && screen())
        move(screen()->availableGeometry().center() - frameGeometry().center() + pos());
    // The lists know only now how wide they are.
    for (const std::unique_ptr<FieldWidget>& widget : m_widgets) {
        if (widget && widget->field().kind() == FieldKind::ChannelList)
            widget->refill();
    }
    QDialog::showEvent(event);
}

// Keys and the close box ---------------------------------------------------------------------------------------

void FormDialog::keyPressEvent(QKeyEvent* event)
{
    const auto shown = m_form.lock();
    switch (event->key()) {
    case Qt::Key_Escape:
        if (shown)
            shown->userEscape();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return; // no button has the default role
    default:
        QDialog::keyPressEvent(event);
    }
}

/// The close box closes the form as Cancel does.
void FormDialog::reject()
{
    if (const auto shown = m_form.lock())
        shown->close();
    if (isVisible())
        QDialog::reject();
}

// What the form tells ------------------------------------------------------------------------------------------

void FormDialog::fieldChanged(const Field& field)
{
    FieldWidget* shown = find(field);
    if (!shown)
        return;
    shown->refresh();
    if (shown->spot)
        showFront(*shown->spot);
    if (field.kind() == FieldKind::Filter)
        narrowList(field);
}

/// Of the frames on one spot the one in front is seen, of those that are visible.
void FormDialog::showFront(QStackedWidget& spot)
{
    const FieldWidget* front = nullptr;
    for (const std::unique_ptr<FieldWidget>& widget : m_widgets) {
        if (widget && widget->spot == &spot && widget->field().isVisible() &&
            (!front || widget->field().rank() > front->field().rank()))
            front = widget.get();
    }
    if (front)
        spot.setCurrentWidget(front->widget());
    else
        spot.setCurrentIndex(0);
}

void FormDialog::listChanged(const Field& field)
{
    if (FieldWidget* shown = find(field))
        shown->refill();
}

/// A filter is for the list that follows it.
void FormDialog::narrowList(const Field& filter)
{
    bool isBehind = false;
    for (const std::unique_ptr<FieldWidget>& widget : m_widgets) {
        if (isBehind && widget && widget->field().isList())
            return widget->setFilter(filter.text());
        isBehind = isBehind || (widget && &widget->field() == &filter);
    }
}

void FormDialog::tabChanged(int tab)
{
    if (m_tabs)
        m_tabs->setCurrentIndex(tab);
}

void FormDialog::closed()
{
    done(QDialog::Rejected);
}

} // namespace zan::dialogs
