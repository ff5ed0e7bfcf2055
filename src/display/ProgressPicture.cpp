#include "display/ProgressPicture.h"

#include <QPainter>

#include <cmath>

namespace zan::display {

namespace {

const QColor BarColour(0, 0, 0x80);
const QColor PaperColour(0xff, 0xff, 0xff);

} // namespace

ProgressPicture::ProgressPicture(QWidget* parent)
    : QWidget(parent)
{
    makeImage();
}

void ProgressPicture::makeImage()
{
    const qreal scale = devicePixelRatioF();
    m_image = QImage((size() * scale).expandedTo({1, 1}), QImage::Format_RGB32);
    m_image.setDevicePixelRatio(scale);
    m_image.fill(PaperColour);
}

QString ProgressPicture::percentText(double fraction)
{
    double percent = 100;
    if (fraction == 0)
        percent = 0;
    else if (fraction < 1)
        percent = std::floor(fraction * 100 + 0.5);
    return QString::number(percent, 'f', 0) + QLatin1Char('%');
}

void ProgressPicture::draw(double fraction, const QString& text)
{
    const QString shown = text.isEmpty() ? percentText(fraction) : text;
    // Setting the back colour of a picture wipes what was drawn on it.
    m_image.fill(PaperColour);
    QPainter painter(&m_image);
    painter.setFont(font());
    // The text in the middle, over a box of paper.
    const QSizeF textSize = painter.fontMetrics().size(Qt::TextSingleLine, shown);
    const QRectF place(width() / 2.0 - textSize.width() / 2, height() / 2.0 - textSize.height() / 2,
                       textSize.width(), textSize.height());
    painter.fillRect(place, PaperColour);
    painter.setPen(BarColour);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, shown);
    // Not-xor with paper changes nothing, with the bar's colour it inverts text and paper.
    painter.setCompositionMode(QPainter::RasterOp_NotSourceXorDestination);
    if (fraction <= 0)
        painter.fillRect(QRectF(0, 0, width(), height()), PaperColour);
    else
        painter.fillRect(QRectF(0, 0, width() * fraction, height()), BarColour);
    update();
}

void ProgressPicture::paintEvent(QPaintEvent*)
{
    QPainter(this).drawImage(0, 0, m_image);
}

void ProgressPicture::resizeEvent(QResizeEvent* event)
{
    makeImage();
    QWidget::resizeEvent(event);
}

} // namespace zan::display
