#pragma once

#include <QEventLoop>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <exception>
#include <functional>

namespace zan::surface {

/// A press of the left button while it is being handled. A pointer loop follows the press that is current; without
/// one, or when its button has gone up meanwhile (a menu or a box may have swallowed that), there is nothing to follow.
class PointerPress : private QObject
{
public:
    explicit PointerPress(QPoint global);
    ~PointerPress() override;

    QPoint global() const noexcept { return m_global; }
    /// The innermost press whose button is still down; null for none.
    static const PointerPress* current() noexcept;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;

    PointerPress* m_outer;
    QPoint m_global; // where the button went down, in global pixels
    bool m_held = true;
};

/// How a pointer loop came to its end.
enum class PointerEnd {
    Released,  ///< the button went up
    Cancelled, ///< Esc was pressed
    Interrupted, ///< the place went away or was hidden, a modal window came up, the program ends, or nothing was pressed
};

/// The one nested loop behind moving, sizing and dragging: it follows the pointer from a press until the button goes
/// up. Timers, data and repaints go on meanwhile; presses, wheels, menus and keys do not get through, and Esc cancels.
/// There is one loop at a time; another one that is asked for inside it ends at once.
class PointerLoop : private QObject
{
public:
    using Moved = std::function<void(QPoint global, Qt::KeyboardModifiers modifiers)>;

    /// Follows the current press. `moved` is called with every move; what it raises ends the loop and is raised
    /// here. After the call everything that the caller does not hold may have gone, `place` included.
    static PointerEnd run(QWidget& place, const Moved& moved);
    static bool isRunning() noexcept;

private:
    PointerLoop(QWidget& place, const Moved& moved);
    ~PointerLoop() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
    bool follow(QEvent& event);
    void watchPlace(const QObject& watched, const QEvent& event);
    void moveTo(QPoint global, Qt::KeyboardModifiers modifiers);
    void finish(PointerEnd end);

    QPointer<QWidget> m_place;
    const Moved& m_moved;
    QEventLoop m_loop;
    PointerEnd m_end = PointerEnd::Interrupted;
    bool m_ended = false;
    std::exception_ptr m_error;
};

} // namespace zan::surface
