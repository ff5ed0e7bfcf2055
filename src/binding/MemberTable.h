#pragma once

#include "binding/Marshal.h"

#include <initializer_list>
#include <tuple>
#include <utility>
#include <vector>

namespace zan::binding {

/// One late-bound member of a class. A property may take index arguments; a method has no setter.
struct Member
{
    enum class Kind : std::uint8_t { Property, Method };
    using Getter = Variant (*)(Object& object, Arguments arguments);
    using Setter = void (*)(Object& object, Arguments indices, const Variant& value);

    Name name;
    Kind kind = Kind::Property;
    ValueType type = ValueType::Variant;
    bool isDefault = false; ///< the member that stands for the object where a plain value is needed
    std::uint8_t requiredArguments = 0;
    std::uint8_t allowedArguments = 0;
    Getter get = nullptr; ///< null for a property that can only be written
    Setter put = nullptr; ///< null for a method and for a property that can only be read

    /// The same member, as the class's default member.
    Member asDefault() const
    {
        Member member = *this;
        member.isDefault = true;
        return member;
    }
};

/// The members of one class, those of its base included. Built once per class, then only read; a lookup ignores
/// case and costs a few nanoseconds.
class MemberTable
{
public:
    /// A member of the same name as one of the base takes its place; one that is absent() takes it away.
    MemberTable(const char* className, const MemberTable* base, std::initializer_list<Member> members);
    MemberTable(const MemberTable&) = delete; // the index points into the table
    MemberTable& operator=(const MemberTable&) = delete;

    /// Every table that classes publish with table(), in no order; builds those that nobody has asked for yet.
    static std::vector<const MemberTable*> all();

    const QString& className() const noexcept { return m_className; }
    /// The table of the class that this one derives from; null for none.
    const MemberTable* base() const noexcept { return m_base; }
    const Member* find(Name name) const noexcept;
    const Member* defaultMember() const noexcept { return m_default; }
    /// Every member, the base's first, in the order of declaration.
    const std::vector<Member>& members() const noexcept { return m_members; }

private:
    void buildIndex();

    QString m_className;
    const MemberTable* m_base;
    std::vector<Member> m_members;
    /// A slot holds the folded name itself: a search that passes it over does not look at the member.
    struct Slot
    {
        Name folded;
        const Member* member = nullptr;
    };
    std::vector<Slot> m_slots; // open addressing by the folded name's address; size a power of two
    const Member* m_default = nullptr;
};

/// The C++ object that a late-bound object stands for. Objects that are only a face of something else, a widget
/// say, specialise it; they raise 91 when that is gone.
template <class C>
struct Self
{
    static C& of(Object& object) { return static_cast<C&>(object); }
};

namespace detail {

/// A class in the list of all classes, from the moment its program or library is loaded until it is unloaded.
class TableEntry
{
public:
    using Table = const MemberTable& (*)();
    explicit TableEntry(Table table) noexcept;
    ~TableEntry();
    TableEntry(const TableEntry&) = delete;
    TableEntry& operator=(const TableEntry&) = delete;

private:
    friend class zan::binding::MemberTable;
    Table m_table;
    TableEntry* m_next;
};

template <class Build>
struct BuiltTable
{
    static const MemberTable& get()
    {
        static const MemberTable built = Build()();
        return built;
    }
    inline static TableEntry entry{&get};
};

template <class F>
struct Signature;
template <class R, class C, class... A>
struct Signature<R (C::*)(A...)>
{
    using Result = std::remove_cvref_t<R>;
    using Class = C;
    using Parameters = std::tuple<std::remove_cvref_t<A>...>;
};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...) const> : Signature<R (C::*)(A...)>
{};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...) noexcept> : Signature<R (C::*)(A...)>
{};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...) const noexcept> : Signature<R (C::*)(A...)>
{};

inline const Variant& argumentAt(Arguments arguments, std::size_t place)
{
    static const Variant missing = Variant::missing();
    return place < arguments.size() ? arguments[place] : missing;
}

template <class Parameters, std::size_t... I>
constexpr std::uint8_t countRequired(std::index_sequence<I...>)
{
    std::size_t required = 0;
    ((IsOptional<std::tuple_element_t<I, Parameters>> ? void() : void(required = I + 1)), ...);
    return std::uint8_t(required);
}

