#include "values/RuntimeError.h"

#include "values/Failure.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace zan::values {

namespace {

struct ErrorText
{
    int number;
    const char* text;
};

/// The one list of run-time error texts, by number.
constexpr std::array Texts{
    ErrorText{5, "Invalid procedure call or argument"},
    ErrorText{6, "Overflow"},
    ErrorText{7, "Out of memory"},
    ErrorText{9, "Subscript out of range"},
    ErrorText{10, "This array is fixed or temporarily locked"},
    ErrorText{11, "Division by zero"},
    ErrorText{13, "Type mismatch"},
    ErrorText{14, "Out of string space"},
    ErrorText{17, "Can't perform requested operation"},
    ErrorText{28, "Out of stack space"},
    ErrorText{35, "Sub or Function not defined"},
    ErrorText{48, "Error in loading DLL"},
    ErrorText{51, "Internal error"},
    ErrorText{52, "Bad file name or number"},
    ErrorText{53, "File not found"},
    ErrorText{54, "Bad file mode"},
    ErrorText{55, "File already open"},
    ErrorText{57, "Device I/O error"},
    ErrorText{58, "File already exists"},
    ErrorText{61, "Disk full"},
    ErrorText{62, "Input past end of file"},
    ErrorText{67, "Too many files"},
    ErrorText{68, "Device unavailable"},
    ErrorText{70, "Permission denied"},
    ErrorText{71, "Disk not ready"},
    ErrorText{74, "Can't rename with different drive"},
    ErrorText{75, "Path/File access error"},
    ErrorText{76, "Path not found"},
    ErrorText{91, "Object variable not set"},
    ErrorText{92, "For loop not initialized"},
    ErrorText{94, "Invalid use of Null"},
    ErrorText{322, "Can't create necessary temporary file"},
    ErrorText{380, "Invalid property value"},
    ErrorText{381, "Invalid property array index"},
    ErrorText{383, "Property is read-only"},
    ErrorText{394, "Property is write-only"},
    ErrorText{424, "Object required"},
    ErrorText{429, "ActiveX component can't create object"},
    ErrorText{430, "Class doesn't support Automation"},
    ErrorText{432, "File name or class name not found during Automation operation"},
    ErrorText{438, "Object doesn't support this property or method"},
    ErrorText{440, "Automation error"},
    ErrorText{445, "Object doesn't support this action"},
    ErrorText{446, "Object doesn't support named arguments"},
    ErrorText{447, "Object doesn't support current locale setting"},
    ErrorText{448, "Named argument not found"},
    ErrorText{449, "Argument not optional"},
    ErrorText{450, "Wrong number of arguments or invalid property assignment"},
    ErrorText{451, "Object not a collection"},
    ErrorText{453, "Specified DLL function not found"},
    ErrorText{455, "Code resource lock error"},
    ErrorText{457, "This key is already associated with an element of this collection"},
    ErrorText{458, "Variable uses an Automation type not supported in VBScript"},
    ErrorText{462, "The remote server machine does not exist or is unavailable"},
    ErrorText{481, "Invalid picture"},
    ErrorText{500, "Variable is undefined"},
    ErrorText{501, "Illegal assignment"},
    ErrorText{502, "Object not safe for scripting"},
    ErrorText{503, "Object not safe for initializing"},
    ErrorText{504, "Object not safe for creating"},
    ErrorText{505, "Invalid or unqualified reference"},
    ErrorText{506, "Class not defined"},
    ErrorText{507, "An exception occurred"},
    ErrorText{5008, "Illegal assignment"},
    ErrorText{5016, "Regular Expression object expected"},
    ErrorText{5017, "Syntax error in regular expression"},
    ErrorText{5018, "Unexpected quantifier"},
    ErrorText{5019, "Expected ']' in regular expression"},
    ErrorText{5020, "Expected ')' in regular expression"},
    ErrorText{5021, "Invalid range in character set"},
    ErrorText{32811, "Element not found"},
};

} // namespace

QString errorText(int number)
{
    static_assert(std::is_sorted(Texts.begin(), Texts.end(),
                                 [](const ErrorText& a, const ErrorText& b) { return a.number < b.number; }));
    const auto found = std::lower_bound(Texts.begin(), Texts.end(), number,
                                        [](const ErrorText& entry, int wanted) { return entry.number < wanted; });
    if (found != Texts.end() && found->number == number)
        return QString::fromLatin1(found->text);
    return QStringLiteral("Unknown runtime error");
}

RuntimeError::RuntimeError(int number, QString description, QString source)
    : m_number(number)
    , m_description(std::move(description))
    , m_source(std::move(source))
    , m_what(m_description.toUtf8())
{}

void raise(ErrorNumber number)
{
    throw RuntimeError(number);
}

void raise(ErrorNumber number, const QString& description)
{
    throw RuntimeError(number, description);
}

RuntimeError currentError()
{
    try {
        throw;
    } catch (const RuntimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return RuntimeError(ErrorNumber::OutOfMemory);
    } catch (const std::exception& error) {
        const QString words = QString::fromUtf8(error.what());
        const QString text = errorText(ErrorNumber::ExceptionOccurred);
        return {int(ErrorNumber::ExceptionOccurred), words.isEmpty() ? text : text + QLatin1String(": ") + words};
    } catch (...) {
        return RuntimeError(ErrorNumber::ExceptionOccurred);
    }
}

} // namespace zan::values
