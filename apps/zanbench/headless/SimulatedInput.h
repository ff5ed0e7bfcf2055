#pragma once

#include <QEvent>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <deque>
#include <functional>

namespace zan::window {
class BenchWindow;
}

namespace zan::host {

/// Mouse and keyboard of a run without a screen: events as the window system would send them, to whatever lies at
/// the place. The panel may go at any of them. What was made or moved a moment ago has its widget before anything is
/// pressed.
class SimulatedInput
{
public:
    explicit SimulatedInput(window::BenchWindow& panel);

    /// Presses and releases a button (1 left, 2 right, 4 middle) at a place of the panel in pixels.
    void click(QPoint place, int button = 1);
    void doubleClick(QPoint place);
    void drag(QPoint from, QPoint to);
    /// Moves the pointer to a place, with no button down.
    void hover(QPoint place);
    /// Types each character of the text; a line feed is the Enter key, a tab the Tab key.
    void type(const QString& text);
    /// Presses and releases one key where the keyboard is.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers);
    /// The same, into whatever has the keyboard of another window, which may go at any key.
    static void typeInto(QWidget& window, const QString& text);

private:
    /// A press and what follows it. While the press is being handled the panel may follow the pointer in a loop of its
    /// own: there the rest is played from the event loop; otherwise it follows at once.
    void play(std::deque<std::function<void()>> steps);
    void mouse(QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons held);

    QWidget* keyboard() const;

    QPointer<QWidget> m_panel;
    QPointer<QWidget> m_pressed; // takes every event until its button is released
};

} // namespace zan::host
