#pragma once

#include "dialogs/SetupForm.h"

#include <QDialog>

#include <memory>
#include <vector>

class QStackedWidget;
class QTabWidget;

namespace zan::dialogs {

class FieldWidget;

/// A setup form as a window: native widgets for its fields, laid out by their rows. It is as large as the description
/// says, or larger where the font needs more; nothing is ever cut.
class FormDialog : public QDialog, private FormView
{
    Q_OBJECT
public:
    FormDialog(SetupForm& form, QWidget* owner);
    ~FormDialog() override;

    /// The widget that stands for a field; null for a label or a frame on a spot of its own.
    QWidget* widgetOf(const Field& field) const;

    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void fieldChanged(const Field& field) override;
    void listChanged(const Field& field) override;
    void tabChanged(int tab) override;
    void closed() override;

    void fitSize();
    void showFront(QStackedWidget& spot);
    void narrowList(const Field& filter);
    FieldWidget* find(const Field& field) const;

    const std::weak_ptr<SetupForm> m_form;
    std::vector<std::unique_ptr<FieldWidget>> m_widgets; ///< one for each field, in order
    QTabWidget* m_tabs = nullptr;
};

} // namespace zan::dialogs
