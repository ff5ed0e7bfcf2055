#include "window/PanelTime.h"

#include "site/LocalTime.h"
#include "surface/host/Surface.h"
#include "values/Failure.h"
#include "window/ActionEngine.h"
#include "window/BenchWindow.h"
#include "window/PanelDocument.h"
#include "window/PanelEvents.h"
#include "window/PanelSetup.h"
#include "window/PastFrame.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace zan::window {

using site::HistoryTime;
using values::ErrorNumber;
using values::Ref;

namespace {

/// Whether a moment is still to come, by the machine's clock and by the records: a logger's clock may be ahead.
bool isToCome(HistoryTime moment, const site::History& history)
{
    if (moment <= QDateTime::currentMSecsSinceEpoch())
        return false;
    const site::HistorySpan span = history.span();
    return span.isEmpty || moment > span.last;
}

} // namespace

QString momentText(HistoryTime moment)
{
    const QDateTime local =
        QDateTime::fromMSecsSinceEpoch(std::clamp(moment, site::EarliestTime, site::LatestTime));
    const QLocale locale;
    const bool hasHalfDays = locale.timeFormat(QLocale::ShortFormat).contains(u'a', Qt::CaseInsensitive);
    return locale.toString(local.date(), QStringLiteral("d MMM yyyy")) + u' ' +
           locale.toString(local.time(), hasHalfDays ? QStringLiteral("h:mm:ss AP") : QStringLiteral("HH:mm:ss"));
}

PanelTime::PanelTime(BenchWindow& panel, surface::Surface& surface)
    : m_panel(panel)
    , m_surface(surface)
{}

PanelTime::~PanelTime() = default;

void PanelTime::requireLive(const QString& what) const
{
    if (!isLive())
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("%1: the panel shows the past. Go back to live "
                                                               "(ShowLive) and try again.")
                                                    .arg(what));
}

void PanelTime::showAt(HistoryTime moment)
{
    const QPointer<BenchWindow> alive(&m_panel);
    const std::uint32_t travel = ++m_travels;
    const Ref<wrappers::BenchControls> list = m_panel.document().controls();
    const Ref<site::Logger> logger = values::given(m_panel.Logger());
    const Ref<site::Live> live = values::given(logger->Live());
    const Ref<site::History> history = live->History();
    if (!history)
        values::raise(
            ErrorNumber::InvalidCall,
            QStringLiteral("The panel cannot show the past: its logger keeps no history. Give the scheme a "
                           "HISTORY and open it again."));
    if (isToCome(moment, *history))
        values::raise(ErrorNumber::InvalidCall,
                      QStringLiteral("%1 is still to come: nothing is stored of it. Choose a moment of the past.")
                          .arg(momentText(moment)));
    wrappers::PastReading reading = wrappers::readPast(history, moment);
    if (!alive || m_travels != travel)
        return;
    if (!m_panel.LockPositions() || m_panel.setup().isOpen())
        values::raise(ErrorNumber::InvalidCall,
                      QStringLiteral("The panel cannot show the past while it is being edited. Lock its positions, "
                                     "close its setup forms and try again."));
    const bool wasLive = isLive();
    m_moment = moment;
    ++m_departures;
    if (wasLive)
        m_panel.actions().endScripts();
    list->showPast(std::move(reading));
    if (alive && m_travels == travel)
        follow();
}

void PanelTime::showLive()
{
    if (isLive())
        return;
    const QPointer<BenchWindow> alive(&m_panel);
    const std::uint32_t travel = ++m_travels;
    m_moment.reset();
    if (const Ref<wrappers::BenchControls> list = m_panel.Controls())
        list->showLive();
    if (alive && m_travels == travel)
        m_panel.events().followMissed();
    if (alive && m_travels == travel)
        follow();
}

void PanelTime::refresh()
{
    if (m_moment)
        showAt(HistoryTime(*m_moment));
    else
        m_panel.document().controls()->ScanControls();
}

void PanelTime::end()
{
    ++m_travels;
    m_moment.reset();
    follow();
}

void PanelTime::documentChanged()
{
    if (m_frame && m_moment)
        m_frame->show(momentText(*m_moment));
}

/// Frame, stamp and input after the time that is shown now. What widgets tell assistive tools of themselves may take the
/// panel away.
void PanelTime::follow()
{
    const QPointer<BenchWindow> alive(&m_panel);
    const bool live = isLive();
    m_surface.setTakesInput(live);
    if (alive && live)
        delete m_frame;
    if (alive && !live) {
        if (!m_frame)
            m_frame = new PastFrame(m_panel);
        m_frame->show(momentText(*m_moment));
    }
    if (alive)
        alive->flush();
    if (alive)
        Q_EMIT alive->MomentShown();
}

} // namespace zan::window
