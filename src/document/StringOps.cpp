#include "document/StringOps.h"

#include "values/RuntimeError.h"

namespace zan::document::StringOps {

namespace {

template <class Predicate>
QString trimmed(const QString& text, Predicate goes)
{
    qsizetype first = 0;
    qsizetype end = text.size();
    while (first < end && goes(text[first].unicode()))
        ++first;
    while (end > first && goes(text[end - 1].unicode()))
        --end;
    return text.sliced(first, end - first);
}

} // namespace

QString TrimTabs(const QString& text)
{
    const QString rest = trimmed(text, [](char16_t unit) { return unit == '\t'; });
    // COMPAT: the last tab cannot be taken off a text of tabs alone.
    if (rest.isEmpty() && !text.isEmpty())
        values::raise(values::ErrorNumber::InvalidCall);
    return rest;
}

QString TrimWhitespace(const QString& text)
{
    return trimmed(text, [](char16_t unit) { return unit == '\t' || unit == ' ' || unit == '\n' || unit == '\r'; });
}

} // namespace zan::document::StringOps
