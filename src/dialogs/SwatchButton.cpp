#include "dialogs/SwatchButton.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

namespace zan::dialogs {

SwatchButton::SwatchButton(QWidget* parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SwatchButton::setColour(const QColor& colour)
{
    m_colour = colour;
    // A colour is nothing to a screen reader but its numbers.
    setAccessibleDescription(
        tr("red %1, green %2, blue %3").arg(colour.red()).arg(colour.green()).arg(colour.blue()));
    update();
}

QSize SwatchButton::sizeHint() const
{
    const int line = fontMetrics().height();
    return {3 * line, line + 6};
}

void SwatchButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect frame = rect().adjusted(2, 2, -3, -3);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(isEnabled() ? m_colour : palette().color(QPalette::Window));
    painter.drawRect(frame);
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void SwatchButton::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT doubleClicked();
}

void SwatchButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Select)
        Q_EMIT doubleClicked();
    else
        event->ignore();
}

PictureView::PictureView(QWidget* parent)
    : QWidget(parent)
{
    setMinimumSize(120, 80);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PictureView::setPixmap(const QPixmap& pixmap)
{
    m_pixmap = pixmap;
    update();
}

void PictureView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (m_pixmap.isNull())
        return;
    const QRect inside = rect().adjusted(1, 1, -1, -1);
    QSize size = m_pixmap.size();
    if (size.width() > inside.width() || size.height() > inside.height())
        size.scale(inside.size(), Qt::KeepAspectRatio);
    painter.drawPixmap(QRect(inside.topLeft(), size), m_pixmap);
}

} // namespace zan::dialogs
