#pragma once

#include "binding/Member.h"
#include "binding/Methods.h"

#include <initializer_list>
#include <vector>

namespace zan::binding {

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
    /// The design values that a bag keeps: the base's first, then those that the class itself declares, in order.
    const std::vector<const Member*>& stored() const noexcept { return m_stored; }
    /// Gives the object the design values of another one of this class. Nobody is told, no hook is called.
    void copyDesign(Object& object, const Object& source) const;

private:
    void buildIndex();
    void listDesign(std::initializer_list<Member> own);

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
    std::vector<const Member*> m_stored;
    std::vector<Member::Copier> m_copiers;
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

} // namespace zan::binding
