#pragma once

#include "site/History.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QSlider>
#include <QToolButton>
#include <QWidget>

namespace zan::host {

/// The line below the panels that leads through a site's history: a slider over all of it, the moment, steps from record
/// to record, playing and its speed, and the way back to live. It only asks; who follows tells it what is shown.
class TimeBar : public QWidget
{
    Q_OBJECT
public:
    explicit TimeBar(QWidget* parent = nullptr);

    /// From the first record to the last.
    void setSpan(const site::HistorySpan& span);
    /// The moment that is shown; nothing while live.
    void setMoment(std::optional<site::HistoryTime> moment);
    void setPlaying(bool isPlaying);
    /// What there is to say: "End of the records"; empty for nothing.
    void setWord(const QString& word);
    int speed() const;

Q_SIGNALS:
    void momentAsked(std::int64_t moment);
    /// Of records: -1 the one before, 1 the next.
    void stepAsked(int by);
    void playAsked(bool plays);
    void speedAsked(int speed);
    void liveAsked();

private:
    QToolButton* button(const QString& name, const QString& text, const QString& help);
    void connectParts();
    int placeOf(site::HistoryTime moment) const;
    site::HistoryTime momentAt(int place) const;

    QSlider* m_slider;
    QDateTimeEdit* m_time;
    QToolButton* m_before;
    QToolButton* m_play;
    QToolButton* m_next;
    QComboBox* m_speed;
    QLabel* m_word;
    QToolButton* m_live;
    site::HistorySpan m_span;
};

} // namespace zan::host
