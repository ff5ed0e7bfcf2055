#include "values/FormatPattern.h"

#include <algorithm>
#include <array>

namespace zan::values {

namespace {

struct NamedFormat
{
    const char16_t* name;
    const char16_t* meaning;
};

/// The named formats as format texts, English names and forms.
constexpr std::array NamedFormats{
    NamedFormat{u"Currency", u"$#,##0.00;($#,##0.00)"},
    NamedFormat{u"Fixed", u"0.00"},
    NamedFormat{u"Standard", u"#,##0.00"},
    NamedFormat{u"Percent", u"0.00%"},
    NamedFormat{u"Scientific", u"0.00E+00"},
    NamedFormat{u"Yes/No", u"\"Yes\";\"Yes\";\"No\""},
    NamedFormat{u"True/False", u"\"True\";\"True\";\"False\""},
    NamedFormat{u"On/Off", u"\"On\";\"On\";\"Off\""},
    NamedFormat{u"General Date", u"c"},
    NamedFormat{u"Long Date", u"dddddd"},
    NamedFormat{u"Medium Date", u"dd-mmm-yy"},
    NamedFormat{u"Short Date", u"ddddd"},
    NamedFormat{u"Long Time", u"ttttt"},
    NamedFormat{u"Medium Time", u"hh:nn AM/PM"},
    NamedFormat{u"Short Time", u"hh:nn"},
};
constexpr const char16_t* GeneralNumber = u"General Number";

char16_t lower(QChar unit) noexcept
{
    return unit >= u'A' && unit <= u'Z' ? char16_t(unit.unicode() | 0x20) : unit.unicode();
}

/// A mark for the half of the day at the start of a text; its length is 0 when there is none.
struct HalfOfDayMark
{
    Step step = Step::HalfOfDayUpper;
    qsizetype length = 0;
};

HalfOfDayMark halfOfDayMark(QStringView text)
{
    const bool small = text[0] == u'a';
    if (text.startsWith(u"AM/PM", Qt::CaseInsensitive))
        return {small ? Step::HalfOfDayLower : Step::HalfOfDayUpper, 5};
    if (text.startsWith(u"AMPM", Qt::CaseInsensitive))
        return {Step::HalfOfDayUpper, 4};
    if (text.startsWith(u"A/P", Qt::CaseInsensitive))
        return {small ? Step::HalfOfDayLetterLower : Step::HalfOfDayLetterUpper, 3};
    return {};
}

/// Number of equal letters at the start of a text, case ignored.
qsizetype runLength(QStringView text, qsizetype most) noexcept
{
    const char16_t letter = lower(text[0]);
    qsizetype length = 1;
    while (length < most && length < text.size() && lower(text[length]) == letter)
        ++length;
    return length;
}

bool startsDateField(QStringView text)
{
    switch (lower(text[0])) {
    case u'c':
    case u'd':
    case u'h':
    case u'm':
    case u'n':
    case u'q':
    case u's':
    case u'w':
    case u'y':
        return true;
    case u't':
        return runLength(text, 5) == 5;
    case u'a':
        return halfOfDayMark(text).length > 0;
    default:
        return false;
    }
}

/// Length of a literal that is marked as one at the start of a text: an escaped character or a quoted text with
/// its quotes; 0 when the text starts otherwise. An open quote reaches to the end.
qsizetype markedLiteral(QStringView text)
{
    if (text[0] == u'\\')
        return std::min<qsizetype>(2, text.size());
    if (text[0] != u'"')
        return 0;
    const qsizetype end = text.indexOf(u'"', 1);
    return end < 0 ? text.size() : end + 1;
}

SectionKind kindOf(QStringView text)
{
    for (qsizetype place = 0; place < text.size();) {
        const QStringView rest = text.mid(place);
        if (const qsizetype length = markedLiteral(rest)) {
            place += length;
            continue;
        }
        switch (rest[0].unicode()) {
        case u'0':
        case u'#':
        case u'%':
            return SectionKind::Number;
        case u'@':
        case u'&':
        case u'<':
        case u'>':
        case u'!':
            return SectionKind::Text;
        default:
            if (startsDateField(rest))
                return SectionKind::Date;
        }
        ++place;
    }
    return text.isEmpty() ? SectionKind::Empty : SectionKind::Literal;
}

/// Takes one section of a format text apart.
class SectionParser
{
public:
    SectionParser(QStringView text, SectionKind kind)
        : m_text(text)
    {
        m_section.kind = kind;
    }

