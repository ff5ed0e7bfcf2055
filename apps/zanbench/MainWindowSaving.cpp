// Unsaved changes: seeing them, saving them, keeping them until they are saved.

#include "zanbench/Commands.h"
#include "zanbench/MainWindow.h"

#include "document/EditCount.h"
#include "surface/host/PointerLoop.h"
#include "window/BenchWindow.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>

namespace zan::host {

namespace {

constexpr int LookMilliseconds = 250;
/// What nobody has counted, a write of a host to the tree itself, is looked for this often while there are edits.
constexpr int LooksUntilKept = 20;
/// An edit is kept well within a second, and a burst of them once.
constexpr int KeepMilliseconds = 300;
constexpr int LatestMilliseconds = 1000;
/// Keeping a large scheme takes its time: the pause after it is longer by this factor, as far as a second allows.
constexpr int PauseFactor = 4;

} // namespace

void MainWindow::connectEdits()
{
    m_changes.setInterval(LookMilliseconds);
    connect(&m_changes, &QTimer::timeout, this, &MainWindow::lookForChanges);
    m_edits.setInterval(KeepMilliseconds);
    m_edits.setSingleShot(true);
    connect(&m_edits, &QTimer::timeout, this, &MainWindow::keepEdits);
    connect(m_pages, &PanelPages::edited, this, [this](window::BenchWindow* panel) { editMade(*panel); });
    connect(m_pages, &PanelPages::lockAsked, this, [this](bool lock) {
        if (!m_kiosk)
            m_actions.lock->setChecked(lock);
    });
}

bool MainWindow::hasUnsavedChanges() const
{
    return m_watch && m_watch->isChanged();
}

void MainWindow::followChanges()
{
    if (!m_site)
        return;
    const bool changed = hasUnsavedChanges();
    m_status->setChanged(changed);
    setWindowModified(changed);
    const QString key = m_pages->currentKey();
    const QString shown = key.isEmpty() ? QStringLiteral("(no window)") : key;
    const QString mark = m_site->isSimulated() ? QStringLiteral(" (simulated logger)") : QString();
    setWindowTitle(QStringLiteral("%1: %2[*]%3 - ZanBench").arg(m_site->displayName(), shown, mark));
}

/// Scripts change the document without an edit of the user's. What they have done to a panel alone is seen only once the
/// panel has stored itself, as it does before it is kept.
void MainWindow::lookForChanges()
{
    followChanges();
    if (m_edits.isActive())
        return;
    const bool isDue = m_watch->isChanged() && (m_keeper->file().isEmpty() || ++m_looks % LooksUntilKept == 0);
    if (isDue || document::editCount() != m_keptCount)
        m_edits.start();
}

/// The edit may stand on the panel alone until the panel stores itself, and undoing may have brought back what is
/// saved: until somebody compares, it counts as a change.
void MainWindow::editMade(const window::BenchWindow& panel)
{
    const bool isNewWindow = panel.EditCount() == 0 && !panel.CanRedo();
    if (!m_site || isNewWindow)
        return;
    m_keeper->edited();
    m_watch->suspect();
    followChanges();
    if (!m_edits.isActive())
        m_edits.start();
}

void MainWindow::keepEdits()
{
    if (!m_site)
        return;
    // A control that is being dragged stands nowhere yet.
    if (surface::PointerLoop::isRunning() || m_pages->isLoading()) {
        m_edits.start();
        return;
    }
    QElapsedTimer time;
    time.start();
    try {
        m_pages->updateDocuments();
    } catch (const values::RuntimeError&) {
        // What has been stored so far is worth keeping; a save will tell what is wrong.
    }
    QString problem;
    if (m_watch->compare())
        problem = m_keeper->keep(m_site->scheme());
    else
        m_keeper->drop();
    m_keptCount = document::editCount();
    const int cost = int(std::min<qint64>(time.elapsed(), LatestMilliseconds));
    const int longest = std::max(KeepMilliseconds, LatestMilliseconds - LookMilliseconds - cost);
    m_edits.setInterval(std::clamp(PauseFactor * cost, KeepMilliseconds, longest));
    if (!problem.isEmpty())
        m_errors->showError(problem);
    followChanges();
}

std::unique_ptr<EditKeeper> MainWindow::keeperOf(const QString& scheme) const
{
    return std::make_unique<EditKeeper>(EditsPlace{scheme, m_settings.editsFolder()});
}

EditKeeper::Offer MainWindow::offerEdits(EditKeeper& keeper, const OpenedSite& saved)
{
    if (!m_kiosk)
        return keeper.offer(saved.scheme(), saved.displayName(), m_dialogs);
    // Nobody may be there to answer.
    const QString note = editsNote({saved.scheme().path(), m_settings.editsFolder()}, saved.scheme());
    if (!note.isEmpty())
        complain(note);
    return {};
}

/// Every panel brings its window up to date before anything is stored, so that no file holds half of an edit.
bool MainWindow::bringUpToDate()
{
    return attempt(QStringLiteral("The panels could not be stored"), [this] { m_pages->updateDocuments(); });
}

bool MainWindow::save()
{
    if (!m_site || !bringUpToDate())
        return false;
    // What nobody has edited is left as it is, in the file, too.
    const bool needed = m_watch->compare() || !QFileInfo::exists(m_site->scheme().path());
    const bool saved = !needed || store();
    if (saved && needed)
        m_watch->settle();
    if (saved)
        m_keeper->drop();
    followChanges();
    return saved;
}

bool MainWindow::store()
{
    try {
        m_site->scheme().Save();
        return true;
    } catch (const values::RuntimeError& error) {
        if (!m_site->scheme().isChangedOnDisk()) {
            m_dialogs.showError(QStringLiteral("The scheme was not saved: %1").arg(error.description()));
            return false;
        }
        switch (m_dialogs.askConflict(error.description())) {
        case HostDialogs::Conflict::Overwrite:
            return attempt(QStringLiteral("The scheme was not saved"), [this] { m_site->scheme().saveOver(); });
        case HostDialogs::Conflict::SaveAs:
            return saveAs();
        case HostDialogs::Conflict::Cancel:
            break;
        }
    }
    return false;
}

bool MainWindow::saveAs()
{
    if (!m_site)
        return false;
    const QString target = m_dialogs.chooseTarget(m_site->scheme().path());
    if (target.isEmpty())
        return false;
    const bool saved = bringUpToDate() && attempt(QStringLiteral("The scheme was not saved"),
                                                  [this, &target] { m_site->scheme().saveAs(target); });
    if (saved) {
        m_watch->settle();
        m_keeper->drop();
        m_keeper = keeperOf(target);
        m_settings.addRecentFile(target);
        followRecentFiles();
        QDir::setCurrent(QFileInfo(target).path());
    }
    followChanges();
    return saved;
}

bool MainWindow::confirmLeaving()
{
    if (!m_site)
        return true;
    // An edit may still stand on the panel alone, and an element that was taken away leaves no mark.
    bringUpToDate();
    if (!m_watch->compare())
        return true;
    switch (m_dialogs.askUnsaved(m_site->displayName())) {
    case HostDialogs::Unsaved::Save:
        return save();
    case HostDialogs::Unsaved::Discard:
        return true;
    case HostDialogs::Unsaved::Cancel:
        break;
    }
    return false;
}

} // namespace zan::host
