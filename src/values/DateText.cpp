#include "values/DateText.h"

#include "values/Calendar.h"

#include <QDate>

#include <array>

namespace zan::values {

namespace {

constexpr qsizetype LongestDateText = 100; // no date is longer; longer texts are not looked at

/// Reads a date text word by word: numbers, separators, month and day names, AM and PM.
class DateParser
{
public:
    DateParser(QStringView text, int currentYear)
        : m_text(text)
        , m_currentYear(currentYear)
    {}

    std::optional<Date> parse()
    {
        while (true) {
            skipBlanks();
            if (m_place >= m_text.size())
                break;
            const char16_t unit = m_text[m_place].unicode();
            if (unit >= u'0' && unit <= u'9') {
                if (!readNumber())
                    return std::nullopt;
            } else if (m_text[m_place].isLetter()) {
                if (!readWord())
                    return std::nullopt;
            } else {
                return std::nullopt;
            }
        }
        return result();
    }

private:
    struct Number
    {
        int value;
        int digits;
    };

    void skipBlanks()
    {
        while (m_place < m_text.size() && m_text[m_place].isSpace())
            ++m_place;
    }
    bool at(char16_t unit) const { return m_place < m_text.size() && m_text[m_place] == unit; }

    std::optional<Number> digits()
    {
        Number number{0, 0};
        while (m_place < m_text.size() && m_text[m_place] >= u'0' && m_text[m_place] <= u'9') {
            if (++number.digits > 4)
                return std::nullopt;
            number.value = number.value * 10 + (m_text[m_place++].unicode() - u'0');
        }
        if (number.digits == 0)
            return std::nullopt;
        return number;
    }

    bool readNumber()
    {
        const auto number = digits();
        if (!number)
            return false;
        skipBlanks();
        if (at(u':'))
            return readTime(number->value);
        if (nextIsHalfOfDay())
            return setTime(number->value, 0, 0);
        if (m_fieldCount == 3)
            return false;
        m_fields[std::size_t(m_fieldCount++)] = *number;
        if (at(u'/') || at(u'-') || at(u',') || at(u'.')) {
            if (m_text[m_place] == u'.' && m_month == 0 && m_fieldCount > 0)
                return false; // 1.5 is a number, not a date
            ++m_place;
            skipBlanks();
            if (m_place >= m_text.size())
                return false; // nothing follows the separator
        }
        return true;
    }

    bool nextIsHalfOfDay() const
    {
        const QStringView rest = m_text.mid(m_place, 2);
        return rest.compare(u"am", Qt::CaseInsensitive) == 0 || rest.compare(u"pm", Qt::CaseInsensitive) == 0;
    }

    bool readTime(int hour)
    {
        std::array<int, 2> parts{0, 0};
        for (int& part : parts) {
            if (!at(u':'))
                break;
            ++m_place;
            skipBlanks();
            const auto number = digits();
            if (!number || number->digits > 2)
                return false;
            part = number->value;
            skipBlanks();
        }
        return setTime(hour, parts[0], parts[1]);
    }

    bool setTime(int hour, int minute, int second)
    {
        if (m_hasTime || hour > 23 || minute > 59 || second > 59)
            return false;
        m_hasTime = true;
        if (nextIsHalfOfDay()) {
            const bool afternoon = m_text[m_place].toLower() == u'p';
            m_place += 2;
            if (hour == 0 ? afternoon : (afternoon && hour > 12))
                return false;
            if (afternoon && hour < 12)
                hour += 12;
            else if (!afternoon && hour == 12)
                hour = 0;
            else if (!afternoon && hour > 12)
                return false;
        }
        m_seconds = (hour * 60 + minute) * 60 + second;
        return true;
    }

    bool readWord()
    {
        const qsizetype start = m_place;
        while (m_place < m_text.size() && m_text[m_place].isLetter())
            ++m_place;
        const QStringView word = m_text.mid(start, m_place - start);
        if (const int month = monthByName(word)) {
            if (m_month != 0)
                return false;
            m_month = month;
        } else if (weekdayByName(word) == 0 || m_fieldCount > 0 || m_month != 0) {
            return false;
        }
        skipBlanks();
        if (at(u',') || at(u'-') || at(u'/') || at(u'.'))
            ++m_place;
        return true;
    }

    std::optional<Date> result() const
    {
        if (m_fieldCount == 0 && m_month == 0) {
            if (!m_hasTime)
                return std::nullopt;
            return dateOf(0, m_seconds);
        }
        return m_month != 0 ? namedMonth() : numbered();
    }

    int yearOf(Number number) const
    {
        if (number.digits > 2)
            return number.value;
        return number.value < 30 ? number.value + 2000 : number.value + 1900;
    }
    int thisYear() const { return m_currentYear != 0 ? m_currentYear : QDate::currentDate().year(); }

    std::optional<Date> build(int year, int month, int day) const
    {
        if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month))
            return std::nullopt;
        return dateOf(dayNumber(year, month, day), m_seconds);
    }

    std::optional<Date> namedMonth() const
    {
        const Number first = m_fields[0];
        if (m_fieldCount == 1) {
            if (first.digits <= 2 && first.value >= 1 && first.value <= daysInMonth(thisYear(), m_month))
                return build(thisYear(), m_month, first.value);
            return build(yearOf(first), m_month, 1);
        }
        if (m_fieldCount != 2)
            return std::nullopt;
        const bool yearFirst = first.digits > 2 || first.value > 31;
        return yearFirst ? build(yearOf(first), m_month, m_fields[1].value)
                         : build(yearOf(m_fields[1]), m_month, first.value);
    }

    std::optional<Date> numbered() const
    {
        if (m_fieldCount < 2)
            return std::nullopt;
        const Number a = m_fields[0];
        const Number b = m_fields[1];
        if (m_fieldCount == 2) {
            if (a.digits > 2)
                return build(a.value, b.value, 1);
            if (b.digits > 2)
                return build(b.value, a.value, 1);
            return a.value > 12 ? build(thisYear(), b.value, a.value) : build(thisYear(), a.value, b.value);
        }
        const Number c = m_fields[2];
        if (a.digits > 2 || a.value > 31)
            return build(yearOf(a), b.value, c.value);
        // Day first only where the month cannot be first.
        return a.value > 12 ? build(yearOf(c), b.value, a.value) : build(yearOf(c), a.value, b.value);
    }

    QStringView m_text;
    int m_currentYear;
    qsizetype m_place = 0;
    std::array<Number, 3> m_fields{};
    int m_fieldCount = 0;
    int m_month = 0;
    bool m_hasTime = false;
    int m_seconds = 0;
};

} // namespace

std::optional<Date> dateFromText(QStringView text, int currentYear)
{
    if (text.isEmpty() || text.size() > LongestDateText)
        return std::nullopt;
    return DateParser(text, currentYear).parse();
}

} // namespace zan::values