    FormatSection parse()
    {
        while (m_place < m_text.size()) {
            if (!takeMarkedLiteral() && !takeStep())
                literal(m_text[m_place++]);
        }
        if (m_section.kind == SectionKind::Number)
            finishNumber();
        return std::move(m_section);
    }

private:
    void add(Step step, std::int32_t count = 1)
    {
        if (!m_section.items.empty() && m_section.items.back().step == step &&
            (step == Step::Literal || step == Step::WholePlaces || step == Step::FractionPlaces))
            m_section.items.back().count += count;
        else
            m_section.items.push_back({step, count});
    }
    void literal(QChar unit)
    {
        m_section.literals.append(unit);
        add(Step::Literal);
    }

    bool takeMarkedLiteral()
    {
        const QStringView rest = m_text.mid(m_place);
        const qsizetype length = markedLiteral(rest);
        if (length == 0)
            return false;
        m_place += length;
        QStringView shown = rest.mid(0, length);
        if (shown[0] == u'"') {
            shown = shown.mid(1);
            if (shown.endsWith(u'"'))
                shown.chop(1);
        } else if (shown.size() > 1) {
            shown = shown.mid(1);
        }
        if (!shown.isEmpty()) {
            m_section.literals.append(shown);
            add(Step::Literal, std::int32_t(shown.size()));
        }
        return true;
    }

    bool takeStep()
    {
        switch (m_section.kind) {
        case SectionKind::Number:
            return takeNumberStep();
        case SectionKind::Date:
            return takeDateStep();
        case SectionKind::Text:
            return takeTextStep();
        default:
            return false;
        }
    }

    bool takeNumberStep();
    void takePlace(bool always);
    bool takeExponent();
    void finishNumber();
    bool takeDateStep();
    bool takeTextStep();
    void addPlace(Step step);
    void setCase(LetterCase letterCase);

