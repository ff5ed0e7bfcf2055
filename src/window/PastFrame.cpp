#include "window/PastFrame.h"

#include "surface/host/Surface.h"
#include "window/BenchWindow.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace zan::window {

// Amber with black stands out from light and dark panels alike; black on it has a contrast above 10 to 1.
const QColor PastFrame::Colour(0xff, 0xb0, 0x00);
const QColor PastFrame::Ink(0x00, 0x00, 0x00);

namespace {

constexpr int Margin = 6; ///< between the stamp's edge and its letters
const QString NoRecord = QStringLiteral("no record");

} // namespace

PastFrame::PastFrame(BenchWindow& panel)
    : QWidget(&panel)
    , m_panel(panel)
{
    setObjectName(QStringLiteral("pastFrame"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    m_placing.setSingleShot(true);
    connect(&m_placing, &QTimer::timeout, this, [this] {
        place();
        update();
    });
    panel.installEventFilter(this);
    watchPlace();
}

void PastFrame::show(const QString& moment)
{
    m_stamp = QStringLiteral("Past: ") + moment;
    const std::size_t count = covers().size();
    const QString description = count == 0 ? QString() : QStringLiteral("%1 controls without a record").arg(count);
    place();
    raise();
    update();
    placeLater();
    // Assistive tools hear of each of these, and may take the panel away.
    const QPointer<PastFrame> alive(this);
    setAccessibleName(m_stamp);
    if (alive)
        setAccessibleDescription(description);
    if (alive)
        setVisible(true);
}

QFont PastFrame::stampFont() const
{
    QFont bold = font();
    bold.setBold(true);
    return bold;
}

std::vector<QRect> PastFrame::covers() const
{
    std::vector<QRect> places;
    const values::Ref<wrappers::BenchControls> list = m_panel.Controls();
    if (!list)
        return places;
    for (const values::Ref<binding::Object>& live : list->withoutRecord()) {
        const auto* control = dynamic_cast<const surface::LiveControl*>(live.get());
        if (control && control->isLoaded())
            places.push_back(control->bounds());
    }
    return places;
}

QRect PastFrame::stampRectangle() const
{
    return m_stampRectangle;
}

/// What is seen of the panel, which a host may show through a smaller opening; all of it while nothing is seen.
QRect PastFrame::seenPart() const
{
    // Not the toolkit's visible region, which leaves out what the panel's own surface covers.
    QRect seen = m_panel.rect();
    QPoint place;
    for (const QWidget* widget = &m_panel; widget->parentWidget() && !widget->isWindow();
         widget = widget->parentWidget()) {
        place += widget->pos();
        seen.translate(widget->pos());
        seen &= widget->parentWidget()->rect();
    }
    return seen.isEmpty() ? rect() : seen.translated(-place);
}

/// The first of six places along the upper and the lower edge that hides least of the controls.
void PastFrame::place()
{
    setGeometry(m_panel.rect());
    m_seen = seenPart();
    const QFontMetrics metrics(stampFont());
    const QSize size(std::min(metrics.horizontalAdvance(m_stamp) + 2 * Margin + 2 * Thickness, m_seen.width()),
                     std::min(metrics.height() + Margin + Thickness, m_seen.height()));
    std::vector<QRect> shown = covers();
    for (const values::Ref<surface::LiveControl>& control : m_panel.surface().controls()) {
        if (control->visible())
            shown.push_back(control->bounds());
    }
    const int right = m_seen.width() - size.width();
    const int bottom = m_seen.height() - size.height();
    const std::array places{QPoint(right, 0),          QPoint(0, 0),
                            QPoint(right / 2, 0),      QPoint(right, bottom),
                            QPoint(right / 2, bottom), QPoint(0, bottom)};
    qint64 least = std::numeric_limits<qint64>::max();
    for (const QPoint corner : places) {
        const QRect rectangle(m_seen.topLeft() + corner, size);
        qint64 hidden = 0;
        for (const QRect& control : shown) {
            const QRect both = control & rectangle;
            hidden += both.isEmpty() ? 0 : qint64(both.width()) * both.height();
        }
        if (hidden < least) {
            least = hidden;
            m_stampRectangle = rectangle;
        }
    }
}

void PastFrame::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // Where nothing is stored: hatched, as gaps are in graphs, and solid, so that nothing shows through.
    const QColor back = palette().color(QPalette::Window);
    const QColor fore = palette().color(QPalette::WindowText);
    for (const QRect& cover : covers()) {
        painter.fillRect(cover, back);
        QColor lines = fore;
        lines.setAlphaF(0.4F);
        painter.fillRect(cover, QBrush(lines, Qt::BDiagPattern));
        painter.setPen(fore);
        const QSize words = painter.fontMetrics().size(Qt::TextSingleLine, NoRecord) + QSize(4, 2);
        if (words.width() <= cover.width() && words.height() <= cover.height()) {
            QRect label({}, words);
            label.moveCenter(cover.center());
            painter.fillRect(label, back);
            painter.drawText(label, Qt::AlignCenter, NoRecord);
        }
    }
    // The frame, edged on both sides.
    const QRect whole = m_seen;
    QRegion frame(whole);
    frame -= whole.marginsRemoved(QMargins(Thickness, Thickness, Thickness, Thickness));
    for (const QRect& part : frame)
        painter.fillRect(part, Colour);
    painter.setPen(Ink);
    painter.drawRect(whole.adjusted(0, 0, -1, -1));
    painter.drawRect(whole.adjusted(Thickness - 1, Thickness - 1, -Thickness, -Thickness));
    painter.fillRect(m_stampRectangle, Colour);
    painter.drawRect(m_stampRectangle.adjusted(0, 0, -1, -1));
    painter.setFont(stampFont());
    painter.drawText(m_stampRectangle, Qt::AlignCenter, m_stamp);
}

/// The panel is sized, scrolled, or put into another place; or its place is sized.
bool PastFrame::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ParentChange:
    case QEvent::Show:
        watchPlace();
        [[fallthrough]];
    case QEvent::Resize:
    case QEvent::Move:
        if (watched == &m_panel)
            place();
        placeLater();
        update();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

/// What the panel lies in may be sized without the panel's hearing of it: a scrolled panel, and the place of that.
void PastFrame::watchPlace()
{
    std::vector<QPointer<QWidget>> around;
    for (QWidget* widget = m_panel.parentWidget(); widget; widget = widget->parentWidget())
        around.emplace_back(widget);
    if (around == m_around)
        return;
    for (const QPointer<QWidget>& widget : std::exchange(m_around, around)) {
        if (widget)
            widget->removeEventFilter(this);
    }
    for (const QPointer<QWidget>& widget : around)
        widget->installEventFilter(this);
}

/// Once all that lies around the panel has found its place: what is seen of the panel is known only then.
void PastFrame::placeLater()
{
    m_placing.start(0);
}

void PastFrame::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        place();
}

} // namespace zan::window
