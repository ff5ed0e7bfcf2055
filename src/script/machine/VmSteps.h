#pragma once

// The longer operations that a script cannot do without: made part of the machine's loop, and of it alone.

#include "script/machine/Vm.h"
#include "script/machine/VmNumbers.h"
#include "script/machine/VmPush.h"

#include <new>

namespace zan::script {

/// Place of an index in an array of one dimension, or -1 for anything out of the ordinary.
inline std::int64_t simplePlace(const values::Array& array, const values::Variant& index) noexcept
{
    std::int32_t number = 0;
    if (array.rank() != 1 || !integral(index, number))
        return -1;
    const auto& bound = array.bounds().front();
    return number >= bound.lower && number <= bound.upper ? std::int64_t(number) - bound.lower : -1;
}

/// Returns from the running procedure; true when that was the last one above the depth.
inline bool Vm::finish(std::size_t stopDepth)
{
    const Frame& frame = m_frames.back();
    const Operand result = frame.result;
    values::Variant value;
    if (frame.procedure->resultSlot >= 0) {
        Slot& slot = frame.base[frame.procedure->resultSlot];
        if (slot.isReference()) [[unlikely]]
            value = read(slot);
        else
            value = std::move(slot.value());
    }
    pop();
    if (m_frames.size() == stopDepth) [[unlikely]] {
        m_result = std::move(value);
        return true;
    }
    if (result == NoOperand)
        return false;
    if (bankOf(result) == Bank::Local)
        m_frames.back().base[placeOf(result)] = std::move(value);
    else
        deliver(result, std::move(value));
    return false;
}

/// slot(index) := source
inline bool Vm::putElement(Slot& slot, const values::Variant& index, const values::Variant& source)
{
    values::Variant& target = follow(slot);
    if (target.isArray() && !source.isObject()) {
        const std::int64_t place = simplePlace(target.array(), index);
        if (place >= 0) {
            values::Variant copy = source; // the array may be the value
            writable(target).elements()[std::size_t(place)] = std::move(copy);
            return false;
        }
    }
    Slot arguments[2] = {Slot(index), Slot(source)};
    return putIndex(slot, arguments, 1, false);
}

/// target := source, as assignments without Set do it; a source that is a temporary may be taken.
inline void Vm::let(Slot& target, Slot& source, bool take)
{
    if (source.is(values::Kind::Object) || source.isReference()) {
        values::Variant value = plainValue(read(source)); // may run code: the target is looked up after it
        follow(target) = std::move(value);
        return;
    }
    values::Variant& value = source.value();
    values::Variant& variable = follow(target);
    if (!value.isCounted() && !variable.isCounted())
        new (&variable) values::Variant(value);
    else if (take)
        variable = std::move(value);
    else
        variable = value;
}

/// Set target = source
inline void Vm::set(Slot& target, Slot& source, bool take)
{
    if (!read(source).isObject())
        values::raise(values::ErrorNumber::ObjectRequired);
    values::Variant& variable = follow(target);
    if (take && !source.isReference())
        variable = std::move(source.value());
    else
        variable = read(source);
}

} // namespace zan::script
