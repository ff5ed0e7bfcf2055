#include "zanbench/headless/SimulatedInput.h"

#include "window/BenchWindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>

#include <memory>

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

SimulatedInput::SimulatedInput(window::BenchWindow& panel)
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

namespace {

using Steps = std::deque<std::function<void()>>;

void playNext(QObject& context, const std::shared_ptr<Steps>& steps)
{
    QTimer::singleShot(0, &context, [&context, steps] {
        if (steps->empty())
            return;
        const auto step = std::move(steps->front());
        steps->pop_front();
        playNext(context, steps);
        step();
    });
}

} // namespace

void SimulatedInput::play(Steps steps)
{
    const auto press = std::move(steps.front());
    steps.pop_front();
    const auto rest = std::make_shared<Steps>(std::move(steps));
    QObject context; // ends the playing from the event loop when the press has been handled
    playNext(context, rest);
    press();
    while (!rest->empty()) {
        const auto step = std::move(rest->front());
        rest->pop_front();
        step();
    }
}

void SimulatedInput::click(QPoint place, int button)
{
    const Qt::MouseButton pressed = toolkitButton(button);
    play({[=, this] { mouse(QEvent::MouseButtonPress, place, pressed, pressed); },
          [=, this] { mouse(QEvent::MouseButtonRelease, place, pressed, Qt::NoButton); }});
}

void SimulatedInput::doubleClick(QPoint place)
{
    click(place);
    play({[=, this] { mouse(QEvent::MouseButtonDblClick, place, Qt::LeftButton, Qt::LeftButton); },
          [=, this] { mouse(QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton); }});
}

void SimulatedInput::drag(QPoint from, QPoint to)
{
    constexpr int Moves = 8;
    Steps steps{[=, this] { mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton); }};
    for (int step = 1; step <= Moves; ++step) {
        const QPoint place = from + (to - from) * step / Moves;
        steps.push_back([=, this] { mouse(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton); });
    }
    steps.push_back([=, this] { mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton); });
    play(std::move(steps));
}

void SimulatedInput::hover(QPoint place)
{
    mouse(QEvent::MouseMove, place, Qt::NoButton, Qt::NoButton);
}

namespace {

/// Types into whatever `target` says, asked for each event; until it says nothing.
template <class Target>
void typeWhere(const QString& text, Target target)
{
    for (const QChar character : text) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QWidget* receiver = target();
            if (!receiver)
                return;
            QKeyEvent event(type, keyOf(character), Qt::NoModifier, QString(character));
            QApplication::sendEvent(receiver, &event);
        }
    }
}

} // namespace

/// Where nobody has the keyboard the panel is given it, as a user does who turns to its window.
QWidget* SimulatedInput::keyboard() const
{
    if (!QApplication::focusWidget() && m_panel) {
        m_panel->activateWindow();
        m_panel->setFocus();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    QWidget* focused = QApplication::focusWidget();
    return focused ? focused : m_panel.data();
}

void SimulatedInput::type(const QString& text)
{
    typeWhere(text, [this] { return keyboard(); });
}

void SimulatedInput::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QWidget* receiver = keyboard();
        if (!receiver)
            return;
        QKeyEvent event(type, key, modifiers);
        QApplication::sendEvent(receiver, &event);
    }
}

void SimulatedInput::typeInto(QWidget& window, const QString& text)
{
    typeWhere(text, [alive = QPointer<QWidget>(&window)]() -> QWidget* {
        if (!alive || !alive->isVisible())
            return nullptr;
        QWidget* focused = alive->focusWidget();
        return focused ? focused : alive.data();
    });
}

} // namespace zan::host
