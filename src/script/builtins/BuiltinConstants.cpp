#include "script/compiler/Builtins.h"

#include <unordered_map>

namespace zan::script {

namespace {

struct NumberConstant
{
    const char* name;
    std::int32_t value;
};

constexpr NumberConstant Numbers[] = {
    // Comparison
    {"vbBinaryCompare", 0},
    {"vbTextCompare", 1},
    {"vbDatabaseCompare", 2},
    // Dates
    {"vbUseSystemDayOfWeek", 0},
    {"vbSunday", 1},
    {"vbMonday", 2},
    {"vbTuesday", 3},
    {"vbWednesday", 4},
    {"vbThursday", 5},
    {"vbFriday", 6},
    {"vbSaturday", 7},
    {"vbUseSystem", 0},
    {"vbFirstJan1", 1},
    {"vbFirstFourDays", 2},
    {"vbFirstFullWeek", 3},
    {"vbGeneralDate", 0},
    {"vbLongDate", 1},
    {"vbShortDate", 2},
    {"vbLongTime", 3},
    {"vbShortTime", 4},
    // Boxes
    {"vbOKOnly", 0},
    {"vbOKCancel", 1},
    {"vbAbortRetryIgnore", 2},
    {"vbYesNoCancel", 3},
    {"vbYesNo", 4},
    {"vbRetryCancel", 5},
    {"vbCritical", 16},
    {"vbQuestion", 32},
    {"vbExclamation", 48},
    {"vbInformation", 64},
    {"vbDefaultButton1", 0},
    {"vbDefaultButton2", 256},
    {"vbDefaultButton3", 512},
    {"vbDefaultButton4", 768},
    {"vbApplicationModal", 0},
    {"vbSystemModal", 4096},
    {"vbMsgBoxHelpButton", 16384},
    {"vbMsgBoxSetForeground", 65536},
    {"vbMsgBoxRight", 524288},
    {"vbMsgBoxRtlReading", 1048576},
    {"vbOK", 1},
    {"vbCancel", 2},
    {"vbAbort", 3},
    {"vbRetry", 4},
    {"vbIgnore", 5},
    {"vbYes", 6},
    {"vbNo", 7},
    // Three states
    {"vbTrue", -1},
    {"vbFalse", 0},
    {"vbUseDefault", -2},
    // Types
    {"vbEmpty", 0},
    {"vbNull", 1},
    {"vbInteger", 2},
    {"vbLong", 3},
    {"vbSingle", 4},
    {"vbDouble", 5},
    {"vbCurrency", 6},
    {"vbDate", 7},
    {"vbString", 8},
    {"vbObject", 9},
    {"vbError", 10},
    {"vbBoolean", 11},
    {"vbVariant", 12},
    {"vbDataObject", 13},
    {"vbDecimal", 14},
    {"vbByte", 17},
    {"vbArray", 8192},
    {"vbObjectError", -2147221504},
};

/// Always Long, black and red too.
constexpr NumberConstant Colours[] = {
    {"vbBlack", 0x000000}, {"vbRed", 0x0000ff},     {"vbGreen", 0x00ff00}, {"vbYellow", 0x00ffff},
    {"vbBlue", 0xff0000},  {"vbMagenta", 0xff00ff}, {"vbCyan", 0xffff00},  {"vbWhite", 0xffffff},
};

struct TextConstant
{
    const char* name;
    const char16_t* value;
};

constexpr TextConstant Texts[] = {
    {"vbCr", u"\r"},   {"vbLf", u"\n"},       {"vbCrLf", u"\r\n"},      {"vbNewLine", u"\r\n"}, {"vbTab", u"\t"},
    {"vbBack", u"\b"}, {"vbFormFeed", u"\f"}, {"vbVerticalTab", u"\v"}, {"vbNullString", u""},
};

using ConstantTable = std::unordered_map<values::Name, Variant>;

ConstantTable makeTable()
{
    ConstantTable table;
    const auto add = [&table](const char* name, Variant value) {
        table.emplace(values::Name(name).folded(), std::move(value));
    };
    for (const NumberConstant& entry : Numbers) {
        // As a literal of the same number would be: an Integer where it fits.
        if (entry.value >= -32768 && entry.value <= 32767)
            add(entry.name, Variant(std::int16_t(entry.value)));
        else
            add(entry.name, Variant(entry.value));
    }
    for (const NumberConstant& entry : Colours)
        add(entry.name, Variant(entry.value));
    for (const TextConstant& entry : Texts)
        add(entry.name, Variant(entry.value));
    add("vbNullChar", Variant(QString(QChar(0))));
    return table;
}

} // namespace

const Variant* findConstant(values::Name name) noexcept
{
    static const ConstantTable table = makeTable();
    const auto found = table.find(name.folded());
    return found == table.end() ? nullptr : &found->second;
}

} // namespace zan::script
