#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace zan::window {

/// "Set Channel": asks for the value to write to a channel. It is only hidden when it is done, so that its fields
/// can be read; closing it by its close box counts as cancelled.
class frmSet : public QDialog
{
public:
    explicit frmSet(QWidget* owner);

    void setChannelLabel(const QString& label);
    void setValueText(const QString& text);
    QString valueText() const;
    /// Whether the form was left without OK.
    bool cancelled() const { return m_cancelled; }

    void accept() override;
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QLabel* m_label;
    QLineEdit* m_value;
    bool m_cancelled = true;
};

} // namespace zan::window