    QStringView m_text;
    qsizetype m_place = 0;
    FormatSection m_section;
    bool m_pointSeen = false;
    std::int32_t m_firstZero = -1; ///< first whole place that always shows
    std::int64_t m_commas = 0;     ///< commas since the last digit place
    bool m_afterHour = false;      ///< the last date field was an hour: `m` is minutes
    LetterCase m_case = LetterCase::Kept;
};

void SectionParser::takePlace(bool always)
{
    if (!m_pointSeen) {
        m_section.thousands = m_section.thousands || m_commas > 0;
        if (always && m_firstZero < 0)
            m_firstZero = m_section.wholePlaces;
        ++m_section.wholePlaces;
        add(Step::WholePlaces);
    } else {
        ++m_section.fractionPlaces;
        if (always)
            m_section.leastFraction = m_section.fractionPlaces;
        add(Step::FractionPlaces);
    }
    m_commas = 0;
}

/// `E+00` and its like; without a digit after the sign the letters are literals. Any digit there is a place of the
/// exponent: a number before a literal "e-1" would read as a tenth of itself.
bool SectionParser::takeExponent()
{
    if (m_section.hasExponent || m_text.size() - m_place < 3)
        return false;
    const QChar sign = m_text[m_place + 1];
    const QChar first = m_text[m_place + 2];
    const auto isPlace = [](QChar unit) { return unit == u'#' || (unit >= u'0' && unit <= u'9'); };
    if ((sign != u'+' && sign != u'-') || !isPlace(first))
        return false;
    m_section.hasExponent = true;
    m_section.exponentLetter = m_text[m_place].unicode();
    m_section.exponentPlus = sign == u'+';
    m_place += 2;
    for (; m_place < m_text.size() && isPlace(m_text[m_place]); ++m_place)
        m_section.leastExponent += m_text[m_place] == u'#' ? 0 : 1;
    add(Step::Exponent);
    return true;
}

bool SectionParser::takeNumberStep()
{
    const QChar unit = m_text[m_place];
    switch (unit.unicode()) {
    case u'0':
    case u'#':
        ++m_place;
        takePlace(unit == u'0');
        return true;
    case u'.':
        if (m_pointSeen)
            return false;
        ++m_place;
        // Commas at the end of the whole places scale by a thousand each.
        if (m_section.wholePlaces > 0)
            m_section.scale -= 3 * m_commas;
        m_commas = 0;
        m_pointSeen = true;
        add(Step::Point);
        return true;
    case u',':
        ++m_place;
        ++m_commas;
        return true;
    case u'%':
        m_section.scale += 2;
        return false; // and it shows as it is
    case u'E':
    case u'e':
        return takeExponent();
    default:
        return false;
    }
}

void SectionParser::finishNumber()
{
    if (m_section.wholePlaces + m_section.fractionPlaces > 0)
        m_section.scale -= 3 * m_commas;
    if (m_firstZero >= 0)
        m_section.leastWhole = m_section.wholePlaces - m_firstZero;
}

bool SectionParser::takeDateStep()
{
    const QStringView rest = m_text.mid(m_place);
    if (!startsDateField(rest))
        return false;
    const auto take = [this](Step step, qsizetype length) {
        m_place += length;
        m_afterHour = step == Step::Hour || step == Step::HourTwo;
        add(step);
        return true;
    };
    static constexpr std::array Days{Step::Day,         Step::DayTwo,    Step::DayShortName,
                                     Step::DayLongName, Step::ShortDate, Step::LongDate};
    static constexpr std::array Months{Step::Month, Step::MonthTwo, Step::MonthShortName, Step::MonthLongName};
    const auto run = [&rest](qsizetype most) { return runLength(rest, most); };
    const auto oneOrTwo = [&](Step one, Step two) { return run(2) == 1 ? take(one, 1) : take(two, 2); };
    switch (lower(rest[0])) {
    case u'a': {
        const HalfOfDayMark mark = halfOfDayMark(rest);
        m_section.twelveHours = true;
        return take(mark.step, mark.length);
    }
    case u'c':
        return take(Step::DateAndTime, 1);
    case u'd':
        return take(Days[std::size_t(run(6) - 1)], run(6));
    case u'h':
        return oneOrTwo(Step::Hour, Step::HourTwo);
    case u'm':
        // COMPAT: minutes only straight after an hour, so "mm:ss" is the month and the seconds.
        if (m_afterHour && run(3) < 3)
            return oneOrTwo(Step::Minute, Step::MinuteTwo);
        return take(Months[std::size_t(run(4) - 1)], run(4));
    case u'n':
        return oneOrTwo(Step::Minute, Step::MinuteTwo);
    case u'q':
        return take(Step::Quarter, 1);
    case u's':
        return oneOrTwo(Step::Second, Step::SecondTwo);
    case u't':
        return take(Step::LongTime, 5);
    case u'w':
        return oneOrTwo(Step::WeekdayNumber, Step::WeekOfYear);
    default: { // y
        const qsizetype length = run(4);
        return length == 4 ? take(Step::YearFour, 4) : oneOrTwo(Step::DayOfYear, Step::YearTwo);
    }
    }
}

void SectionParser::addPlace(Step step)
{
    add(step);
    m_section.items.back().letterCase = m_case;
    ++m_section.textPlaces;
}

/// One mark counts for the whole text wherever it stands; of several each counts from its place on.
void SectionParser::setCase(LetterCase letterCase)
{
    if (m_case == LetterCase::Kept) {
        m_section.letterCase = letterCase;
        for (FormatSection::Item& item : m_section.items)
            item.letterCase = letterCase;
    }
    m_section.mixedCase = m_section.mixedCase || letterCase != m_section.letterCase;
    m_case = letterCase;
}

bool SectionParser::takeTextStep()
{
    switch (m_text[m_place].unicode()) {
    case u'@':
        addPlace(Step::Space);
        break;
    case u'&':
        addPlace(Step::Nothing);
        break;
    case u'<':
        setCase(LetterCase::Lower);
        break;
    case u'>':
        setCase(LetterCase::Upper);
        break;
    case u'!':
        m_section.fillFromLeft = true;
        break;
    default:
        return false;
    }
    ++m_place;
    return true;
}

/// The end of the section that starts at `start`: its semicolon or the end of the text.
qsizetype sectionEnd(QStringView text, qsizetype start)
{
    while (start < text.size() && text[start] != u';')
        start += std::max<qsizetype>(1, markedLiteral(text.mid(start)));
    return std::min(start, text.size());
}

/// Kind of a section after the first. Words stand there for a sign or for nothing ("0.00;;;Nil"), so the letters
/// are no dates beside a number or text section.
SectionKind laterKind(SectionKind first, SectionKind own)
{
    if (first == SectionKind::Text)
        return SectionKind::Text;
    const bool isWord = own == SectionKind::Date || own == SectionKind::Text;
    return first == SectionKind::Number && isWord ? SectionKind::Literal : own;
}

} // namespace

FormatPattern::FormatPattern(QStringView formatText)
{
    if (formatText.isEmpty()) {
        general = General::AsItIs;
        return;
    }
    if (formatText.compare(QStringView(GeneralNumber), Qt::CaseInsensitive) == 0) {
        general = General::Number;
        return;
    }
    for (const NamedFormat& named : NamedFormats) {
        if (formatText.compare(QStringView(named.name), Qt::CaseInsensitive) == 0) {
            formatText = QStringView(named.meaning);
            break;
        }
    }
    constexpr std::size_t MostSections = 4; // positive, negative, zero, Null; further ones say nothing
    for (qsizetype start = 0; sections.size() < MostSections; ++start) {
        const qsizetype end = sectionEnd(formatText, start);
        const QStringView text = formatText.mid(start, end - start);
        const SectionKind kind = kindOf(text);
        sections.push_back(
            SectionParser(text, sections.empty() ? kind : laterKind(sections.front().kind, kind)).parse());
        start = end;
        if (end >= formatText.size())
            break;
    }
}

} // namespace zan::values
