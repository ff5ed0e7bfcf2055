#include "zanbench/LiveValues.h"

#include "zanbench/Commands.h"

#include "values/Format.h"
#include "window/BenchWindow.h"

#include <array>
#include <vector>

namespace zan::host {

namespace {

using Row = std::array<QString, 4>;

QString shownValue(site::Channel& channel)
{
    try {
        return values::format(channel.Value(), channel.Format());
    } catch (const values::RuntimeError& error) {
        return QStringLiteral("(%1)").arg(error.description());
    }
}

QString padded(const std::vector<Row>& rows)
{
    std::array<qsizetype, 4> widths{};
    for (const Row& row : rows)
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    QString text;
    for (const Row& row : rows) {
        QString line = row[0].leftJustified(widths[0]) + QStringLiteral("  ") + row[1].leftJustified(widths[1]) +
                       QStringLiteral("  ") + row[2].rightJustified(widths[2]) + QLatin1Char(' ') + row[3];
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += oneLine(line) + QLatin1Char('\n');
    }
    return text;
}

} // namespace

QString liveValues(const window::BenchWindow& panel)
{
    std::vector<const site::Channel*> seen;
    std::vector<Row> rows;
    const auto add = [&](const Ref<site::Channel>& channel) {
        if (!channel || std::find(seen.begin(), seen.end(), channel.get()) != seen.end())
            return;
        seen.push_back(channel.get());
        const QString window = channel->XMLNode().parent().child(values::Name("KEY")).text();
        rows.push_back(
            {window + QLatin1Char('|') + channel->Key(), channel->Label(), shownValue(*channel), channel->Units()});
    };
    if (const auto controls = panel.Controls())
        for (std::int32_t i = 1; i <= controls->Count(); ++i)
            add(controls->Control(binding::Variant(i))->Channel());
    if (const auto window = panel.CurrentWindow())
        for (std::int32_t i = 1; i <= window->Count(); ++i)
            add(window->Item(binding::Variant(i)));
    return padded(rows);
}

} // namespace zan::host
