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

// What a search reads: the characters of a text in its order and as they are compared, and the first place at or after
// one where a character stands.

struct Plain
{
    char16_t operator()(qsizetype place) const { return text[place].unicode(); }
    qsizetype next(char16_t wanted, qsizetype place) const
    {
        const qsizetype found = text.indexOf(QChar(wanted), place); // many characters at once
        return found < 0 ? text.size() : found;
    }
    QStringView text;
};

template <class Reader>
qsizetype nextOneByOne(const Reader& reader, char16_t wanted, qsizetype place)
{
    while (place < reader.text.size() && reader(place) != wanted)
        ++place;
    return place;
}

struct Folded
{
    char16_t operator()(qsizetype place) const { return folded(text, place); }
    qsizetype next(char16_t wanted, qsizetype place) const { return nextOneByOne(*this, wanted, place); }
    QStringView text;
};

struct PlainBackward
{
    char16_t operator()(qsizetype place) const { return text[text.size() - 1 - place].unicode(); }
    qsizetype next(char16_t wanted, qsizetype place) const { return nextOneByOne(*this, wanted, place); }
    QStringView text;
};

struct FoldedBackward
{
    char16_t operator()(qsizetype place) const { return folded(text, text.size() - 1 - place); }
    qsizetype next(char16_t wanted, qsizetype place) const { return nextOneByOne(*this, wanted, place); }
    QStringView text;
};

} // namespace

TextSearch::TextSearch(QStringView wanted, Qt::CaseSensitivity sensitivity, Direction direction)
    : m_wanted(wanted)
    , m_ignoresCase(sensitivity == Qt::CaseInsensitive)
{
    if (!m_ignoresCase && direction == Direction::Forward)
        return;
    m_prepared.resize(wanted.size());
    for (qsizetype place = 0; place < wanted.size(); ++place)
        m_prepared[place] = m_ignoresCase ? QChar(folded(wanted, place)) : wanted[place];
    if (direction == Direction::Backward)
        std::reverse(m_prepared.begin(), m_prepared.end());
    m_wanted = m_prepared;
}

qsizetype TextSearch::find(QStringView text, qsizetype from)
{
    return m_ignoresCase ? search(Folded{text}, from) : search(Plain{text}, from);
}

qsizetype TextSearch::findLast(QStringView text)
{
    const qsizetype found = m_ignoresCase ? search(FoldedBackward{text}, 0) : search(PlainBackward{text}, 0);
    return found < 0 ? -1 : text.size() - found - m_wanted.size();
}

template <class Reader>
qsizetype TextSearch::search(const Reader& text, qsizetype from)
{
    constexpr qsizetype WasteAllowed = 256;
    const qsizetype length = m_wanted.size();
    if (length == 0)
        return -1;
    const char16_t* const wanted = m_wanted.utf16();
    qsizetype wasted = 0; // characters compared in vain
    for (qsizetype place = from; place + length <= text.text.size(); ++place) {
        place = text.next(wanted[0], place);
        if (place + length > text.text.size())
            break;
        qsizetype same = 1;
        while (same < length && text(place + same) == wanted[same])
            ++same;
        if (same == length)
            return place;
        wasted += same;
        if (wasted > WasteAllowed + 2 * (place - from))
            return searchByBorders(text, place + 1);
    }
    return -1;
}

/// After a mismatch the longest start of the wanted text that ends there goes on: no character is read twice.
template <class Reader>
qsizetype TextSearch::searchByBorders(const Reader& text, qsizetype from)
{
    findBorders();
    const char16_t* const wanted = m_wanted.utf16();
    const qsizetype length = m_wanted.size();
    qsizetype same = 0;
    for (qsizetype place = from; place < text.text.size(); ++place) {
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
