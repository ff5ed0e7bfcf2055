#pragma once

#include "dialogs/SetupForm.h"

#include <QLabel>
#include <QPointer>
#include <QWidget>

#include <memory>

class QStackedWidget;

namespace zan::dialogs {

/// What shows one field in a dialog: a widget of the toolkit, and the label before it where it has one.
class FieldWidget
{
public:
    FieldWidget(SetupForm& form, Field& field)
        : m_form(form)
        , m_field(field)
    {}
    virtual ~FieldWidget() = default;
    FieldWidget(const FieldWidget&) = delete;
    FieldWidget& operator=(const FieldWidget&) = delete;

    const Field& field() const noexcept { return m_field; }
    QWidget* widget() const noexcept { return m_widget; }
    /// The label before the widget; null for those that carry their caption themselves.
    QLabel* label() const noexcept { return m_label; }
    /// Whether it takes what room there is.
    virtual bool isTall() const { return false; }
    /// Shows what the field holds.
    void refresh();
    /// The field's list has got other rows.
    virtual void refill() {}
    virtual void setFilter(const QString&) {}

    QStackedWidget* spot = nullptr; ///< of a frame that shares its place with others

protected:
    virtual void show() = 0;
    /// Names the widget for tests and screen readers, and makes its label.
    void adopt(QWidget* widget, bool hasLabel, QWidget* parent);

    SetupForm& m_form;
    Field& m_field;

private:
    QPointer<QWidget> m_widget;
    QPointer<QLabel> m_label;
};

std::unique_ptr<FieldWidget> makeFieldWidget(SetupForm& form, Field& field, QWidget* parent);

} // namespace zan::dialogs
