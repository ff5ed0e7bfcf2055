#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QPixmap>

namespace zan::dialogs {

/// A patch of colour that a double click, or Space on the keyboard, asks to change.
class SwatchButton : public QAbstractButton
{
    Q_OBJECT
public:
    explicit SwatchButton(QWidget* parent);
    void setColour(const QColor& colour);
    const QColor& colour() const noexcept { return m_colour; }
    QSize sizeHint() const override;

Q_SIGNALS:
    void doubleClicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QColor m_colour;
};

/// A picture at its own size, or as large as the view where it is larger.
class PictureView : public QWidget
{
    Q_OBJECT
public:
    explicit PictureView(QWidget* parent);
    void setPixmap(const QPixmap& pixmap);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_pixmap;
};

} // namespace zan::dialogs
