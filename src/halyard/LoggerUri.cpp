#include "halyard/LoggerUri.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <cmath>

namespace zan::halyard {

namespace {

/// Text from outside as part of a message: short and in one line.
QString quoted(const QString& text)
{
    constexpr qsizetype longest = 60;
    const QString line = text.simplified();
    return QStringLiteral("\"%1\"").arg(line.size() > longest ? line.left(longest) + QStringLiteral("...") : line);
}

QString decoded(QStringView text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

bool isSchemeName(QStringView name)
{
    const auto isLetter = [](QChar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); };
    const auto isFit = [&](QChar c) {
        return isLetter(c) || (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.';
    };
    return !name.isEmpty() && isLetter(name.front()) && std::all_of(name.begin(), name.end(), isFit);
}

QString rangeText(double lowest, double highest)
{
    return QStringLiteral("a number from %1 to %2")
        .arg(QString::number(lowest, 'g', 12), QString::number(highest, 'g', 12));
}

} // namespace

QString LoggerUri::parse(const QString& text, LoggerUri& result)
{
    if (text.size() > Longest)
        return QStringLiteral("The logger URI is longer than %1 characters.").arg(Longest);
    const QString trimmed = text.trimmed();
    const qsizetype colon = trimmed.indexOf(u':');
    if (colon < 0 || !isSchemeName(QStringView(trimmed).left(colon)))
        return QStringLiteral(
                   "%1 is no logger URI: it has to begin with a kind of logger and a colon, as \"sim:\" does.")
            .arg(quoted(trimmed));
    const QStringView rest = QStringView(trimmed).mid(colon + 1);
    const qsizetype query = rest.indexOf(u'?');
    result.scheme = trimmed.left(colon).toLower();
    result.address = decoded(query < 0 ? rest : rest.left(query));
    result.options.clear();
    if (query < 0)
        return {};
    for (const QStringView part : rest.mid(query + 1).split(u'&', Qt::SkipEmptyParts)) {
        const qsizetype equals = part.indexOf(u'=');
        if (equals == 0)
            return QStringLiteral("The logger URI has an option without a name: %1.").arg(quoted(part.toString()));
        const QStringView name = equals < 0 ? part : part.left(equals);
        result.options.emplace_back(decoded(name), equals < 0 ? QString() : decoded(part.mid(equals + 1)));
    }
    return {};
}

UriOptions::UriOptions(std::vector<LoggerUri::Option> options)
{
    for (LoggerUri::Option& option : options) {
        const QString name = option.first.trimmed().toLower();
        const bool isTwice = std::any_of(m_entries.cbegin(), m_entries.cend(),
                                         [&](const Entry& entry) { return entry.name == name; });
        if (isTwice && m_error.isEmpty())
            m_error = QStringLiteral("The logger option %1 is given twice.").arg(quoted(name));
        m_entries.push_back({name, option.second.trimmed()});
    }
}

UriOptions::Entry* UriOptions::take(const QString& name)
{
    for (Entry& entry : m_entries) {
        if (entry.name == name) {
            entry.isTaken = true;
            return &entry;
        }
    }
    return nullptr;
}

std::int64_t UriOptions::integer(const QString& name, std::int64_t fallback, std::int64_t lowest,
                                 std::int64_t highest)
{
    const Entry* entry = take(name);
    if (!entry)
        return fallback;
    bool isNumber = false;
    const qlonglong value = entry->value.toLongLong(&isNumber);
    if (isNumber && value >= lowest && value <= highest)
        return value;
    reject(name, entry->value, QStringLiteral("a whole number from %1 to %2").arg(lowest).arg(highest));
    return fallback;
}

double UriOptions::number(const QString& name, double fallback, double lowest, double highest)
{
    const Entry* entry = take(name);
    if (!entry)
        return fallback;
    bool isNumber = false;
    const double value = entry->value.toDouble(&isNumber);
    if (isNumber && std::isfinite(value) && value >= lowest && value <= highest)
        return value;
    reject(name, entry->value, rangeText(lowest, highest));
    return fallback;
}

bool UriOptions::flag(const QString& name, bool fallback)
{
    const Entry* entry = take(name);
    if (!entry)
        return fallback;
    const QString value = entry->value.toLower();
    for (const char* yes : {"1", "true", "yes", "on"}) {
        if (value == QLatin1String(yes))
            return true;
    }
    for (const char* no : {"0", "false", "no", "off"}) {
        if (value == QLatin1String(no))
            return false;
    }
    reject(name, entry->value, QStringLiteral("1 or 0"));
    return fallback;
}

QString UriOptions::text(const QString& name, const QString& fallback)
{
    const Entry* entry = take(name);
    return entry ? entry->value : fallback;
}

int UriOptions::choice(const QString& name, const QStringList& choices)
{
    const Entry* entry = take(name);
    if (!entry)
        return 0;
    const qsizetype found = choices.indexOf(entry->value.toLower());
    if (found >= 0)
        return int(found);
    reject(name, entry->value, QStringLiteral("one of ") + choices.join(QStringLiteral(", ")));
    return 0;
}

std::vector<LoggerUri::Option> UriOptions::withPrefix(const QString& prefix)
{
    std::vector<LoggerUri::Option> found;
    for (Entry& entry : m_entries) {
        if (!entry.name.startsWith(prefix))
            continue;
        entry.isTaken = true;
        found.emplace_back(entry.name.mid(prefix.size()), entry.value);
    }
    return found;
}

void UriOptions::reject(const QString& name, const QString& value, const QString& expected)
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("The logger option %1 has the value %2, but needs %3.")
                      .arg(quoted(name), quoted(value), expected);
}

QString UriOptions::error() const
{
    if (!m_error.isEmpty())
        return m_error;
    for (const Entry& entry : m_entries) {
        if (!entry.isTaken)
            return QStringLiteral("This kind of logger has no option %1.").arg(quoted(entry.name));
    }
    return {};
}

} // namespace zan::halyard
