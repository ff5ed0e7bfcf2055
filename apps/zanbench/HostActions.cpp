#include "zanbench/HostActions.h"

#include "site/Logger.h"

#include <QFileInfo>

namespace zan::host {

HostActions::HostActions(QObject* parent)
    : QObject(parent)
{
    open = make(QStringLiteral("open"), QStringLiteral("&Open..."), QKeySequence::Open);
    openDemo = make(QStringLiteral("openDemo"), QStringLiteral("Open the &demo"), {});
    newScheme = make(QStringLiteral("newScheme"), QStringLiteral("&New..."), QKeySequence::New);
    save = make(QStringLiteral("save"), QStringLiteral("&Save"), QKeySequence::Save);
    saveAs = make(QStringLiteral("saveAs"), QStringLiteral("Save &as..."),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    importOlder = make(QStringLiteral("importOlder"), QStringLiteral("&Import..."), {});
    importOlder->setToolTip(QStringLiteral("Lay out a window of an older text terminal"));
    quit = make(QStringLiteral("quit"), QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q));
    undo = make(QStringLiteral("undo"), QStringLiteral("&Undo"), QKeySequence::Undo);
    redo = make(QStringLiteral("redo"), QStringLiteral("&Redo"), QKeySequence::Redo);
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    copy = make(QStringLiteral("copy"), QStringLiteral("&Copy"), {});
    paste = make(QStringLiteral("paste"), QStringLiteral("&Paste"), {});
    remove = make(QStringLiteral("remove"), QStringLiteral("&Delete"), {});
    for (QAction* action : {undo, redo, copy, paste, remove})
        action->setEnabled(false);
    connectLink = make(QStringLiteral("connectLink"), QStringLiteral("&Connect"), QKeySequence(Qt::Key_F5));
    connectOnOpening =
        make(QStringLiteral("connectOnOpening"), QStringLiteral("Connect when a scheme is &opened"), {}, true);
    lock = make(QStringLiteral("lock"), QStringLiteral("&Lock controls"), QKeySequence(Qt::CTRL | Qt::Key_L), true);
    lock->setToolTip(QStringLiteral("Keep the controls of the panels where they are"));
    alignmentGuides = make(QStringLiteral("alignmentGuides"), QStringLiteral("Alignment &guides"), {}, true);
    alignmentGuides->setToolTip(
        QStringLiteral("What is dragged is pulled to the edges and middles of other controls"));
    keyboardEditing = make(QStringLiteral("keyboardEditing"), QStringLiteral("&Edit by keyboard"), {}, true);
    keyboardEditing->setToolTip(QStringLiteral("Arrow keys move the current control, with Ctrl they size it"));
    hideProtected = make(QStringLiteral("hideProtected"), QStringLiteral("&Hide protected controls"), {}, true);
    siteMap = make(QStringLiteral("siteMap"), QStringLiteral("Site &map on this panel"), {}, true);
    back = make(QStringLiteral("back"), QStringLiteral("&Back"), QKeySequence(Qt::ALT | Qt::Key_Left));
    back->setToolTip(QStringLiteral("Return to the scheme from whose map this one was opened"));
    back->setEnabled(false);
    previousWindow = make(QStringLiteral("previousWindow"), QStringLiteral("&Previous window"),
                          QKeySequence(Qt::CTRL | Qt::Key_PageUp));
    nextWindow = make(QStringLiteral("nextWindow"), QStringLiteral("&Next window"),
                      QKeySequence(Qt::CTRL | Qt::Key_PageDown));
    timeTravel = make(QStringLiteral("timeTravel"), QStringLiteral("&Time travel"),
                      QKeySequence(Qt::CTRL | Qt::Key_T), true);
    timeTravel->setEnabled(false);
    live = make(QStringLiteral("live"), QStringLiteral("Back to li&ve"), QKeySequence(Qt::Key_Escape));
    live->setEnabled(false);
    fullScreen =
        make(QStringLiteral("fullScreen"), QStringLiteral("&Full screen"), QKeySequence(Qt::Key_F11), true);
    zoomIn = make(QStringLiteral("zoomIn"), QStringLiteral("Zoom &in"), QKeySequence(Qt::CTRL | Qt::Key_Plus));
    zoomIn->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    zoomOut = make(QStringLiteral("zoomOut"), QStringLiteral("Zoom &out"), QKeySequence(Qt::CTRL | Qt::Key_Minus));
    zoomNormal =
        make(QStringLiteral("zoomNormal"), QStringLiteral("&100 %"), QKeySequence(Qt::CTRL | Qt::Key_0), true);
    zoomFit = make(QStringLiteral("zoomFit"), QStringLiteral("F&it"), QKeySequence(Qt::CTRL | Qt::Key_9), true);
    about = make(QStringLiteral("about"), QStringLiteral("&About ZanBench"), {});
}

QAction* HostActions::make(const QString& name, const QString& text, const QKeySequence& shortcut, bool checkable)
{
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    action->setCheckable(checkable);
    return action;
}

void HostActions::fillMenus(QMenuBar& bar, QAction* showWindowList)
{
    QMenu* file = bar.addMenu(QStringLiteral("&File"));
    file->addActions({newScheme, open, openDemo});
    m_recent = file->addMenu(QStringLiteral("Open &recent"));
    file->addSeparator();
    file->addActions({save, saveAs});
    file->addSeparator();
    file->addAction(importOlder);
    file->addSeparator();
    file->addAction(quit);
    m_edit = bar.addMenu(QStringLiteral("&Edit"));
    m_edit->addActions({undo, redo});
    m_edit->addSeparator();
    m_edit->addActions({copy, paste, remove});
    m_edit->addSeparator();
    m_edit->addActions({lock, alignmentGuides, keyboardEditing});
    QMenu* logger = bar.addMenu(QStringLiteral("&Logger"));
    logger->addActions({connectLink, connectOnOpening});
    m_window = bar.addMenu(QStringLiteral("&Window"));
    QMenu* view = bar.addMenu(QStringLiteral("&View"));
    view->addAction(back);
    view->addSeparator();
    view->addActions({previousWindow, nextWindow});
    view->addSeparator();
    showWindowList->setText(QStringLiteral("&List of windows"));
    view->addActions({zoomIn, zoomOut, zoomNormal, zoomFit});
    view->addSeparator();
    view->addActions({timeTravel, live});
    view->addSeparator();
    view->addActions({showWindowList, fullScreen});
    bar.addMenu(QStringLiteral("&Help"))->addAction(about);
}

void HostActions::fillToolBar(QToolBar& bar)
{
    bar.setToolButtonStyle(Qt::ToolButtonTextOnly);
    bar.addActions({back, open, save});
    bar.addSeparator();
    bar.addAction(connectLink);
    bar.addSeparator();
    bar.addActions({lock, undo, redo});
}

void HostActions::setRecentFiles(const QStringList& files)
{
    m_recent->clear();
    for (const QString& file : files) {
        // An ampersand in a path is no shortcut.
        QString text = file;
        QAction* action = m_recent->addAction(text.replace(QLatin1Char('&'), QLatin1String("&&")));
        connect(action, &QAction::triggered, this, [this, file] { Q_EMIT recentFileChosen(file); });
    }
    m_recent->setEnabled(!files.isEmpty());
}

void HostActions::follow(bool siteOpen, bool canConnect, int linkState)
{
    for (QAction* action : {previousWindow, nextWindow})
        action->setEnabled(siteOpen);
    for (QAction* action : {save, saveAs, importOlder, lock, hideProtected, siteMap})
        action->setEnabled(siteOpen && !m_kiosk);
    connectLink->setEnabled(canConnect && linkState != int(site::LinkState::Disconnecting));
    switch (static_cast<site::LinkState>(linkState)) {
    case site::LinkState::Connecting:
        connectLink->setText(QStringLiteral("Cancel &connecting"));
        break;
    case site::LinkState::Connected:
    case site::LinkState::Disconnecting:
        connectLink->setText(QStringLiteral("Dis&connect"));
        break;
    default:
        connectLink->setText(QStringLiteral("&Connect"));
        break;
    }
}

void HostActions::restrictToKiosk()
{
    m_kiosk = true;
    for (QAction* action : {open, openDemo, newScheme, save, saveAs, importOlder, lock, alignmentGuides,
                            keyboardEditing, hideProtected, siteMap, fullScreen, connectOnOpening})
        action->setEnabled(false);
}

} // namespace zan::host
