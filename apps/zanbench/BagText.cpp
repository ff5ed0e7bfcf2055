#include "zanbench/BagText.h"

#include "surface/text/FontObject.h"
#include "values/Convert.h"
#include "values/NumberText.h"

#include <array>

namespace zan::host {

using values::Kind;
using values::Variant;

namespace {

struct KindName
{
    Kind kind;
    QLatin1String name;
};

/// The kinds that a settings file can hold.
const std::array KindNames = {
    KindName{Kind::Boolean, QLatin1String("Boolean")},   KindName{Kind::Byte, QLatin1String("Byte")},
    KindName{Kind::Integer, QLatin1String("Integer")},   KindName{Kind::Long, QLatin1String("Long")},
    KindName{Kind::Single, QLatin1String("Single")},     KindName{Kind::Double, QLatin1String("Double")},
    KindName{Kind::Currency, QLatin1String("Currency")}, KindName{Kind::String, QLatin1String("String")},
};

const std::array FontNames = {"Name", "Bold", "Charset", "Italic", "Size", "Strikethrough", "Underline", "Weight"};

/// The text of a number, a Boolean or a text; nothing for a kind without one.
std::optional<QString> textOf(const Variant& value)
{
    switch (value.kind()) {
    case Kind::Boolean:
        return value.boolean() ? QStringLiteral("-1") : QStringLiteral("0");
    case Kind::Single:
        return values::documentText(value.single());
    case Kind::Double:
        return values::documentText(value.real());
    case Kind::Byte:
    case Kind::Integer:
    case Kind::Long:
    case Kind::Currency:
    case Kind::String:
        return values::toText(value);
    default:
        return std::nullopt;
    }
}

void appendLine(QStringList& lines, const QString& name, const Variant& value)
{
    const auto text = textOf(value);
    if (!text)
        return;
    for (const KindName& known : KindNames)
        if (known.kind == value.kind())
            lines.append(QStringLiteral("%1=%2:%3").arg(name, QString(known.name), *text));
}

/// The value of this kind that a text stands for; nothing when it stands for none.
std::optional<Variant> valueOf(QStringView kindName, const QString& text)
{
    const Variant source(text);
    for (const KindName& known : KindNames) {
        if (kindName != known.name)
            continue;
        try {
            switch (known.kind) {
            case Kind::Boolean:
                return Variant(values::val(text) != 0);
            case Kind::Byte:
                return Variant(values::toByte(source));
            case Kind::Integer:
                return Variant(values::toInteger(source));
            case Kind::Long:
                return Variant(values::toLong(source));
            case Kind::Single:
                return Variant(values::toSingle(source));
            case Kind::Double:
                return Variant(values::toDouble(source));
            case Kind::Currency:
                return Variant(values::toCurrency(source));
            default:
                return source;
            }
        } catch (const values::RuntimeError&) {
            return std::nullopt; // an edited or damaged line: as if it were not there
        }
    }
    return std::nullopt;
}

} // namespace

QStringList bagToText(const binding::PropertyBag& bag)
{
    QStringList lines;
    for (const auto& entry : bag.entries()) {
        appendLine(lines, entry.name.text(), entry.value);
        auto* font = entry.value.isObject() ? dynamic_cast<surface::FontObject*>(entry.value.object()) : nullptr;
        if (!font)
            continue;
        for (const char* attribute : FontNames) {
            Variant value;
            if (font->tryGet(values::Name(attribute), value) == binding::AccessStatus::Ok)
                appendLine(lines, entry.name.text() + QLatin1Char('.') + QLatin1String(attribute), value);
        }
    }
    return lines;
}

binding::PropertyBag bagFromText(const QStringList& lines)
{
    binding::PropertyBag bag;
    for (const QString& line : lines) {
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        const qsizetype colon = line.indexOf(QLatin1Char(':'), equals + 1);
        if (equals < 1 || colon < 0)
            continue;
        const auto value = valueOf(QStringView(line).mid(equals + 1, colon - equals - 1), line.mid(colon + 1));
        if (!value)
            continue;
        const QString name = line.left(equals);
        const qsizetype dot = name.indexOf(QLatin1Char('.'));
        if (dot < 0) {
            bag.WriteProperty(values::Name(name), *value);
            continue;
        }
        // An attribute of a font: the first one makes the font.
        const values::Name property(QStringView(name).left(dot));
        const Variant stored = bag.ReadProperty(property);
        binding::Ref<surface::FontObject> font(
            stored.isObject() ? dynamic_cast<surface::FontObject*>(stored.object()) : nullptr);
        if (!font)
            font = values::make<surface::FontObject>();
        font->tryPut(values::Name(QStringView(name).mid(dot + 1)), *value);
        bag.WriteProperty(property, Variant(font)); // a bag gives copies of its fonts
    }
    return bag;
}

} // namespace zan::host
