#pragma once

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QToolBar>

namespace zan::host {

/// The host's commands, and the menus and the tool bar that offer them. Who acts on them connects to the actions.
class HostActions : public QObject
{
    Q_OBJECT
public:
    explicit HostActions(QObject* parent = nullptr);

    QAction* open;
    QAction* openDemo;
    QAction* newScheme;
    QAction* save;
    QAction* saveAs;
    QAction* importOlder; ///< a window of an older terminal
    QAction* quit;
    QAction* undo; ///< its text says what it would take back
    QAction* redo;
    QAction* copy; ///< its text names the control; so do those of the next
    QAction* paste;
    QAction* remove;
    QAction* connectLink; ///< its text says what it would do
    QAction* connectOnOpening;
    QAction* lock;
    QAction* alignmentGuides;
    QAction* keyboardEditing;
    QAction* hideProtected;
    QAction* siteMap;
    QAction* back;
    QAction* previousWindow;
    QAction* nextWindow;
    QAction* timeTravel; ///< its tool tip says why it cannot be
    QAction* live;       ///< back from the past, with one key
    QAction* fullScreen;
    QAction* zoomIn;
    QAction* zoomOut;
    QAction* zoomNormal;
    QAction* zoomFit;
    QAction* about;

    /// Fills a menu bar. The recent files stand in a menu of their own, filled by setRecentFiles().
    void fillMenus(QMenuBar& bar, QAction* showWindowList);
    /// The menus whose entries depend on the panel in front; they have been made by fillMenus().
    QMenu& editMenu() const { return *m_edit; }
    QMenu& windowMenu() const { return *m_window; }
    void fillToolBar(QToolBar& bar);
    void setRecentFiles(const QStringList& files);
    /// Which commands make sense: with a site open or not, with a logger or not, while the link is in this state.
    void follow(bool siteOpen, bool canConnect, int linkState);
    /// For good: a kiosk's keys reach nothing but its windows, its connection and its end.
    void restrictToKiosk();

Q_SIGNALS:
    void recentFileChosen(const QString& file);

private:
    QAction* make(const QString& name, const QString& text, const QKeySequence& shortcut, bool checkable = false);

    QMenu* m_recent = nullptr;
    QMenu* m_edit = nullptr;
    QMenu* m_window = nullptr;
    bool m_kiosk = false;
};

} // namespace zan::host
