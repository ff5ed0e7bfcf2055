#pragma once

#include <QString>

class QDialog;
class QWidget;

namespace zan::surface {

/// A modal form as whoever shows forms sees it. It is all there before it has a window: a run without a screen reads and
/// fills it as it is.
class ModalForm
{
public:
    virtual ~ModalForm() = default;
    /// What the form is called among the forms, as "frmChannel".
    virtual QString name() const = 0;
    virtual QString title() const = 0;
    /// The form as a window, made when it is first asked for; it belongs to the form, or to the owner where there is one.
    /// Null when it has gone with its owner.
    virtual QDialog* dialog(QWidget* owner) = 0;
    /// False once the form has been closed, by whichever of its buttons.
    virtual bool isOpen() const = 0;
    /// What its close box does.
    virtual void close() = 0;
};

} // namespace zan::surface
