#include "keel/RowText.h"

namespace zan::keel {

namespace {

constexpr QChar Quote = u'"';
constexpr QChar Comma = u',';

bool isBlank(QChar character)
{
    return character == u' ' || character == u'\t';
}

qsizetype endOfDigits(const QString& text, qsizetype from)
{
    while (from < text.size() && text[from] >= u'0' && text[from] <= u'9')
        ++from;
    return from;
}

qsizetype afterSign(const QString& text, qsizetype from)
{
    return from < text.size() && (text[from] == u'-' || text[from] == u'+') ? from + 1 : from;
}

} // namespace

qsizetype firstSolid(const QString& line, qsizetype from)
{
    while (from < line.size() && isBlank(line[from]))
        ++from;
    return from;
}

qsizetype endOfWord(const QString& line, qsizetype from)
{
    while (from < line.size() && !isBlank(line[from]) && line[from] != Comma)
        ++from;
    return from;
}

bool isDecimal(const QString& text)
{
    const qsizetype whole = afterSign(text, 0);
    qsizetype place = endOfDigits(text, whole);
    qsizetype digits = place - whole;
    if (place < text.size() && text[place] == u'.') {
        const qsizetype decimals = place + 1;
        place = endOfDigits(text, decimals);
        digits += place - decimals;
    }
    if (digits == 0)
        return false;
    if (place < text.size() && text[place].toUpper() == u'E') {
        const qsizetype exponent = afterSign(text, place + 1);
        place = endOfDigits(text, exponent);
        if (place == exponent)
            return false;
    }
    return place == text.size();
}

QString shortened(const QString& text)
{
    constexpr qsizetype Longest = 40;
    return text.size() > Longest ? text.left(Longest) + QStringLiteral("...") : text;
}

bool RowText::next()
{
    m_text.clear();
    m_start = firstSolid(m_line, m_place);
    if (m_start >= m_line.size())
        return false;
    m_place = m_start;
    if (m_line[m_place] == Quote)
        takeQuoted();
    else
        takePlain();
    m_text.replace(u'\t', u' ');
    m_place = firstSolid(m_line, m_place);
    if (m_place < m_line.size() && m_line[m_place] == Comma) {
        ++m_place;
    } else if (m_place < m_line.size() && m_problem.isEmpty()) {
        m_start = m_place;
        m_problem = QStringLiteral("A comma is missing here.");
    }
    return true;
}

void RowText::takeQuoted()
{
    while (++m_place < m_line.size()) {
        if (m_line[m_place] == Quote && (m_place + 1 >= m_line.size() || m_line[m_place + 1] != Quote)) {
            ++m_place;
            return;
        }
        m_place += m_line[m_place] == Quote ? 1 : 0; // the second of two stands for one
        m_text.append(m_line[m_place]);
    }
    m_problem = QStringLiteral("The quote that begins here has no end in its line.");
}

void RowText::takePlain()
{
    const qsizetype end = m_line.indexOf(Comma, m_place);
    m_text = m_line.mid(m_place, end < 0 ? -1 : end - m_place).trimmed();
    m_place = end < 0 ? m_line.size() : end;
}

} // namespace zan::keel
