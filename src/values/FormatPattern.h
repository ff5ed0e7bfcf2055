#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <vector>

namespace zan::values {

/// What a section of a format text makes of a value. The first character that only one kind knows decides; the
/// characters of the other kinds are literals then.
enum class SectionKind {
    Empty,   ///< no characters at all
    Literal, ///< nothing but literals: shown for every value
    Number,  ///< 0 # %
    Date,    ///< letters of date and time
    Text     ///< @ & < > !
};

/// One step of the output of a section.
enum class Step : std::uint8_t {
    Literal, ///< `count` characters of the section's literals, in order
    // Number
    WholePlaces, ///< `count` digit places before the point
    Point,
    FractionPlaces, ///< `count` digit places after the point
    Exponent,
    // Text
    Space,   ///< a place that shows a blank when it has no character (`@`)
    Nothing, ///< a place that shows nothing when it has no character (`&`)
    // Date and time
    DateAndTime, ///< c: the parts that there are
    ShortDate,
    LongDate,
    LongTime,
    Day,
    DayTwo,
    DayShortName,
    DayLongName,
    WeekdayNumber,
    WeekOfYear,
    Month,
    MonthTwo,
    MonthShortName,
    MonthLongName,
    Quarter,
    DayOfYear,
    YearTwo,
    YearFour,
    Hour,
    HourTwo,
    Minute,
    MinuteTwo,
    Second,
    SecondTwo,
    HalfOfDayUpper,       ///< AM or PM
    HalfOfDayLower,       ///< am or pm
    HalfOfDayLetterUpper, ///< A or P
    HalfOfDayLetterLower  ///< a or p
};

/// How a text section changes the case of what it shows.
enum class LetterCase : std::uint8_t { Kept, Lower, Upper };

/// One section of a format text, taken apart.
struct FormatSection
{
    struct Item
    {
        Step step;
        std::int32_t count;
        LetterCase letterCase = LetterCase::Kept; ///< of a text place
    };

    SectionKind kind = SectionKind::Empty;
    std::vector<Item> items;
    QString literals; ///< the characters of all Literal items, one after another

    // Number
    std::int64_t scale = 0;       ///< power of ten that the value is multiplied by: percent signs, commas
    std::int32_t wholePlaces = 0; ///< digit places before the point
    std::int32_t fractionPlaces = 0;
    std::int32_t leastWhole = 0; ///< digits that always show, because of a `0`
    std::int32_t leastFraction = 0;
    std::int32_t leastExponent = 0;
    bool thousands = false;
    bool hasExponent = false;
    bool exponentPlus = false; ///< E+: a positive exponent has its sign too
    char16_t exponentLetter = u'E';

    // Date
    bool twelveHours = false; ///< an AM/PM mark stands somewhere

    // Text
    std::int32_t textPlaces = 0;
    bool fillFromLeft = false;
    LetterCase letterCase = LetterCase::Kept; ///< of the whole text, by the section's first mark
    bool mixedCase = false;                   ///< a later mark says otherwise; each place has its own case then
};

/// Formats that have no sections.
enum class General : std::uint8_t {
    No,
    AsItIs, ///< no format text: every value in its own general form
    Number  ///< "General Number": numbers without separators
};

/// A format text, taken apart: its sections, or a general form.
struct FormatPattern
{
    explicit FormatPattern(QStringView formatText);

    General general = General::No;
    std::vector<FormatSection> sections; ///< one to four, none when general
};

} // namespace zan::values
