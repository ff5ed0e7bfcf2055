#include "zandata/data/SeenCsv.h"

#include "values/TableText.h"

#include <algorithm>
#include <map>

namespace zan::zandata {

namespace {

const QLatin1String LineEnd("\r\n");

struct SeenChannel
{
    const TrendChannel* channel;
    std::vector<HistoryPoint> points;
};

std::vector<SeenChannel> seenChannels(const Trend& trend)
{
    std::vector<SeenChannel> result;
    for (const TrendChannel& channel : trend.channels()) {
        if (!trend.isShown(channel))
            continue;
        SeenChannel seen{&channel, {}};
        for (const HistoryPoint& point : channel.cache.points()) {
            if (point.last >= trend.view().from() && point.first < trend.view().until())
                seen.points.push_back(point);
        }
        result.push_back(std::move(seen));
    }
    return result;
}

QString headerOf(const TrendChannel& channel)
{
    return values::csvCell(channel.units.isEmpty()
                               ? channel.label
                               : channel.label + QLatin1String(" (") + channel.units + QLatin1Char(')'));
}

QString byMoment(const std::vector<SeenChannel>& channels)
{
    std::map<HistoryTime, std::vector<QString>> rows;
    QString text = QStringLiteral("Time");
    for (std::size_t i = 0; i < channels.size(); ++i) {
        text += QLatin1Char(',') + headerOf(*channels[i].channel);
        for (const HistoryPoint& point : channels[i].points) {
            std::vector<QString>& row = rows[point.first];
            row.resize(channels.size());
            row[i] = values::csvNumber(point.mean);
        }
    }
    text += LineEnd;
    for (const auto& [time, cells] : rows) {
        text += timeText(time);
        for (const QString& cell : cells)
            text += QLatin1Char(',') + cell;
        text += LineEnd;
    }
    return text;
}

QString byPoint(const std::vector<SeenChannel>& channels)
{
    QString text = QStringLiteral("Channel,From,To,Minimum,Mean,Maximum,Records") + LineEnd;
    for (const SeenChannel& seen : channels) {
        const QString name = headerOf(*seen.channel);
        for (const HistoryPoint& point : seen.points) {
            text += name;
            for (const QString& cell :
                 {timeText(point.first), timeText(point.last), values::csvNumber(point.minimum),
                  values::csvNumber(point.mean), values::csvNumber(point.maximum), QString::number(point.count)})
                text += QLatin1Char(',') + cell;
            text += LineEnd;
        }
    }
    return text;
}

} // namespace

QString seenCsv(const Trend& trend)
{
    const std::vector<SeenChannel> channels = seenChannels(trend);
    const bool isPlain = std::all_of(channels.begin(), channels.end(), [](const SeenChannel& seen) {
        return std::all_of(seen.points.begin(), seen.points.end(),
                           [](const HistoryPoint& point) { return point.count == 1; });
    });
    return isPlain ? byMoment(channels) : byPoint(channels);
}

} // namespace zan::zandata
