#include "zanbench/PanelView.h"

#include "zanbench/PanelLoader.h"

#include <QGraphicsScene>
#include <QStackedLayout>

#include <algorithm>

namespace zan::host {

namespace {

/// Moving a widget to another parent hides it for a moment, which would be the end of a panel: not of this one.
class Moving
{
public:
    explicit Moving(window::BenchWindow& panel)
        : m_panel(panel)
        , m_ends(panel.endsWhenHidden())
    {
        panel.setEndsWhenHidden(false);
    }
    ~Moving() { m_panel.setEndsWhenHidden(m_ends); }
    Moving(const Moving&) = delete;
    Moving& operator=(const Moving&) = delete;

private:
    window::BenchWindow& m_panel;
    bool m_ends;
};

} // namespace

PanelView::PanelView(window::BenchWindow* panel, QWidget* parent)
    : QWidget(parent)
    , m_panel(panel)
    , m_plain(new QScrollArea(this))
    , m_scaled(new QGraphicsView(new QGraphicsScene(this), this))
{
    auto* stack = new QStackedLayout(this);
    stack->addWidget(m_plain);
    stack->addWidget(m_scaled);
    m_plain->setFrameShape(QFrame::NoFrame);
    m_plain->setWidgetResizable(true);
    m_scaled->setFrameShape(QFrame::NoFrame);
    m_scaled->setAlignment(Qt::AlignCenter);
    m_scaled->setRenderHint(QPainter::SmoothPixmapTransform);
    m_scaled->setRenderHint(QPainter::Antialiasing); // lines of a pixel stay when they are drawn smaller
    showPlain();
}

PanelView::~PanelView() = default;

void PanelView::setZoom(int percent)
{
    m_zoom = percent;
    if (!m_panel)
        return;
    const bool scaled = percent != 100;
    if (scaled && !m_isScaled)
        showScaled();
    else if (!scaled && m_isScaled)
        showPlain();
    scale();
}

double PanelView::shownZoom() const
{
    return m_isScaled ? m_scaled->transform().m11() * 100 : 100;
}

void PanelView::showPlain()
{
    const Moving moving(*m_panel);
    if (m_proxy)
        m_proxy->setWidget(nullptr); // gives the panel back
    delete m_proxy;
    m_isScaled = false;
    m_panel->setMinimumSize(contentSize(*m_panel));
    m_plain->setWidget(m_panel);
    m_panel->show();
    static_cast<QStackedLayout*>(layout())->setCurrentWidget(m_plain);
}

void PanelView::showScaled()
{
    const Moving moving(*m_panel);
    m_plain->takeWidget();
    m_isScaled = true;
    m_proxy = m_scaled->scene()->addWidget(m_panel);
    m_panel->show();
    m_proxy->setFocus();
    static_cast<QStackedLayout*>(layout())->setCurrentWidget(m_scaled);
    followPanel();
}

void PanelView::followPanel()
{
    if (!m_panel)
        return;
    const QSize size = contentSize(*m_panel);
    m_panel->setMinimumSize(size);
    if (!m_isScaled)
        return;
    m_panel->resize(size);
    m_scaled->setSceneRect(QRectF(QPointF(0, 0), QSizeF(size)));
    m_scaled->setBackgroundBrush(values::toQColor(m_panel->BackColor(), palette()));
    scale();
}

/// Brings the view to the zoom that is asked for.
void PanelView::scale()
{
    if (!m_isScaled)
        return;
    const bool fits = m_zoom == Fit;
    const Qt::ScrollBarPolicy bars = fits ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded;
    m_scaled->setHorizontalScrollBarPolicy(bars);
    m_scaled->setVerticalScrollBarPolicy(bars);
    double factor = m_zoom / 100.0;
    if (fits) {
        const QSizeF panel = m_scaled->sceneRect().size();
        factor = std::min(width() / std::max(1.0, panel.width()), height() / std::max(1.0, panel.height()));
    }
    factor = std::clamp(factor, Smallest / 100.0, Largest / 100.0);
    m_scaled->setTransform(QTransform::fromScale(factor, factor));
}

void PanelView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    scale();
}

} // namespace zan::host
