#include "binding/MemberTable.h"

#include <algorithm>

namespace zan::binding {

namespace {

detail::TableEntry* first = nullptr; // set before anything is constructed

} // namespace

detail::TableEntry::TableEntry(Table table) noexcept
    : m_table(table)
    , m_next(std::exchange(first, this))
{}

detail::TableEntry::~TableEntry()
{
    TableEntry** place = &first;
    while (*place != this)
        place = &(*place)->m_next;
    *place = m_next;
}

std::vector<const MemberTable*> MemberTable::all()
{
    std::vector<const MemberTable*> tables;
    for (const detail::TableEntry* entry = first; entry; entry = entry->m_next)
        tables.push_back(&entry->m_table());
    return tables;
}

MemberTable::MemberTable(const char* className, const MemberTable* base, std::initializer_list<Member> members)
    : m_className(QString::fromLatin1(className))
    , m_base(base)
{
    if (base)
        m_members = base->m_members;
    for (const Member& member : members) {
        const auto same = std::find_if(m_members.begin(), m_members.end(), [&](const Member& existing) {
            return existing.name.equalsIgnoringCase(member.name);
        });
        const bool isKnown = same != m_members.end();
        const bool isAbsent = !member.get && !member.put;
        if (isAbsent && isKnown)
            m_members.erase(same);
        else if (isKnown)
            *same = member;
        else if (!isAbsent)
            m_members.push_back(member);
    }
    buildIndex();
    listDesign(members);
}

void MemberTable::listDesign(std::initializer_list<Member> own)
{
    const auto isOwn = [&](const Member& member) {
        return std::any_of(own.begin(), own.end(),
                           [&](const Member& row) { return row.name.equalsIgnoringCase(member.name); });
    };
    for (const Member& member : m_members) {
        if (member.copy)
            m_copiers.push_back(member.copy);
        if (member.isStored && !isOwn(member))
            m_stored.push_back(&member);
    }
    for (const Member& row : own) {
        if (row.isStored)
            m_stored.push_back(find(row.name));
    }
}

void MemberTable::copyDesign(Object& object, const Object& source) const
{
    for (const Member::Copier copy : m_copiers)
        copy(object, source);
}

void MemberTable::buildIndex()
{
    std::size_t size = 8;
    while (size < m_members.size() * 2)
        size *= 2;
    m_slots.assign(size, {});
    for (const Member& member : m_members) {
        std::size_t slot = std::hash<Name>()(member.name.folded()) & (size - 1);
        while (m_slots[slot].member)
            slot = (slot + 1) & (size - 1);
        m_slots[slot] = {member.name.folded(), &member};
        if (member.isDefault)
            m_default = &member;
    }
}

const Member* MemberTable::find(Name name) const noexcept
{
    const Name folded = name.folded();
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = std::hash<Name>()(folded) & mask; m_slots[slot].member; slot = (slot + 1) & mask) {
        if (m_slots[slot].folded == folded)
            return m_slots[slot].member;
    }
    return nullptr;
}

} // namespace zan::binding
