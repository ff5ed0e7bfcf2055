#include "zanbench/TimeBar.h"

#include "zanbench/TimePlayer.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace zan::host {

using site::HistoryTime;

namespace {

constexpr int SliderPlaces = 10'000;
constexpr int ShortestSlider = 120; ///< pixels

} // namespace

TimeBar::TimeBar(QWidget* parent)
    : QWidget(parent)
    , m_slider(new QSlider(Qt::Horizontal, this))
    , m_time(new QDateTimeEdit(this))
    , m_before(button(QStringLiteral("timeBefore"), QStringLiteral("&<"), QStringLiteral("The record before")))
    , m_play(button(QStringLiteral("timePlay"), QStringLiteral("&Play"), QStringLiteral("Play, or stop playing")))
    , m_next(button(QStringLiteral("timeNext"), QStringLiteral("&>"), QStringLiteral("The next record")))
    , m_speed(new QComboBox(this))
    , m_word(new QLabel(this))
    , m_live(button(QStringLiteral("timeLive"), QStringLiteral("L&ive"), QStringLiteral("Back to live (Esc)")))
{
    setObjectName(QStringLiteral("timeBar"));
    setAccessibleName(QStringLiteral("Time travel"));
    m_slider->setObjectName(QStringLiteral("timeSlider"));
    m_slider->setAccessibleName(QStringLiteral("Place in the history"));
    m_slider->setRange(0, SliderPlaces);
    m_slider->setPageStep(SliderPlaces / 20);
    m_slider->setMinimumWidth(ShortestSlider);
    m_time->setObjectName(QStringLiteral("timeMoment"));
    m_time->setAccessibleName(QStringLiteral("Moment"));
    m_time->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    m_time->setKeyboardTracking(false);
    m_speed->setObjectName(QStringLiteral("timeSpeed"));
    m_speed->setAccessibleName(QStringLiteral("Speed"));
    for (const int speed : TimePlayer::Speeds)
        m_speed->addItem(QLocale().toString(speed) + u'x', speed);
    m_word->setObjectName(QStringLiteral("timeWord"));
    m_play->setCheckable(true);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 2, 6, 2);
    row->addWidget(m_slider, 1);
    for (QWidget* part : std::initializer_list<QWidget*>{m_time, m_before, m_play, m_next, m_speed, m_word, m_live})
        row->addWidget(part);
    QWidget* former = m_slider;
    for (QWidget* part : std::initializer_list<QWidget*>{m_time, m_before, m_play, m_next, m_speed, m_live}) {
        setTabOrder(former, part);
        former = part;
    }
    connectParts();
    setMoment(std::nullopt);
}

QToolButton* TimeBar::button(const QString& name, const QString& text, const QString& help)
{
    auto* made = new QToolButton(this);
    made->setObjectName(name);
    made->setText(text);
    made->setToolTip(help);
    made->setAccessibleName(help);
    made->setFocusPolicy(Qt::StrongFocus);
    made->setToolButtonStyle(Qt::ToolButtonTextOnly);
    return made;
}

void TimeBar::connectParts()
{
    connect(m_slider, &QSlider::valueChanged, this, [this](int place) { Q_EMIT momentAsked(momentAt(place)); });
    connect(m_time, &QDateTimeEdit::dateTimeChanged, this,
            [this](const QDateTime& time) { Q_EMIT momentAsked(time.toMSecsSinceEpoch()); });
    connect(m_before, &QToolButton::clicked, this, [this] { Q_EMIT stepAsked(-1); });
    connect(m_next, &QToolButton::clicked, this, [this] { Q_EMIT stepAsked(1); });
    connect(m_play, &QToolButton::clicked, this, [this](bool plays) { Q_EMIT playAsked(plays); });
    connect(m_speed, &QComboBox::currentIndexChanged, this, [this] { Q_EMIT speedAsked(speed()); });
    connect(m_live, &QToolButton::clicked, this, &TimeBar::liveAsked);
}

int TimeBar::speed() const
{
    return m_speed->currentData().toInt();
}

int TimeBar::placeOf(HistoryTime moment) const
{
    const double length = double(m_span.last) - double(m_span.first);
    if (m_span.isEmpty || length <= 0)
        return SliderPlaces;
    const double share = (double(moment) - double(m_span.first)) / length;
    return int(std::lround(std::clamp(share, 0.0, 1.0) * SliderPlaces));
}

HistoryTime TimeBar::momentAt(int place) const
{
    const double length = double(m_span.last) - double(m_span.first);
    return place >= SliderPlaces ? m_span.last
                                 : m_span.first + HistoryTime(std::llround(length * place / SliderPlaces));
}

void TimeBar::setSpan(const site::HistorySpan& span)
{
    m_span = span;
    for (QWidget* part : std::initializer_list<QWidget*>{m_slider, m_time, m_before, m_play, m_next})
        part->setEnabled(!span.isEmpty);
}

void TimeBar::setMoment(std::optional<HistoryTime> moment)
{
    const QSignalBlocker slider(m_slider);
    const QSignalBlocker time(m_time);
    const HistoryTime shown = moment.value_or(m_span.last);
    m_slider->setValue(placeOf(shown));
    m_time->setDateTime(QDateTime::fromMSecsSinceEpoch(shown));
    m_live->setEnabled(moment.has_value());
}

void TimeBar::setPlaying(bool isPlaying)
{
    m_play->setChecked(isPlaying);
    m_play->setText(isPlaying ? QStringLiteral("&Pause") : QStringLiteral("&Play"));
}

void TimeBar::setWord(const QString& word)
{
    m_word->setText(word);
    m_word->setVisible(!word.isEmpty());
}

} // namespace zan::host
