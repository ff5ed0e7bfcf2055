#pragma once

#include "surface/host/ControlArray.h"
#include "surface/host/Surface.h"

#include <QImage>
#include <QString>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <vector>

/// Texts as text in failure messages.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

namespace zan::surface::tests {

/// Style, palette and font that every test sees, whatever the machine has.
void fixAppearance();

/// A Latin family that the tests may count on.
QString testFamily();

/// A surface with every array of this folder, named as on a panel, and what it told its owner.
class SurfaceTest : public testing::Test, public SurfaceEvents
{
protected:
    SurfaceTest();
    ~SurfaceTest() override;

    /// The template of the array, placed at pixels and shown.
    template <class Control>
    Ref<Control> show(const QString& array, const QRect& pixels)
    {
        return showElement<Control>(array, ControlArray::TemplateIndex, pixels);
    }
    /// A further element, loaded first.
    template <class Control>
    Ref<Control> showNew(const QString& array, const QRect& pixels)
    {
        ControlArray* elements = surface->array(array);
        const int index = elements->uBound() + 1;
        elements->load(index);
        return showElement<Control>(array, index, pixels);
    }
    /// Lets the event loop run until nothing waits.
    static void settle();
    QImage picture() { return surface->grab().toImage(); }
    QColor pixel(int x, int y) { return picture().pixelColor(x, y); }

    void clicked(LiveControl* control) override { log("click", control); }
    void doubleClicked(LiveControl* control) override { log("double", control); }
    bool mouseDown(LiveControl* control, const MouseInput& input) override;
    void mouseMove(LiveControl* control, const MouseInput& input) override;
    void mouseUp(LiveControl* control, const MouseInput& input) override;
    void gotFocus(LiveControl* control) override { log("focus", control); }
    bool keyDown(LiveControl* control, int keyCode, int shift) override;
    bool wantsKey(int, int) override { return takeKeys; }
    void keyPress(LiveControl* control, int keyAscii) override;
    void keyUp(LiveControl* control, int keyCode, int shift) override;
    void textChanged(LiveControl& control) override { log("text", &control); }

    void log(const QString& what, LiveControl* control, const QString& details = {});
    /// What was logged since the last call.
    QStringList takeLog();

    std::unique_ptr<Surface> surface;
    QStringList events;
    MouseInput lastInput;
    bool takePresses = false;
    bool takeKeys = false;
    bool logMoves = false;
    QList<int> errors;

private:
    template <class Control>
    Ref<Control> showElement(const QString& array, int index, const QRect& pixels)
    {
        Ref<Control> control(static_cast<Control*>(surface->array(array)->item(std::int16_t(index)).get()));
        control->move(float(pixels.x() * 15), float(pixels.y() * 15), float(pixels.width() * 15),
                      float(pixels.height() * 15));
        control->setVisible(true);
        return control;
    }
};

} // namespace zan::surface::tests
