#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

namespace zan::display {

/// A bar with its percentage as text, the text inverted where the bar covers it.
class ProgressPicture : public QWidget
{
public:
    explicit ProgressPicture(QWidget* parent);

    /// Draws the bar anew for a fraction (1 is full). Without a text of its own the bar says
    /// the rounded percentage, at most 100.
    void draw(double fraction, const QString& text = {});
    /// What the bar says at a fraction.
    static QString percentText(double fraction);
    const QImage& image() const { return m_image; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeImage();

    QImage m_image;
};

} // namespace zan::display
