#pragma once

#include "values/Variant.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace zan::script {

// The registers of the machine
//
// A slot holds a value like any other or, where an argument is passed by reference, the way to the caller's variable.
// Only slots hold such ways: all code outside the machine gets Variants, and may take them for values.
//
// A way begins with the two fields a Variant begins with, a kind and what is counted, and its kinds are numbers that no
// value has. So an operation that looks for two numbers looks at the kinds alone, and never asks first whether what it
// has before it is a way; and nothing is counted for a way, so that a slot is cleared as if there were values only.

/// The way to an element of an array, which is looked up anew at every use: the array may change meanwhile.
struct ElementPath
{
    values::Variant* root;            ///< the variable that has the array
    std::vector<std::size_t> offsets; ///< an element of it, an element of the array that this element is, and so on
};

class Slot
{
public:
    Slot() noexcept
        : m_value()
    {}
    explicit Slot(const values::Variant& value) noexcept
        : m_value(value)
    {}
    explicit Slot(values::Variant&& value) noexcept
        : m_value(std::move(value))
    {}
    /// A number or a Boolean, made in its place.
    template <class T>
    requires std::is_arithmetic_v<T>
    explicit Slot(T value) noexcept
        : m_value(value)
    {}
    /// The way to a variable, or to an element. Neither is kept alive by it.
    static Slot to(values::Variant& variable) noexcept { return Slot(Way(&variable)); }
    static Slot to(const ElementPath& element) noexcept { return Slot(Way(&element)); }

    Slot(const Slot& other) noexcept
    {
        if (other.isReference())
            new (&m_way) Way(other.m_way);
        else
            new (&m_value) values::Variant(other.m_value);
    }
    Slot(Slot&& other) noexcept
    {
        if (other.isReference())
            new (&m_way) Way(other.m_way);
        else
            new (&m_value) values::Variant(std::move(other.m_value));
    }
    ~Slot()
    {
        if (isCounted())
            m_value.~Variant();
    }
    Slot& operator=(const Slot& other) noexcept { return *this = Slot(other); }
    Slot& operator=(Slot&& other) noexcept
    {
        if (!other.isReference())
            return *this = std::move(other.m_value);
        const Slot old = std::move(*this); // released last: its end may run code that looks at us
        new (&m_way) Way(other.m_way);
        return *this;
    }
    /// Takes the place of whatever the slot holds, be it a way: the variable at its end stays as it is.
    Slot& operator=(values::Variant&& value) noexcept
    {
        if (isCounted())
            m_value = std::move(value);
        else
            new (&m_value) values::Variant(std::move(value));
        return *this;
    }
    Slot& operator=(const values::Variant& value) noexcept
    {
        if (isCounted())
            m_value = value;
        else
            new (&m_value) values::Variant(value);
        return *this;
    }
    void clear() noexcept
    {
        if (isCounted())
            m_value = values::Variant();
        else
            new (&m_value) values::Variant();
    }

    /// The kind of the value; none that a value has for a way.
    values::Kind kind() const noexcept { return m_way.kind; }
    bool is(values::Kind kind) const noexcept { return m_way.kind == kind; }
    /// As Variant::isCounted; never for a way.
    bool isCounted() const noexcept { return m_way.counted != 0; }
    bool isReference() const noexcept { return m_way.kind >= ToVariable; }
    bool isElement() const noexcept { return m_way.kind == ToElement; }

    /// The value of a slot that holds one.
    values::Variant& value() noexcept
    {
        Q_ASSERT(!isReference());
        return m_value;
    }
    const values::Variant& value() const noexcept
    {
        Q_ASSERT(!isReference());
        return m_value;
    }
    /// Where a way leads to.
    values::Variant& variable() const noexcept
    {
        Q_ASSERT(is(ToVariable));
        return *m_way.variable;
    }
    const ElementPath& element() const noexcept
    {
        Q_ASSERT(is(ToElement));
        return *m_way.element;
    }

private:
    static constexpr auto ToVariable = static_cast<values::Kind>(16384); // the classic by-reference flag, alone
    static constexpr auto ToElement = static_cast<values::Kind>(16385);
    struct Way
    {
        explicit Way(values::Variant* target) noexcept
            : kind(ToVariable)
            , variable(target)
        {}
        explicit Way(const ElementPath* target) noexcept
            : kind(ToElement)
            , element(target)
        {}
        values::Kind kind;
        std::uint16_t counted = 0;
        union {
            values::Variant* variable;
            const ElementPath* element;
        };
    };
    explicit Slot(const Way& way) noexcept
        : m_way(way)
    {}

    // Two structs that begin alike: what they have in common may be read by either name, whichever is there.
    union {
        values::Variant m_value;
        Way m_way;
    };
    static_assert(std::is_standard_layout_v<values::Variant> && std::is_standard_layout_v<Way>);
};

static_assert(sizeof(Slot) == sizeof(values::Variant) && std::is_standard_layout_v<Slot>);

/// The way to what a variable's slot stands for: of a parameter that is a way itself, the same.
inline Slot wayTo(Slot& variable) noexcept
{
    return variable.isReference() ? variable : Slot::to(variable.value());
}

/// The values of a row of slots, none of which holds a way, as code outside the machine takes arguments.
inline const values::Variant* valuesOf(const Slot* slots) noexcept
{
    return reinterpret_cast<const values::Variant*>(slots);
}

} // namespace zan::script
