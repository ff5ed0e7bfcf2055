// The way over sites of a map from scheme to scheme, and back.

#include "zanbench/MainWindow.h"

namespace zan::host {

namespace {

constexpr int MessageMilliseconds = 5000;

} // namespace

void MainWindow::connectTrail()
{
    connect(m_pages, &PanelPages::schemeChosen, this, &MainWindow::openFromMap);
    connect(m_actions.back, &QAction::triggered, this, &MainWindow::goBack);
}

void MainWindow::openFromMap(const QString& scheme, const QString& mapFile)
{
    if (!m_site) // closed meanwhile
        return;
    const QString file = SchemeTrail::fileOf(scheme, mapFile);
    if (file.isEmpty()) {
        m_status->showMessage(QStringLiteral("This site has no scheme."), MessageMilliseconds);
        return;
    }
    SchemeTrail trail = m_trail;
    trail.push({m_site->scheme().path(), m_pages->currentKey()});
    openOnTrail({file, {}}, trail);
}

void MainWindow::goBack()
{
    SchemeTrail trail = m_trail;
    const std::optional<SchemePlace> place = trail.last();
    if (!place)
        return;
    trail.pop();
    openOnTrail(*place, trail);
}

/// A scheme that is opened in any other way begins a new trail.
void MainWindow::openOnTrail(const SchemePlace& place, const SchemeTrail& trail)
{
    OpenOptions options;
    options.scheme = place.scheme;
    options.window = place.window;
    options.unlock = !m_pages->manner().isLocked;
    const QSize before = size();
    if (!openScheme(options))
        return;
    setTrail(trail);
    growToPanel(before);
}

void MainWindow::setTrail(const SchemeTrail& trail)
{
    m_trail = trail;
    m_actions.back->setEnabled(!m_trail.isEmpty());
}

} // namespace zan::host
