#include "surface/SurfaceFixture.h"

#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/OptionButton.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/Shape.h"
#include "surface/intrinsic/TextBox.h"

#include <QApplication>
#include <QStyleFactory>

namespace zan::surface::tests {

QString testFamily()
{
    return QStringLiteral("DejaVu Sans");
}

void fixAppearance()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette palette(QColor(239, 239, 239));
    palette.setColor(QPalette::Window, QColor(240, 240, 240));
    palette.setColor(QPalette::Button, QColor(225, 225, 225));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::ButtonText, Qt::black);
    palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
    QApplication::setPalette(palette);
    QFont font(testFamily());
    font.setPixelSize(12);
    QApplication::setFont(font);
}

SurfaceTest::SurfaceTest()
    : surface(std::make_unique<Surface>())
{
    surface->addArray<Label>(QStringLiteral("Label"));
    surface->addArray<TextBox>(QStringLiteral("Text"));
    surface->addArray<CommandButton>(QStringLiteral("CommandButton"));
    surface->addArray<PictureBox>(QStringLiteral("Pic"));
    surface->addArray<CheckBox>(QStringLiteral("cbCheck"));
    surface->addArray<OptionButton>(QStringLiteral("obOption"));
    surface->addArray<Shape>(QStringLiteral("Shape"));
    surface->addArray<ProgressBar>(QStringLiteral("pbar"));
    surface->resize(600, 400);
    surface->setEvents(this);
    QObject::connect(surface.get(), &Surface::runtimeError, [this](int number) { errors.append(number); });
}

SurfaceTest::~SurfaceTest()
{
    if (surface)
        surface->setEvents(nullptr);
}

void SurfaceTest::settle()
{
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void SurfaceTest::log(const QString& what, LiveControl* control, const QString& details)
{
    QString line = what + QLatin1Char(' ');
    line +=
        control ? QStringLiteral("%1(%2)").arg(control->name()).arg(control->index()) : QStringLiteral("surface");
    events.append(details.isEmpty() ? line : line + QLatin1Char(' ') + details);
}

QStringList SurfaceTest::takeLog()
{
    return std::exchange(events, {});
}

bool SurfaceTest::mouseDown(LiveControl* control, const MouseInput& input)
{
    lastInput = input;
    log(QStringLiteral("down"), control, QString::number(input.button));
    return takePresses;
}

void SurfaceTest::mouseMove(LiveControl* control, const MouseInput& input)
{
    lastInput = input;
    if (logMoves)
        log(QStringLiteral("move"), control, QString::number(input.button));
}

void SurfaceTest::mouseUp(LiveControl* control, const MouseInput& input)
{
    lastInput = input;
    log(QStringLiteral("up"), control, QString::number(input.button));
}

bool SurfaceTest::keyDown(LiveControl* control, int keyCode, int shift)
{
    log(QStringLiteral("keydown"), control, QStringLiteral("%1/%2").arg(keyCode).arg(shift));
    return takeKeys;
}

void SurfaceTest::keyPress(LiveControl* control, int keyAscii)
{
    log(QStringLiteral("keypress"), control, QString::number(keyAscii));
}

void SurfaceTest::keyUp(LiveControl* control, int keyCode, int shift)
{
    log(QStringLiteral("keyup"), control, QStringLiteral("%1/%2").arg(keyCode).arg(shift));
}

} // namespace zan::surface::tests
