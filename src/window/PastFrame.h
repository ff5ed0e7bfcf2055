#pragma once

#include <QColor>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <vector>

namespace zan::window {

class BenchWindow;

/// What tells a panel of the past from a live one, whoever looks at it and wherever its picture goes: a frame around it, a
/// stamp with the moment, and a hatched cover where a control has nothing to show. The mouse goes through it.
class PastFrame : public QWidget
{
public:
    explicit PastFrame(BenchWindow& panel);

    /// Shows this moment; the controls, and those of which nothing is stored, may be others than before.
    void show(const QString& moment);
    /// Where the stamp lies: along an edge, where it hides least.
    QRect stampRectangle() const;
    const QString& stamp() const noexcept { return m_stamp; }
    /// The places that are covered, in pixels of the panel.
    std::vector<QRect> covers() const;

    static constexpr int Thickness = 5; ///< of the frame, pixels
    static const QColor Colour;         ///< of frame and stamp
    static const QColor Ink;            ///< of lines and letters on it

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QFont stampFont() const;
    QRect seenPart() const;
    void place();
    void watchPlace();
    void placeLater();

    BenchWindow& m_panel;
    QString m_stamp;
    QRect m_stampRectangle;
    QRect m_seen;                            ///< of the panel, in its pixels
    std::vector<QPointer<QWidget>> m_around; ///< whatever the panel lies in, up to its window
    QTimer m_placing;
};

} // namespace zan::window
