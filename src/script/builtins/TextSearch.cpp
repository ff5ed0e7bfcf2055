#include "script/builtins/TextSearch.h"

#include <QChar>

#include <algorithm>

namespace zan::script {

namespace {

/// One half of a character beyond the first 65,536, folded together with its other half.
char16_t foldedSurrogate(QStringView text, qsizetype place)
{
    const char16_t unit = text[place].unicode();
    if (QChar::isHighSurrogate(unit)) {
        const bool isPair = place + 1 < text.size() && text[place + 1].isLowSurrogate();
        if (isPair)
            return QChar::highSurrogate(
                QChar::toCaseFolded(QChar::surrogateToUcs4(unit, text[place + 1].unicode())));
    } else if (place > 0 && text[place - 1].isHighSurrogate()) {
        return QChar::lowSurrogate(QChar::toCaseFolded(QChar::surrogateToUcs4(text[place - 1].unicode(), unit)));
    }
    return unit;
}

char16_t folded(QStringView text, qsizetype place)
{
    const char16_t unit = text[place].unicode();
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? char16_t(unit + ('a' - 'A')) : unit;
    return QChar::isSurrogate(unit) ? foldedSurrogate(text, place) : char16_t(QChar::toCaseFolded(char32_t(unit)));
}

} // namespace

TextSearch::TextSearch(QString wanted, Qt::CaseSensitivity sensitivity, Direction direction)
    : m_wanted(std::move(wanted))
    , m_ignoresCase(sensitivity == Qt::CaseInsensitive)
{
    if (m_ignoresCase) {
        QString lower(m_wanted.size(), Qt::Uninitialized);
        for (qsizetype place = 0; place < m_wanted.size(); ++place)
            lower[place] = QChar(folded(m_wanted, place));
        m_wanted = lower;
    }
    if (direction == Direction::Backward)
        std::reverse(m_wanted.begin(), m_wanted.end());
}

qsizetype TextSearch::find(QStringView text, qsizetype from)
{
    if (m_ignoresCase)
        return search([text](qsizetype place) { return folded(text, place); }, text.size(), from);
    if (m_wanted.size() == 1)
        return text.indexOf(m_wanted.front(), from);
    return search([text](qsizetype place) { return text[place].unicode(); }, text.size(), from);
}

qsizetype TextSearch::findLast(QStringView text)
{
    const qsizetype last = text.size() - 1;
    const qsizetype found =
        m_ignoresCase
            ? search([text, last](qsizetype place) { return folded(text, last - place); }, text.size(), 0)
            : search([text, last](qsizetype place) { return text[last - place].unicode(); }, text.size(), 0);
    return found < 0 ? -1 : text.size() - found - m_wanted.size();
}

template <class Reader>
qsizetype TextSearch::search(const Reader& text, qsizetype size, qsizetype from)
{
    constexpr qsizetype WasteAllowed = 256;
    const qsizetype length = m_wanted.size();
    if (length == 0)
        return -1;
    const char16_t* const wanted = reinterpret_cast<const char16_t*>(m_wanted.utf16());
    qsizetype wasted = 0; // characters compared in vain
    for (qsizetype place = from; place + length <= size; ++place) {
        if (text(place) != wanted[0])
            continue;
        qsizetype same = 1;
        while (same < length && text(place + same) == wanted[same])
            ++same;
        if (same == length)
            return place;
        wasted += same;
        if (wasted > WasteAllowed + 2 * (place - from))
            return searchByBorders(text, size, place + 1);
    }
    return -1;
}

/// After a mismatch the longest start of the wanted text that ends there goes on: no character is read twice.
template <class Reader>
qsizetype TextSearch::searchByBorders(const Reader& text, qsizetype size, qsizetype from)
{
    findBorders();
    const char16_t* const wanted = reinterpret_cast<const char16_t*>(m_wanted.utf16());
    const qsizetype length = m_wanted.size();
    qsizetype same = 0;
    for (qsizetype place = from; place < size; ++place) {
        const char16_t unit = text(place);
        while (same > 0 && wanted[same] != unit)
            same = m_borders[std::size_t(same - 1)];
        if (wanted[same] == unit)
            ++same;
        if (same == length)
            return place - length + 1;
    }
    return -1;
}

void TextSearch::findBorders()
{
    if (!m_borders.empty())
        return;
    m_borders.resize(std::size_t(m_wanted.size()), 0);
    std::int32_t same = 0;
    for (qsizetype place = 1; place < m_wanted.size(); ++place) {
        while (same > 0 && m_wanted[same] != m_wanted[place])
            same = m_borders[std::size_t(same - 1)];
        if (m_wanted[same] == m_wanted[place])
            ++same;
        m_borders[std::size_t(place)] = same;
    }
}

} // namespace zan::script
