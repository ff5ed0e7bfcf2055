#pragma once

#include <QFrame>
#include <QLabel>

namespace zan::host {

/// A line over the lower edge of a widget that tells of run-time errors without standing in the way: a panel that
/// fails at every scan must not bury its user in message boxes. The same error again is counted, not repeated. It lies
/// over the widget, which keeps its place: what somebody is about to click does not move away below the pointer.
class ErrorBar : public QFrame
{
    Q_OBJECT
public:
    /// Over this widget, as wide as it is.
    explicit ErrorBar(QWidget* over = nullptr);

    /// A run-time error as the host words it.
    static QString numbered(int number, const QString& description);

    void showError(const QString& text);
    void dismiss();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();

    QLabel* m_label;
    QString m_text;
    int m_count = 0;
};

} // namespace zan::host
