#include "zanbench/headless/SimulatedInput.h"

#include "surface/host/Surface.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace zan::host {

namespace {

Qt::MouseButton toolkitButton(int button)
{
    switch (button) {
    case 2:
        return Qt::RightButton;
    case 4:
        return Qt::MiddleButton;
    default:
        return Qt::LeftButton;
    }
}

int keyOf(QChar character)
{
    switch (character.unicode()) {
    case '\r':
    case '\n':
        return Qt::Key_Return;
    case '\t':
        return Qt::Key_Tab;
    case '\b':
        return Qt::Key_Backspace;
    case 27:
        return Qt::Key_Escape;
    default:
        return character.toUpper().unicode();
    }
}

} // namespace

SimulatedInput::SimulatedInput(surface::Surface& panel)
    : m_panel(&panel)
{
    panel.flush();
}

void SimulatedInput::mouse(QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons held)
{
    if (!m_panel)
        return;
    QWidget* target = m_pressed ? m_pressed.data() : m_panel->childAt(place);
    if (!target)
        target = m_panel;
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick) {
        m_pressed = target;
        if (target->focusPolicy() & Qt::ClickFocus)
            target->setFocus(Qt::MouseFocusReason);
    }
    const QPoint local = target->mapFrom(m_panel, place);
    QMouseEvent event(type, local, m_panel->mapToGlobal(place), button, held, Qt::NoModifier);
    QApplication::sendEvent(target, &event);
    if (type == QEvent::MouseButtonRelease)
        m_pressed = nullptr;
}

void SimulatedInput::click(QPoint place, int button)
{
    const Qt::MouseButton pressed = toolkitButton(button);
    mouse(QEvent::MouseButtonPress, place, pressed, pressed);
    mouse(QEvent::MouseButtonRelease, place, pressed, Qt::NoButton);
}

void SimulatedInput::doubleClick(QPoint place)
{
    click(place);
    mouse(QEvent::MouseButtonDblClick, place, Qt::LeftButton, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton);
}

void SimulatedInput::drag(QPoint from, QPoint to)
{
    constexpr int Steps = 8;
    mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    for (int step = 1; step <= Steps; ++step)
        mouse(QEvent::MouseMove, from + (to - from) * step / Steps, Qt::NoButton, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
}

void SimulatedInput::type(const QString& text)
{
    for (const QChar character : text) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QWidget* focused = QApplication::focusWidget();
            QWidget* target = focused ? focused : m_panel.data();
            if (!target)
                return;
            QKeyEvent event(type, keyOf(character), Qt::NoModifier, QString(character));
            QApplication::sendEvent(target, &event);
        }
    }
}

} // namespace zan::host
