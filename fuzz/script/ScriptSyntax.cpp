// Any text: the lexer, the parser and the compiler accept it or refuse it with a compile error at a place inside the
// text. Nothing is run: the text stands in a procedure that nobody calls, and once by itself in a program that ends
// before its first statement.

#include "script/ScriptControl.h"

#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace zan::script;

namespace {

void check(const QString& source)
{
    static ScriptControl* const control = new ScriptControl; // making one takes longer than reading a short text
    control->Reset();
    if (control->AddCode(source))
        return;
    const int number = control->Error().Number();
    const qsizetype lines = source.count(QLatin1Char('\n')) + source.count(QLatin1Char('\r')) + 1;
    if (control->Error().Line() >= 1 && control->Error().Line() <= lines && control->Error().Column() >= 0 &&
        number > 0)
        return;
    std::fprintf(stderr, "error %d at (%d, %d) of %lld lines\n", number, control->Error().Line(),
                 control->Error().Column(), static_cast<long long>(lines));
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString source = QString::fromLatin1(reinterpret_cast<const char*>(data), qsizetype(size));
    check(QStringLiteral("Sub Uncalled\n") + source + QStringLiteral("\nEnd Sub"));
    check(QStringLiteral("If False Then\n") + source + QStringLiteral("\nEnd If"));
    return 0;
}