template <auto Function, class S, std::size_t... I>
Variant callMember(Object& object, Arguments arguments, std::index_sequence<I...>)
{
    auto& self = Self<typename S::Class>::of(object);
    if constexpr (std::is_void_v<typename S::Result>) {
        (self.*
         Function)(Marshal<std::tuple_element_t<I, typename S::Parameters>>::from(argumentAt(arguments, I))...);
        return {};
    } else {
        return Marshal<typename S::Result>::to((self.*Function)(
            Marshal<std::tuple_element_t<I, typename S::Parameters>>::from(argumentAt(arguments, I))...));
    }
}

template <auto Function, class S, std::size_t... I>
void putMember(Object& object, [[maybe_unused]] Arguments indices, const Variant& value, std::index_sequence<I...>)
{
    auto& self = Self<typename S::Class>::of(object);
    constexpr std::size_t last = sizeof...(I);
    (self.*Function)(Marshal<std::tuple_element_t<I, typename S::Parameters>>::from(argumentAt(indices, I))...,
                     Marshal<std::tuple_element_t<last, typename S::Parameters>>::from(value));
}

template <class R>
constexpr ValueType resultType()
{
    if constexpr (std::is_void_v<R>)
        return ValueType::None;
    else
        return Marshal<R>::type;
}

template <auto Function>
Member readMember(const char* name, Member::Kind kind)
{
    using S = Signature<decltype(Function)>;
    constexpr std::size_t count = std::tuple_size_v<typename S::Parameters>;
    Member member;
    member.name = Name(name);
    member.kind = kind;
    member.type = resultType<typename S::Result>();
    member.requiredArguments = countRequired<typename S::Parameters>(std::make_index_sequence<count>());
    member.allowedArguments = std::uint8_t(count);
    member.get = [](Object& object, Arguments arguments) {
        return callMember<Function, S>(object, arguments, std::make_index_sequence<count>());
    };
    return member;
}

template <auto Function>
Member::Setter setter()
{
    using S = Signature<decltype(Function)>;
    constexpr std::size_t indices = std::tuple_size_v<typename S::Parameters> - 1;
    return [](Object& object, Arguments arguments, const Variant& value) {
        putMember<Function, S>(object, arguments, value, std::make_index_sequence<indices>());
    };
}

} // namespace detail

/// The table of a class, built when it is first asked for and listed by MemberTable::all() whether it was or not:
/// `return binding::table([] { return MemberTable("Light", nullptr, {...}); });` in the class's members().
template <class Build>
const MemberTable& table(Build)
{
    static_assert(std::is_empty_v<Build>, "one table for all objects of the class");
    static_cast<void>(&detail::BuiltTable<Build>::entry); // makes the entry exist
    return detail::BuiltTable<Build>::get();
}

/// Takes a member of the base away from a derived class.
inline Member absent(const char* name)
{
    Member member;
    member.name = Name(name);
    return member;
}

/// A property that can be read and written. Index parameters come first, the value last.
template <auto Get, auto Put>
Member property(const char* name)
{
    Member member = detail::readMember<Get>(name, Member::Kind::Property);
    member.put = detail::setter<Put>();
    return member;
}

/// A property that can only be read.
template <auto Get>
Member readOnly(const char* name)
{
    return detail::readMember<Get>(name, Member::Kind::Property);
}

/// A property that can only be written.
template <auto Put>
Member writeOnly(const char* name)
{
    using S = detail::Signature<decltype(Put)>;
    constexpr std::size_t count = std::tuple_size_v<typename S::Parameters>;
    Member member;
    member.name = Name(name);
    member.type = Marshal<std::tuple_element_t<count - 1, typename S::Parameters>>::type;
    member.requiredArguments = member.allowedArguments = std::uint8_t(count - 1);
    member.put = detail::setter<Put>();
    return member;
}

/// A method. Parameters of type std::optional may be left out.
template <auto Function>
Member method(const char* name)
{
    return detail::readMember<Function>(name, Member::Kind::Method);
}

} // namespace zan::binding
