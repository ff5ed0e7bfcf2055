#include "script/builtins/BuiltinSupport.h"
#include "script/builtins/TextSearch.h"
#include "script/machine/Engine.h"

#include "values/Array.h"

namespace zan::script {

namespace {

using values::Array;
using values::ErrorNumber;

/// What a short text takes besides its characters.
constexpr std::size_t BytesPerPiece = 64;

const Array& arrayOf(const Variant& value)
{
    if (!value.isArray())
        values::raise(ErrorNumber::TypeMismatch);
    return value.array();
}

/// A bound of an array, or of the array that an object's default member gives.
Array::Bound boundOf(Arguments arguments)
{
    const Variant value = values::plainValue(arguments[0]);
    const Array& array = arrayOf(value);
    const std::int32_t dimension = longOr(arguments, 1, 1);
    if (dimension < 1 || std::size_t(dimension) > array.rank())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    return array.bound(std::size_t(dimension - 1));
}

Variant makeArray(Engine&, Arguments arguments)
{
    return Variant(Array::fromValues({arguments.begin(), arguments.end()}));
}

Variant lBound(Engine&, Arguments arguments)
{
    return Variant(boundOf(arguments).lower);
}

Variant uBound(Engine&, Arguments arguments)
{
    return Variant(boundOf(arguments).upper);
}

Variant split(Engine& engine, Arguments arguments)
{
    const QString text =
        values::toText(arguments[0]); // looking at the limits may run code that changes the variable
    const QString delimiter = textOr(arguments, 1, QStringLiteral(" "));
    const std::int32_t most = longOr(arguments, 2, -1);
    const Qt::CaseSensitivity sensitivity = comparison(arguments, 3);
    require(most >= -1 && longOr(arguments, 3, 0) <= 1); // by code or by letters, and nothing else
    std::vector<Variant> pieces;
    if (text.isEmpty() || most == 0)
        return Variant(Array::fromValues({}));
    pieces.reserve(8);
    qsizetype place = 0;
    TextSearch search(delimiter, sensitivity);
    while (!delimiter.isEmpty() && (most < 0 || std::int64_t(pieces.size()) + 1 < most)) {
        const qsizetype found = search.find(text, place);
        engine.vm().spendText((found < 0 ? text.size() : found) - place);
        if (found < 0)
            break;
        pieces.emplace_back(text.mid(place, found - place));
        place = found + delimiter.size();
        engine.vm().chargeBytes(BytesPerPiece + std::size_t(pieces.back().text().size()) * sizeof(QChar));
        engine.vm().spend(1);
        engine.vm().look();
    }
    pieces.emplace_back(text.mid(place));
    return Variant(Array::fromValues(std::move(pieces)));
}

Variant join(Engine& engine, Arguments arguments)
{
    const Array& array = arrayOf(arguments[0]);
    if (array.rank() != 1) {
        if (array.rank() == 0)
            return Variant(QString());
        values::raise(ErrorNumber::TypeMismatch);
    }
    const QString delimiter = textOr(arguments, 1, QStringLiteral(" "));
    const Variant alive = arguments[0]; // an element's default value may run code that changes the array
    QString result;
    bool first = true;
    for (const Variant& element : alive.array().elements()) {
        const QString text = values::toText(element);
        engine.vm().checkLength(result.size() + text.size() + delimiter.size());
        engine.vm().chargeBytes(std::size_t(text.size() + delimiter.size()) * sizeof(QChar));
        if (!first)
            result += delimiter;
        result += text;
        first = false;
        engine.vm().spend(1);
        engine.vm().look();
    }
    return Variant(std::move(result));
}

Variant filter(Engine& engine, Arguments arguments)
{
    const Variant alive = arguments[0];
    const Array& array = arrayOf(alive);
    if (array.rank() != 1)
        values::raise(ErrorNumber::TypeMismatch);
    const QString wanted = values::toText(arguments[1]);
    TextSearch search(wanted, comparison(arguments, 3));
    const bool include = !given(arguments, 2) || values::toBoolean(arguments[2]);
    std::vector<Variant> kept;
    for (const Variant& element : array.elements()) {
        const QString text = values::toText(element);
        const bool contains = wanted.isEmpty() || search.find(text) >= 0;
        if (contains == include)
            kept.push_back(element);
        engine.vm().spend(1);
        engine.vm().spendText(text.size() + wanted.size());
        engine.vm().look();
    }
    return Variant(Array::fromValues(std::move(kept)));
}

using Cost = Builtin::Cost;

constexpr Builtin Functions[] = {
    {"Array", 0, 255, makeArray, Cost::Result}, {"Filter", 2, 4, filter}, {"Join", 1, 2, join},
    {"LBound", 1, 2, lBound, Cost::Result},     {"Split", 1, 4, split},   {"UBound", 1, 2, uBound, Cost::Result},
};

} // namespace

std::span<const Builtin> listFunctions() noexcept
{
    return Functions;
}

} // namespace zan::script
