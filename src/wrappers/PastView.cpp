#include "wrappers/PastView.h"

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "site/LocalTime.h"
#include "values/Convert.h"
#include "wrappers/PastChannel.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zan::wrappers {

using site::HistorySeries;
using site::HistoryTime;

namespace {

/// Longer than any record is awaited; keeps products of periods within their type.
constexpr std::int64_t LongestPeriod = 1'000'000'000'000'000;

QString nameOf(const QString& window, const QString& channel)
{
    return (window + u'|' + channel).toCaseFolded(); // keys of a scheme ignore case
}

/// Names a channel as its history does.
QString nameOf(const site::Channel& channel, const QString& bindString)
{
    const document::Node window = channel.XMLNode().parent();
    const QString key = document::XMLOps::GetAttribute(window, document::element::Key);
    return key.isEmpty() ? bindString.toCaseFolded() : nameOf(key, channel.Key());
}

/// Whether a stored value still stands at a moment: the graphs' rule for gaps.
bool isCurrent(const HistorySeries& series, const site::History::Past& past, HistoryTime moment)
{
    if (past.value.isEmpty() || past.time > moment)
        return false;
    if (series.period <= 0)
        return true; // as long as nobody knows how often records come, none is late
    const std::int64_t patience = std::min(series.period, LongestPeriod) * site::PeriodsOfPatience;
    return double(moment) - double(past.time) <= double(patience);
}

/// Size and sign of the whole numbers among the data types, in index order.
struct WholeNumber
{
    int bytes;
    bool isSigned;
};
constexpr std::array<WholeNumber, 6> wholeNumbers{
    {{1, false}, {1, true}, {2, false}, {2, true}, {4, false}, {4, true}}};

std::optional<double> wordOf(const site::Channel& channel, const Variant& value)
{
    const std::int32_t type = channel.DataType();
    double number = 0;
    if (type < 0 || std::size_t(type) >= wholeNumbers.size() || !channel.Formula().isEmpty() || value.isText() ||
        value.isEmpty() || values::tryToDouble(value, number) != values::ErrorNumber::None)
        return std::nullopt;
    const double multiplier = channel.Multiplier() == 0 ? 1 : double(channel.Multiplier());
    const double raw = (number - double(channel.Offset())) / multiplier;
    const double word = std::nearbyint(raw);
    // Scaling leaves traces in the last digits; what is further off a whole number was never one.
    if (!(std::fabs(raw - word) <= 0.01))
        return std::nullopt;
    const WholeNumber whole = wholeNumbers[std::size_t(type)];
    const double range = std::exp2(8 * whole.bytes);
    const double lowest = whole.isSigned ? -range / 2 : 0;
    if (word < lowest || word >= lowest + range)
        return std::nullopt;
    return word < 0 ? word + range : word;
}

} // namespace

PastReading readPast(const Ref<site::History>& history, HistoryTime moment)
{
    const Ref<site::History> alive = history;
    PastReading reading;
    reading.moment = moment;
    reading.series = alive->series();
    reading.values = alive->valuesAt(moment);
    return reading;
}

PastView::PastView() = default;
PastView::~PastView() = default;

void PastView::go(PastReading reading)
{
    m_moment = reading.moment;
    const bool isListed = std::equal(reading.series.begin(), reading.series.end(), m_series.begin(), m_series.end(),
                                     [](const HistorySeries& one, std::int64_t id) { return one.id == id; });
    if (!isListed) {
        m_series.clear();
        m_places.clear();
        for (const HistorySeries& one : reading.series) {
            m_places.insert(nameOf(one.window, one.key), m_series.size());
            m_series.push_back(one.id);
        }
    }
    m_values.assign(reading.series.size(), {});
    const std::size_t answered = std::min(reading.series.size(), reading.values.size());
    for (std::size_t i = 0; i < answered; ++i) {
        if (isCurrent(reading.series[i], reading.values[i], m_moment))
            m_values[i] = std::move(reading.values[i].value);
    }
    for (const Known& known : std::as_const(m_known))
        known.past->show(valueOf(known.name));
}

Variant PastView::valueOf(const QString& name) const
{
    const auto place = m_places.constFind(name);
    return place == m_places.constEnd() ? Variant() : m_values[*place];
}

Ref<site::Channel> PastView::known(const site::Channel& now) const
{
    const auto found = m_known.constFind(&now);
    return found == m_known.constEnd() ? nullptr : Ref<site::Channel>(found->past);
}

Ref<site::Channel> PastView::channel(const Ref<site::Channel>& now, const QString& bindString)
{
    if (!now)
        return {};
    if (const Ref<site::Channel> past = known(*now))
        return past;
    const QString name = nameOf(*now, bindString); // the host's channel may do anything here
    const Ref<PastChannel> past = values::make<PastChannel>(now, m_isMissing);
    past->show(valueOf(name));
    m_known.insert(now.get(), {now, past, name});
    return past;
}

std::optional<double> PastView::rawWord(const site::Channel& channel)
{
    const std::optional<double> word = wordOf(channel, channel.Value());
    if (!word)
        noteMissing();
    return word;
}

} // namespace zan::wrappers
