#include "script/builtins/BuiltinSupport.h"
#include "script/builtins/CodePage.h"
#include "script/builtins/TextSearch.h"
#include "script/machine/Engine.h"

#include <algorithm>

namespace zan::script {

namespace {

constexpr qsizetype BytesPerCharacter = 2;

/// A length or count: 5 when negative.
std::int32_t lengthOf(const Variant& value)
{
    const std::int32_t length = values::toLong(value);
    require(length >= 0);
    return length;
}

QString firstOf(const Variant& value)
{
    const QString text = values::toText(value);
    require(!text.isEmpty());
    return text;
}

Variant asc(Engine&, Arguments arguments)
{
    return Variant(std::int16_t(toCodePage(firstOf(arguments[0]).front().unicode())));
}

Variant ascW(Engine&, Arguments arguments)
{
    // COMPAT: a 16-bit signed code, negative from &H8000 on.
    return Variant(std::int16_t(firstOf(arguments[0]).front().unicode()));
}

Variant ascB(Engine&, Arguments arguments)
{
    return Variant(std::uint8_t(firstOf(arguments[0]).front().unicode() & 0xff));
}

Variant chr(Engine&, Arguments arguments)
{
    const std::int32_t code = values::toLong(arguments[0]);
    require(code >= 0 && code <= 255);
    return Variant(QString(QChar(fromCodePage(std::uint8_t(code)))));
}

Variant chrW(Engine&, Arguments arguments)
{
    const std::int32_t code = values::toLong(arguments[0]);
    require(code >= -32768 && code <= 65535);
    return Variant(QString(QChar(char16_t(code))));
}

Variant findText(Engine& engine, Arguments arguments, qsizetype unit)
{
    const bool hasStart = arguments.size() > 2;
    const Variant& where = arguments[hasStart ? 1 : 0];
    const Variant& what = arguments[hasStart ? 2 : 1];
    const std::int32_t start = hasStart ? longOr(arguments, 0, 1) : 1;
    require(start >= 1);
    if (where.isNull() || what.isNull())
        return Variant::null();
    const Qt::CaseSensitivity sensitivity = comparison(arguments, 3);
    const TextArgument whereText(where);
    const TextArgument whatText(what);
    const QString& text = *whereText;
    const QString& wanted = *whatText;
    const qsizetype first = (start - 1) / unit;
    if (text.isEmpty() || first >= text.size())
        return Variant(std::int32_t(0));
    if (wanted.isEmpty())
        return Variant(start);
    const qsizetype found = TextSearch(wanted, sensitivity).find(text, first);
    engine.vm().spendText((found < 0 ? text.size() : found) - first + wanted.size());
    return Variant(std::int32_t(found < 0 ? 0 : found * unit + 1));
}

Variant inStr(Engine& engine, Arguments arguments)
{
    return findText(engine, arguments, 1);
}

Variant inStrB(Engine& engine, Arguments arguments)
{
    return findText(engine, arguments, BytesPerCharacter);
}

Variant inStrRev(Engine& engine, Arguments arguments)
{
    // COMPAT: unlike InStr it takes texts only, and Null is none.
    const QString text = values::toText(arguments[0]);
    const QString wanted = values::toText(arguments[1]);
    const std::int32_t start = longOr(arguments, 2, -1);
    require(start == -1 || start > 0);
    const Qt::CaseSensitivity sensitivity = comparison(arguments, 3);
    const qsizetype from = start == -1 ? text.size() : start;
    if (text.isEmpty() || from > text.size())
        return Variant(std::int32_t(0));
    if (wanted.isEmpty())
        return Variant(std::int32_t(from));
    if (wanted.size() > from)
        return Variant(std::int32_t(0));
    const QStringView part = QStringView(text).left(from);
    const qsizetype found = TextSearch(wanted, sensitivity, TextSearch::Direction::Backward).findLast(part);
    engine.vm().spendText(from - std::max<qsizetype>(found, 0) + wanted.size());
    return Variant(std::int32_t(found + 1));
}

Variant lCase(Engine&, Arguments arguments)
{
    return arguments[0].isNull() ? Variant::null() : Variant(TextArgument(arguments[0])->toLower());
}

Variant uCase(Engine&, Arguments arguments)
{
    return arguments[0].isNull() ? Variant::null() : Variant(TextArgument(arguments[0])->toUpper());
}

Variant leftPart(Arguments arguments, qsizetype unit)
{
    const qsizetype length = lengthOf(arguments[1]) / unit;
    if (arguments[0].isNull())
        return Variant::null();
    const TextArgument text(arguments[0]);
    return length >= text->size() ? Variant(*text) : Variant(text->left(length));
}

Variant rightPart(Arguments arguments, qsizetype unit)
{
    const qsizetype length = lengthOf(arguments[1]) / unit;
    if (arguments[0].isNull())
        return Variant::null();
    const TextArgument text(arguments[0]);
    return length >= text->size() ? Variant(*text) : Variant(text->right(length));
}

Variant middlePart(Arguments arguments, qsizetype unit)
{
    if (arguments[0].isNull()) // wherever the part may lie
        return Variant::null();
    const std::int32_t start = values::toLong(arguments[1]);
    require(start >= 1);
    const std::int32_t length = given(arguments, 2) ? lengthOf(arguments[2]) : 0x7fffffff;
    const TextArgument text(arguments[0]);
    const qsizetype first = (start - 1) / unit;
    return first >= text->size() ? Variant(QString()) : Variant(text->mid(first, length / unit));
}

Variant left(Engine&, Arguments arguments)
{
    return leftPart(arguments, 1);
}

Variant leftB(Engine&, Arguments arguments)
{
    return leftPart(arguments, BytesPerCharacter);
}

Variant right(Engine&, Arguments arguments)
{
    return rightPart(arguments, 1);
}

Variant rightB(Engine&, Arguments arguments)
{
    return rightPart(arguments, BytesPerCharacter);
}

Variant mid(Engine&, Arguments arguments)
{
    return middlePart(arguments, 1);
}

Variant midB(Engine&, Arguments arguments)
{
    return middlePart(arguments, BytesPerCharacter);
}

Variant len(Engine&, Arguments arguments)
{
    if (arguments[0].isNull())
        return Variant::null();
    if (arguments[0].isText())
        return Variant(std::int32_t(arguments[0].text().size()));
    return Variant(std::int32_t(values::toText(arguments[0]).size()));
}

Variant lenB(Engine&, Arguments arguments)
{
    if (arguments[0].isNull())
        return Variant::null();
    return Variant(std::int32_t(values::toText(arguments[0]).size() * BytesPerCharacter));
}

/// The text without blanks at its ends; only blanks count, not tabs.
Variant trimmed(const Variant& value, bool atStart, bool atEnd)
{
    if (value.isNull())
        return Variant::null();
    const TextArgument argument(value);
    const QString& text = *argument;
    qsizetype first = 0;
    qsizetype last = text.size();
    while (atStart && first < last && text[first] == QLatin1Char(' '))
        ++first;
    while (atEnd && last > first && text[last - 1] == QLatin1Char(' '))
        --last;
    return last - first == text.size() ? Variant(text) : Variant(text.mid(first, last - first));
}

Variant lTrim(Engine&, Arguments arguments)
{
    return trimmed(arguments[0], true, false);
}

Variant rTrim(Engine&, Arguments arguments)
{
    return trimmed(arguments[0], false, true);
}

Variant trim(Engine&, Arguments arguments)
{
    return trimmed(arguments[0], true, true);
}

Variant replace(Engine& engine, Arguments arguments)
{
    const QString text =
        values::toText(arguments[0]); // looking at the limits may run code that changes the variable
    const QString wanted = values::toText(arguments[1]);
    const QString with = values::toText(arguments[2]);
    const std::int32_t start = longOr(arguments, 3, 1);
    const std::int32_t most = longOr(arguments, 4, -1);
    const Qt::CaseSensitivity sensitivity = comparison(arguments, 5);
    require(start >= 1 && most >= -1);
    if (start > text.size())
        return Variant(QString());
    QString result;
    result.reserve(text.size() + 2 * with.size());
    qsizetype place = start - 1; // COMPAT: what lies before the start is left out of the result
    qsizetype found = place;
    TextSearch search(wanted, sensitivity);
    for (std::int32_t count = 0; !wanted.isEmpty() && (most < 0 || count < most); ++count) {
        found = search.find(text, place);
        engine.vm().spendText((found < 0 ? text.size() : found) - place);
        if (found < 0)
            break;
        engine.vm().checkLength(result.size() + (found - place) + with.size());
        engine.vm().chargeBytes(std::size_t(found - place + with.size()) * sizeof(QChar));
        result += QStringView(text).sliced(place, found - place);
        result += with;
        place = found + wanted.size();
        engine.vm().spend(1);
        engine.vm().look();
    }
    result += QStringView(text).sliced(place);
    return Variant(std::move(result));
}

Variant space(Engine& engine, Arguments arguments)
{
    const std::int32_t count = lengthOf(arguments[0]);
    engine.vm().charge(count);
    return Variant(QString(count, QLatin1Char(' ')));
}

Variant repeated(Engine& engine, Arguments arguments)
{
    const std::int32_t count = lengthOf(arguments[0]);
    if (arguments[1].isNull())
        return Variant::null();
    QChar character;
    if (arguments[1].isText())
        character = firstOf(arguments[1]).front();
    else
        character = QChar(fromCodePage(std::uint8_t(values::toLong(arguments[1]) & 0xff)));
    engine.vm().charge(count);
    return Variant(QString(count, character));
}

Variant strComp(Engine&, Arguments arguments)
{
    if (arguments[0].isNull() || arguments[1].isNull())
        return Variant::null();
    const int order = values::toText(arguments[0]).compare(values::toText(arguments[1]), comparison(arguments, 2));
    return Variant(std::int16_t(order < 0 ? -1 : order > 0 ? 1 : 0));
}

Variant strReverse(Engine&, Arguments arguments)
{
    QString text = values::toText(arguments[0]);
    std::reverse(text.begin(), text.end());
    return Variant(std::move(text));
}

Variant escape(Engine& engine, Arguments arguments)
{
    const QString text = values::toText(arguments[0]);
    engine.vm().charge(text.size() * 6);
    static const QString plain = QStringLiteral("@*_+-./");
    QString result;
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        const bool isPlain = (code < 128 && c.isLetterOrNumber()) || plain.contains(c);
        if (isPlain)
            result += c;
        else if (code < 256)
            result += QStringLiteral("%%1").arg(uint(code), 2, 16, QLatin1Char('0')).toUpper();
        else
            result +=
                QStringLiteral("%u") + QString::number(code, 16).rightJustified(4, QLatin1Char('0')).toUpper();
    }
    return Variant(std::move(result));
}

Variant unescape(Engine&, Arguments arguments)
{
    const QString text = values::toText(arguments[0]);
    QString result;
    for (qsizetype place = 0; place < text.size(); ++place) {
        bool valid = false;
        ushort code = 0;
        qsizetype length = 0;
        if (text[place] == QLatin1Char('%')) {
            const bool wide = place + 1 < text.size() && text[place + 1] == QLatin1Char('u');
            length = wide ? 5 : 2;
            const QStringView digits = QStringView(text).mid(place + (wide ? 2 : 1), wide ? 4 : 2);
            const bool allHex = std::all_of(digits.begin(), digits.end(), [](QChar c) {
                return c.unicode() < 128 && QStringLiteral("0123456789abcdefABCDEF").contains(c);
            });
            if (allHex && digits.size() == (wide ? 4 : 2))
                code = digits.toUShort(&valid, 16);
        }
        if (valid) {
            result += QChar(code);
            place += length;
        } else {
            result += text[place];
        }
    }
    return Variant(std::move(result));
}

using Cost = Builtin::Cost;

constexpr Builtin Functions[] = {
    {"Asc", 1, 1, asc, Cost::Result},
    {"AscB", 1, 1, ascB, Cost::Result},
    {"AscW", 1, 1, ascW, Cost::Result},
    {"Chr", 1, 1, chr},
    {"ChrB", 1, 1, chr},
    {"ChrW", 1, 1, chrW},
    {"Escape", 1, 1, escape},
    {"InStr", 2, 4, inStr, Cost::Result},
    {"InStrB", 2, 4, inStrB, Cost::Result},
    {"InStrRev", 2, 4, inStrRev, Cost::Result},
    {"LCase", 1, 1, lCase},
    {"Left", 2, 2, left, Cost::Result},
    {"LeftB", 2, 2, leftB, Cost::Result},
    {"Len", 1, 1, len, Cost::Result},
    {"LenB", 1, 1, lenB, Cost::Result},
    {"LTrim", 1, 1, lTrim},
    {"Mid", 2, 3, mid, Cost::Result},
    {"MidB", 2, 3, midB, Cost::Result},
    {"Replace", 3, 6, replace},
    {"Right", 2, 2, right, Cost::Result},
    {"RightB", 2, 2, rightB, Cost::Result},
    {"RTrim", 1, 1, rTrim},
    {"Space", 1, 1, space},
    {"StrComp", 2, 3, strComp},
    {"String", 2, 2, repeated},
    {"StrReverse", 1, 1, strReverse},
    {"Trim", 1, 1, trim},
    {"UCase", 1, 1, uCase},
    {"Unescape", 1, 1, unescape},
};

} // namespace

std::span<const Builtin> textFunctions() noexcept
{
    return Functions;
}

} // namespace zan::script
