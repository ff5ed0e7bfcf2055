#include "values/Format.h"

#include "values/Convert.h"
#include "values/DateText.h"
#include "values/FormatOutput.h"
#include "values/FormatPattern.h"
#include "values/NumberText.h"

#include <array>
#include <cmath>
#include <memory>
#include <optional>

namespace zan::values {

namespace {

/// Format texts beyond this length are refused. One character of a format makes at most 22 of the result (the
/// token `c`), so this bounds the result too.
constexpr qsizetype LongestFormat = 4 * 1024 * 1024;
/// Longer format texts are taken apart every time: nobody types them, and the cache stays small.
constexpr qsizetype LongestKeptFormat = 256;

/// Format texts that were taken apart, the newest of each hash place. Belongs to one thread.
class PatternCache
{
public:
    const FormatPattern& pattern(QStringView text)
    {
        Entry& entry = m_entries[qHash(text) % m_entries.size()];
        if (!entry.pattern || entry.text != text) {
            auto pattern = std::make_unique<const FormatPattern>(text);
            entry.text = text.toString();
            entry.pattern = std::move(pattern);
        }
        return *entry.pattern;
    }

private:
    struct Entry
    {
        QString text;
        std::unique_ptr<const FormatPattern> pattern;
    };
    std::array<Entry, 256> m_entries;
};

Decimal decimalOf(const Variant& value)
{
    switch (value.kind()) {
    case Kind::Boolean:
        return Decimal(std::int64_t(value.boolean() ? -1 : 0));
    case Kind::Byte:
        return Decimal(std::int64_t(value.byte()));
    case Kind::Integer:
        return Decimal(std::int64_t(value.integer()));
    case Kind::Long:
        return Decimal(std::int64_t(value.longInteger()));
    case Kind::Single:
        return Decimal(value.single());
    case Kind::Currency:
        return Decimal(value.currency());
    default:
        return Decimal(value.real());
    }
}

double sizeOf(const Variant& value)
{
    double number = 0;
    return tryToDouble(value, number) == ErrorNumber::None ? number : 0;
}

/// One formatting: a pattern and the settings of the week.
class Formatter
{
public:
    Formatter(const FormatPattern& pattern, FirstDayOfWeek firstDay, FirstWeekOfYear firstWeek)
        : m_pattern(pattern)
        , m_firstDay(int(firstDay))
        , m_firstWeek(int(firstWeek))
    {}

    /// Any value but an object and an array.
    QString text(const Variant& value) const
    {
        if (m_pattern.general == General::AsItIs)
            return toText(value);
        if (m_pattern.general == General::Number)
            return generalNumber(value);
        if (m_pattern.sections.front().kind == SectionKind::Text)
            return underText(value);
        switch (value.kind()) {
        case Kind::Null:
        case Kind::Empty:
            return withoutValue(value.isNull());
        case Kind::String:
            return underNumberOrDate(value.text());
        case Kind::Error:
            return toText(value);
        default:
            return number(value);
        }
    }

private:
    /// Every value that is a number in some way as that number; any other text stays as it is.
    static QString generalNumber(const Variant& value)
    {
        switch (value.kind()) {
        case Kind::Boolean:
        case Kind::Date:
            return displayText(sizeOf(value));
        case Kind::String: {
            const auto parsed = numberFromText(value.text());
            return parsed && std::isfinite(*parsed) ? displayText(*parsed) : value.text();
        }
        default:
            return toText(value);
        }
    }

    QString underText(const Variant& value) const
    {
        const auto& sections = m_pattern.sections;
        if (value.isNull() && sections.size() < 2)
            raise(ErrorNumber::InvalidNull);
        const QString text = value.isNull() ? QString() : toText(value);
        FormatOutput output;
        putText(output, text.isEmpty() && sections.size() > 1 ? sections[1] : sections[0], text);
        return output.text();
    }

    /// Null and Empty have a section of their own, the fourth.
    QString withoutValue(bool isNull) const
    {
        FormatOutput output;
        if (m_pattern.sections.size() == 4 && m_pattern.sections[3].kind != SectionKind::Empty) {
            const FormatSection& section = m_pattern.sections[3];
            if (section.kind == SectionKind::Number)
                putNumber(output, section, Decimal(std::int64_t(0)), false);
            else
                putLiterals(output, section);
        } else if (isNull) {
            raise(ErrorNumber::InvalidNull);
        }
        return output.text();
    }

    /// A text that is a number or a date is formatted as one; any other text stays as it is.
    QString underNumberOrDate(const QString& text) const
    {
        if (m_pattern.sections.front().kind == SectionKind::Date) {
            if (const auto date = dateFromText(text))
                return number(*date);
        }
        const auto parsed = numberFromText(text);
        if (!parsed || !std::isfinite(*parsed))
            return text;
        return number(*parsed);
    }

    QString number(const Variant& value) const
    {
        const auto& sections = m_pattern.sections;
        const FormatSection* section = &sections[0];
        const double size = value.is(Kind::Double) ? value.real() : sizeOf(value);
        bool sign = true;
        if (sections.size() > 1 && section->kind != SectionKind::Date) {
            if (size < 0 && sections[1].kind != SectionKind::Empty) {
                section = &sections[1];
                sign = false; // the section brings its own mark
            } else if (size == 0 && sections.size() > 2 && sections[2].kind != SectionKind::Empty) {
                section = &sections[2];
            }
        }
        FormatOutput output;
        put(output, *section, value, size, sign);
        return output.text();
    }

    void put(FormatOutput& output, const FormatSection& section, const Variant& value, double size, bool sign) const
    {
        switch (section.kind) {
        case SectionKind::Empty:
            break;
        case SectionKind::Literal:
            if (sign && size < 0)
                output.put(u'-');
            putLiterals(output, section);
            break;
        case SectionKind::Number:
            if (std::isfinite(size))
                putNumber(output, section, decimalOf(value), sign);
            else
                output.put(displayText(sign ? size : std::fabs(size)));
            break;
        case SectionKind::Date:
            putDate(output, section, Date{size}, m_firstDay, m_firstWeek);
            break;
        case SectionKind::Text:
            putText(output, section, toText(value));
            break;
        }
    }

    const FormatPattern& m_pattern;
    int m_firstDay;
    int m_firstWeek;
};

} // namespace

QString format(const Variant& value, QStringView formatText, FirstDayOfWeek firstDay, FirstWeekOfYear firstWeek)
{
    if (value.isObject())
        return format(plainValue(value), formatText, firstDay, firstWeek);
    if (value.isArray())
        raise(ErrorNumber::TypeMismatch);
    if (formatText.size() > LongestKeptFormat) {
        if (formatText.size() > LongestFormat)
            raise(ErrorNumber::OutOfStringSpace);
        return Formatter(FormatPattern(formatText), firstDay, firstWeek).text(value);
    }
    // On the heap: a library whose threads' own memory is large cannot be loaded by a program that runs already.
    thread_local const auto cache = std::make_unique<PatternCache>();
    return Formatter(cache->pattern(formatText), firstDay, firstWeek).text(value);
}

} // namespace zan::values
