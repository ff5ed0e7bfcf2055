#pragma once

#include <QMainWindow>
#include <QObject>

namespace zan::host {

/// Keeps the program's window, frame included, on the screen: when it is shown, when it first has its frame, and when
/// it takes another size for what it shows.
class WindowPlacement : public QObject
{
public:
    explicit WindowPlacement(QMainWindow& window);

    /// Gives the window a size, as far as the screen has room for it. One that fills the screen keeps to that.
    void resize(QSize wanted);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keepOnScreen();
    void keepOnScreenLater();

    QMainWindow& m_window;
    bool m_isPlaced = false; // on the screen, with its frame
};

} // namespace zan::host
