#include "script/syntax/CompileError.h"

#include <algorithm>
#include <iterator>

namespace zan::script {

namespace {

struct Entry
{
    int number;
    const char* text;
};

constexpr Entry Texts[] = {
    {1001, "Out of memory"},
    {1002, "Syntax error"},
    {1003, "Expected ':'"},
    {1005, "Expected '('"},
    {1006, "Expected ')'"},
    {1007, "Expected ']'"},
    {1010, "Expected identifier"},
    {1011, "Expected '='"},
    {1012, "Expected 'If'"},
    {1013, "Expected 'To'"},
    {1014, "Expected 'End'"},
    {1015, "Expected 'Function'"},
    {1016, "Expected 'Sub'"},
    {1017, "Expected 'Then'"},
    {1018, "Expected 'Wend'"},
    {1019, "Expected 'Loop'"},
    {1020, "Expected 'Next'"},
    {1021, "Expected 'Case'"},
    {1022, "Expected 'Select'"},
    {1023, "Expected expression"},
    {1024, "Expected statement"},
    {1025, "Expected end of statement"},
    {1026, "Expected integer constant"},
    {1027, "Expected 'While' or 'Until'"},
    {1028, "Expected 'While', 'Until' or end of statement"},
    {1029, "Expected 'With'"},
    {1030, "Identifier too long"},
    {1031, "Invalid number"},
    {1032, "Invalid character"},
    {1033, "Unterminated string constant"},
    {1034, "Unterminated comment"},
    {1037, "Invalid use of 'Me' keyword"},
    {1038, "'loop' without 'do'"},
    {1039, "Invalid 'exit' statement"},
    {1040, "Invalid 'for' loop control variable"},
    {1041, "Name redefined"},
    {1042, "Must be first statement on the line"},
    {1043, "Cannot assign to non-ByVal argument"},
    {1044, "Cannot use parentheses when calling a Sub"},
    {1045, "Expected literal constant"},
    {1046, "Expected 'In'"},
    {1047, "Expected 'Class'"},
    {1048, "Must be defined inside a Class"},
    {1049, "Expected Let or Set or Get in property declaration"},
    {1050, "Expected 'Property'"},
    {1051, "Number of arguments must be consistent across properties specification"},
    {1052, "Cannot have multiple default property/method in a Class"},
    {1053, "Class initialize or terminate do not have arguments"},
    {1054, "Property set or let must have at least one argument"},
    {1055, "Unexpected 'Next'"},
    {1056, "'Default' can be specified only on 'Property' or 'Function' or 'Sub'"},
    {1057, "'Default' specification must also specify 'Public'"},
    {1058, "'Default' specification can only be on Property Get"},
};

} // namespace

QString compileErrorText(int number)
{
    const auto* found = std::find_if(std::begin(Texts), std::end(Texts),
                                     [number](const Entry& entry) { return entry.number == number; });
    return QString::fromLatin1(found == std::end(Texts) ? "Unknown compilation error" : found->text);
}

} // namespace zan::script
