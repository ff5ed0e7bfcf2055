#include "zanbench/OptionParser.h"

#include <QDateTime>

namespace zan::host {

namespace {

const QStringList Actions{QStringLiteral("export"), QStringLiteral("info"), QStringLiteral("check"),
                          QStringLiteral("vacuum")};

} // namespace

std::optional<std::int64_t> momentFromIso(const QString& text)
{
    const QDateTime time = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!time.isValid())
        return std::nullopt;
    return time.toMSecsSinceEpoch();
}

Parsed<HistoryOptions> parseHistory(const QStringList& arguments)
{
    OptionParser parser(
        QStringLiteral("history"),
        QStringLiteral("Usage: zanbench history SCHEME export|info|check|vacuum [options]\n"
                       "  export  writes the records as CSV\n"
                       "  info    says where they are kept, how many there are and since when\n"
                       "  check   reads everything and compares it with the figures kept of it\n"
                       "  vacuum  gives the room of what is gone back to the disk; nobody may be writing\n"));
    const QString out = QStringLiteral("out"), from = QStringLiteral("from"), until = QStringLiteral("until"),
                  channel = QStringLiteral("channel"), utc = QStringLiteral("utc");
    parser.option(out, QStringLiteral("FILE"),
                  QStringLiteral("Export to this new file; else to the standard output."));
    parser.option(from, QStringLiteral("TIME"),
                  QStringLiteral("Export from this time on: 2026-03-01 or 2026-03-01T12:00:00; "
                                 "local, or with Z in UTC."));
    parser.option(until, QStringLiteral("TIME"), QStringLiteral("Export up to this time, without it."));
    parser.option(channel, QStringLiteral("WINDOW|KEY"), QStringLiteral("Export this channel alone."));
    parser.flag(utc, QStringLiteral("Write times in UTC; else they are local with their distance from UTC."));
    if (!parser.read(arguments, 2))
        return parser.answer<HistoryOptions>();
    const auto refuse = [&](const QString& message) { return parser.misuse<HistoryOptions>(message); };
    HistoryOptions options;
    options.scheme = parser.positional();
    if (options.scheme.isEmpty())
        return refuse(QStringLiteral("The scheme file is missing."));
    const QString action = parser.positional(1);
    if (action.isEmpty())
        return refuse(QStringLiteral("What is to be done is missing: export, info, check or vacuum."));
    if (!Actions.contains(action))
        return refuse(QStringLiteral("'%1' is none of export, info, check or vacuum.").arg(action));
    options.action = HistoryOptions::Action(Actions.indexOf(action));
    for (const QString& name : {out, from, until, channel, utc})
        if (parser.has(name) && options.action != HistoryOptions::Action::Export)
            return refuse(QStringLiteral("--%1 belongs to export.").arg(name));
    for (const QString& name : {from, until}) {
        if (!parser.has(name))
            continue;
        const auto time = momentFromIso(parser.text(name));
        if (!time)
            return refuse(QStringLiteral("'%1' is no time like 2026-03-01T12:00:00.").arg(parser.text(name)));
        (name == from ? options.from : options.until) = time;
    }
    options.out = parser.text(out);
    options.channel = parser.text(channel);
    options.isUtc = parser.has(utc);
    return {options, {}, Success};
}

} // namespace zan::host
