#include "script/machine/EachState.h"
#include "script/machine/Engine.h"
#include "script/machine/Vm.h"

#include "values/Arithmetic.h"
#include "values/Convert.h"

#include <algorithm>

namespace zan::script {

using values::Array;
using values::ErrorNumber;
using values::Kind;
using values::Variant;

namespace {

std::int32_t indexNumber(const Variant& index)
{
    if (index.isMissing())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    return values::toLong(index);
}

/// A bound of a For loop as a number.
Variant loopNumber(const Variant& value)
{
    switch (value.kind()) {
    case Kind::Empty:
        return Variant(std::int16_t(0));
    case Kind::Boolean:
        return Variant(std::int16_t(value.boolean() ? -1 : 0));
    case Kind::Null:
        values::raise(ErrorNumber::InvalidNull);
    case Kind::String:
        return Variant(values::toDouble(value));
    case Kind::Object:
        if (!value.object())
            values::raise(ErrorNumber::ObjectNotSet);
        return loopNumber(value.objectRef()->defaultValue());
    case Kind::Array:
    case Kind::Error:
        values::raise(ErrorNumber::TypeMismatch);
    default:
        return value;
    }
}

bool passesLimit(const Variant& number, const Variant& limit, const Variant& step)
{
    const bool up = values::toDouble(step) >= 0;
    const double value = values::toDouble(number);
    const double last = values::toDouble(limit);
    return up ? value > last : value < last;
}

} // namespace

Variant newArray(const std::vector<std::int32_t>& upperBounds)
{
    if (upperBounds.empty())
        return Variant(values::make<Array>());
    std::vector<Array::Bound> bounds;
    for (const std::int32_t upper : upperBounds)
        bounds.push_back({0, upper});
    return Variant(values::make<Array>(std::move(bounds), true));
}

std::size_t bytesOfArray(const std::vector<std::int32_t>& upperBounds) noexcept
{
    std::int64_t total = upperBounds.empty() ? 0 : 1;
    for (const std::int32_t upper : upperBounds)
        total = std::min(total * (std::int64_t(upper) + 1), Array::MaximumElements);
    return std::size_t(std::max<std::int64_t>(total, 0)) * sizeof(Variant);
}

Variant Vm::declaredArray(const std::vector<std::int32_t>& upperBounds)
{
    chargeBytes(bytesOfArray(upperBounds));
    return newArray(upperBounds);
}

/// The array in a variable, made the variable's own copy first when others share it.
Array& Vm::writable(Variant& variable)
{
    if (variable.array().references() > 1)
        chargeBytes(variable.array().elements().size() * sizeof(Variant));
    return variable.arrayForWriting();
}

/// The variable or array element that a slot refers to. An element is looked up at every use, since the array may
/// change while it is passed around; raises 9 when it is gone.
Variant& Vm::followReference(const Slot& slot, bool forWriting)
{
    if (!slot.isElement())
        return slot.variable();
    const ElementPath& path = slot.element();
    Variant* value = path.root;
    for (const std::size_t offset : path.offsets) {
        if (!value->isArray() || offset >= value->array().elements().size())
            values::raise(ErrorNumber::SubscriptOutOfRange);
        value = forWriting ? &writable(*value).elements()[offset]
                           : const_cast<Variant*>(&value->array().elements()[offset]);
    }
    return *value;
}

/// Objects among the indices of an array give their default values, which may run code: done before the array is
/// looked at.
void Vm::plainIndices(Slot* indices, std::size_t count)
{
    for (std::size_t place = 0; place < count; ++place) {
        if (indices[place].is(Kind::Object))
            indices[place] = plainValue(indices[place].value());
        spendOn(indices[place].value());
    }
}

std::size_t Vm::elementPlace(const Variant& holder, const Slot* indices, std::size_t count)
{
    if (!holder.isArray())
        values::raise(ErrorNumber::TypeMismatch);
    constexpr std::size_t Usual = 8;
    std::int32_t few[Usual] = {};
    std::vector<std::int32_t> many;
    std::int32_t* numbers = few;
    if (count > Usual) {
        many.resize(count);
        numbers = many.data();
    }
    for (std::size_t place = 0; place < count; ++place)
        numbers[place] = indexNumber(indices[place].value());
    return holder.array().offset({numbers, count});
}

/// The value that an assignment without Set takes: an object gives its default value.
Variant Vm::plainValue(const Variant& value)
{
    constexpr int MostSteps = 16; // an object whose default value is an object, and so on
    Variant result = value;
    for (int step = 0; result.isObject(); ++step) {
        if (!result.object())
            values::raise(ErrorNumber::ObjectNotSet);
        if (step == MostSteps)
            values::raise(ErrorNumber::NoSuchMember);
        result = result.objectRef()->defaultValue();
        m_budget.countCall();
    }
    return result;
}

bool Vm::elementReference(const Instruction& code, Slot* const* banks)
{
    Slot& slot = banks[code.b >> 30][placeOf(code.b)];
    Slot* const indices = &banks[code.c >> 30][placeOf(code.c)];
    if (!read(slot).isArray())
        return indexInto(slot, indices, code.n, code.a);
    plainIndices(indices, code.n);
    auto path = std::make_unique<ElementPath>();
    if (slot.isElement())
        *path = slot.element();
    else
        path->root = slot.isReference() ? &slot.variable() : &slot.value();
    path->offsets.push_back(elementPlace(read(slot), indices, code.n));
    clear(indices, code.n);
    refer(code.a, Slot::to(*path));
    m_paths.push_back(std::move(path));
    return false;
}

/// slot(arguments): an element, or the default member of an object.
bool Vm::indexInto(Slot& slot, Slot* arguments, std::size_t count, Operand result)
{
    if (read(slot).isArray()) {
        plainIndices(arguments, count);
        const Variant& target = read(slot);
        const std::size_t place = elementPlace(target, arguments, count);
        Variant element = target.array().elements()[place];
        clear(arguments, count);
        deliver(result, std::move(element));
        return false;
    }
    if (!read(slot).isObject())
        values::raise(ErrorNumber::TypeMismatch);
    return callDefault(read(slot), arguments, count, result);
}

bool Vm::putIndex(Slot& slot, Slot* arguments, std::size_t count, bool set)
{
    const Variant& value = arguments[count].value();
    if (set && !value.isObject())
        values::raise(ErrorNumber::ObjectRequired);
    if (read(slot).isArray()) {
        Variant stored = set ? value : plainValue(value);
        plainIndices(arguments, count);
        Variant& target = follow(slot);
        const std::size_t place = elementPlace(target, arguments, count);
        clear(arguments, count + 1);
        writable(target).elements()[place] = std::move(stored);
        return false;
    }
    if (!read(slot).isObject())
        values::raise(ErrorNumber::TypeMismatch);
    const Variant object = read(slot);
    Site site;
    return putMember(object, site, arguments, count + 1, set);
}

void Vm::redim(Variant& variable, const Slot* upperBounds, std::size_t count, bool preserve)
{
    if (variable.isArray() && variable.array().isFixedSize()) // whatever the bounds asked for
        values::raise(ErrorNumber::ArrayLocked);
    std::vector<Array::Bound> bounds;
    for (std::size_t place = 0; place < count; ++place)
        bounds.push_back({0, indexNumber(upperBounds[place].value())});
    std::int64_t total = 1;
    for (const Array::Bound& bound : bounds) {
        if (bound.count() < 0)
            values::raise(ErrorNumber::SubscriptOutOfRange);
        total = std::min(total * bound.count(), Array::MaximumElements + 1);
    }
    chargeBytes(std::size_t(total) * sizeof(Variant));
    if (!preserve || !variable.isArray() || variable.array().rank() == 0) {
        if (!variable.isArray() && !variable.isEmpty() && preserve)
            values::raise(ErrorNumber::TypeMismatch);
        variable = Variant(values::make<Array>(std::move(bounds)));
        return;
    }
    // Only the last dimension may change: the elements kept lie together at the front.
    const std::vector<Array::Bound>& old = variable.array().bounds();
    bool same = old.size() == bounds.size();
    for (std::size_t place = 0; same && place + 1 < bounds.size(); ++place)
        same = old[place].upper == bounds[place].upper;
    if (!same)
        values::raise(ErrorNumber::SubscriptOutOfRange);
    variable.arrayForWriting().resizeLast(bounds.back().upper);
}

void Vm::erase(Variant& variable)
{
    if (!variable.isArray())
        values::raise(ErrorNumber::TypeMismatch);
    if (variable.array().isFixedSize()) {
        chargeBytes(variable.array().elements().size() * sizeof(Variant));
        variable = Variant(values::make<Array>(variable.array().bounds(), true));
    } else {
        variable = Variant(values::make<Array>());
    }
}

Variant Vm::startEach(const Variant& collection)
{
    if (collection.isArray())
        return Variant(values::make<EachState>(collection));
    if (!collection.isObject())
        values::raise(ErrorNumber::NotACollection);
    binding::Object& object = binding::objectOf(collection);
    std::unique_ptr<binding::Enumerator> items = object.enumerate();
    if (!items)
        values::raise(ErrorNumber::NotACollection);
    return Variant(values::make<EachState>(std::move(items)));
}

bool Vm::nextEach(const Variant& state, Slot& slot)
{
    if (!state.isObject() || !state.object())
        return false; // what failed was the collection: its error stands, and the one pass was all
    const values::Ref<values::AutomationObject> alive = state.objectRef();
    auto& walk = static_cast<EachState&>(*alive);
    std::optional<Variant> item = walk.next();
    if (walk.isOfHost())
        m_budget.countCall();
    if (item)
        follow(slot) = std::move(*item);
    else if (walk.isOfHost()) // COMPAT: after a collection the variable is Empty, after an array its last element
        follow(slot) = Variant();
    return item.has_value();
}

/// Start value to the control variable, the bounds made numbers. False when the body must not run at all.
bool Vm::startFor(Slot& slot, Slot* state)
{
    for (int place = 0; place < 3; ++place)
        spendOn(state[place].value());
    const Variant start = loopNumber(state[2].value());
    state[0] = loopNumber(state[0].value());
    state[1] = loopNumber(state[1].value());
    state[2].clear();
    follow(slot) = start;
    return !passesLimit(start, state[0].value(), state[1].value());
}

bool Vm::nextFor(Slot& slot, const Slot* state)
{
    const Variant variable = read(slot);
    const Variant& limit = state[0].value();
    const Variant& step = state[1].value();
    if (limit.isEmpty())
        values::raise(ErrorNumber::ForLoopNotInitialized);
    if (variable.isText()) // COMPAT: even one that is a number
        values::raise(ErrorNumber::TypeMismatch);
    const Variant sum = values::add(variable, step);
    follow(slot) = sum;
    return !passesLimit(sum, limit, step);
}

} // namespace zan::script
