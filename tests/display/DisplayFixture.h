#pragma once

#include "display/FlashClock.h"
#include "surface/host/ControlArray.h"
#include "surface/host/Surface.h"
#include "values/Twips.h"

#include <QColor>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

/// What tests of the display controls share: a surface to put one on, time to turn by hand, and a picture to draw the
/// expectation in.
namespace zan::test {

/// Time that goes by when the test says so.
class FakeTime
{
public:
    FakeTime()
    {
        display::FlashClock::shared().setTimeSource([this] { return m_now; });
    }
    ~FakeTime() { display::FlashClock::shared().setTimeSource(); }
    FakeTime(const FakeTime&) = delete;
    FakeTime& operator=(const FakeTime&) = delete;

    /// Lets time go by and serves whoever waited for it.
    void pass(std::int64_t milliseconds)
    {
        m_now += milliseconds;
        display::FlashClock::shared().serve();
    }

private:
    std::int64_t m_now = 5'000'000;
};

inline constexpr values::Colour Backdrop = values::rgb(10, 200, 220);

/// A surface with one control of a type at (7, 5).
template <class Control>
class Stage
{
public:
    static constexpr int Left = 7, Top = 5;

    explicit Stage(QSize size = {60, 20})
    {
        surface.setBackColor(Backdrop);
        surface.addArray<Control>(QStringLiteral("Control"));
        control = values::Ref<Control>(static_cast<Control*>(surface.array(u"Control")->item(1).get()));
        control->setVisible(true);
        resize(size);
    }
    void resize(QSize size)
    {
        surface.resize(size + QSize(20, 20));
        control->move(values::pixelsToTwips(Left), values::pixelsToTwips(Top), values::pixelsToTwips(size.width()),
                      values::pixelsToTwips(size.height()));
    }
    /// The whole surface at a scale.
    QImage picture(int scale = 1)
    {
        QImage image(surface.size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        surface.render(&image);
        return image;
    }
    /// Colour of a pixel of the control.
    QColor pixel(int x, int y) { return picture().pixelColor(Left + x, Top + y); }

    surface::Surface surface;
    values::Ref<Control> control;
};

/// A picture drawn pixel by pixel. What lies outside the window is not drawn.
class Canvas
{
public:
    Canvas(QImage& image, const QRect& window)
        : m_painter(&image)
        , m_window(window)
    {}

    void pixel(int x, int y, const QColor& colour)
    {
        const QRect place(m_window.left() + x, m_window.top() + y, 1, 1);
        if (m_window.contains(place))
            m_painter.fillRect(place, colour);
    }
    /// Every pixel of a box, both corners included, whatever their order.
    void box(int x1, int y1, int x2, int y2, const QColor& colour)
    {
        // Far outside there is nothing to see.
        const auto near = [](int place) { return std::clamp(place, -2000, 2000); };
        for (int y = near(std::min(y1, y2)); y <= near(std::max(y1, y2)); ++y)
            for (int x = near(std::min(x1, x2)); x <= near(std::max(x1, x2)); ++x)
                pixel(x, y, colour);
    }
    /// The four sides of a box.
    void frame(int x1, int y1, int x2, int y2, const QColor& colour)
    {
        box(x1, y1, x2, y1, colour);
        box(x1, y1, x1, y2, colour);
        box(x1, y2, x2, y2, colour);
        box(x2, y1, x2, y2, colour);
    }
    QPainter& painter() { return m_painter; }
    const QRect& window() const { return m_window; }

private:
    QPainter m_painter;
    QRect m_window;
};

/// A picture of the backdrop, of a stage's size.
inline QImage backdrop(QSize size, int scale)
{
    QImage image(size * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(QColor(10, 200, 220));
    return image;
}

/// Where two pictures of one size differ first, or an empty text.
inline std::string firstDifference(const QImage& shown, const QImage& expected)
{
    if (shown.size() != expected.size())
        return "sizes differ";
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            if (shown.pixel(x, y) != expected.pixel(x, y)) {
                return QStringLiteral("pixel %1, %2 is %3 instead of %4")
                    .arg(x)
                    .arg(y)
                    .arg(shown.pixelColor(x, y).name(), expected.pixelColor(x, y).name())
                    .toStdString();
            }
        }
    }
    return {};
}

} // namespace zan::test
