#pragma once

#include <QFrame>
#include <QLabel>

namespace zan::host {

/// A line above the panel that tells of run-time errors of the panel without standing in the way: a panel that fails
/// at every scan must not bury its user in message boxes. The same error again is counted, not repeated.
class ErrorBar : public QFrame
{
    Q_OBJECT
public:
    explicit ErrorBar(QWidget* parent = nullptr);

    void showError(const QString& text);
    void dismiss();

private:
    QLabel* m_label;
    QString m_text;
    int m_count = 0;
};

} // namespace zan::host
