#pragma once

#include <QString>
#include <QStringView>

#include <cstddef>
#include <functional>

namespace zan::values {

/// An interned name: of a document element, a property, a bag key, a script identifier. Two equal texts are one
/// record, so that comparing names is comparing pointers. Each record also knows its case-folded twin, because
/// documents tell case apart and property names do not.
///
/// Records live as long as the process: names come from programs, member tables and documents whose size is
/// limited, and their number stays small. Interning takes a lock, comparing does not.
class Name
{
public:
    /// The name of no characters.
    Name() noexcept = default;
    explicit Name(QStringView text);
    explicit Name(const char* latin1);

    const QString& text() const noexcept;
    bool isEmpty() const noexcept { return m_record == nullptr; }
    /// The same name without regard to case. Folding is the simple Unicode one, never the user's locale.
    Name folded() const noexcept;
    /// The part after the last colon: a name of a document without its prefix. The name itself when it has none.
    Name localPart() const noexcept;
    bool equalsIgnoringCase(Name other) const noexcept { return folded() == other.folded(); }

    /// Address of the record, for hashing; stable for the life of the process.
    const void* id() const noexcept { return m_record; }
    friend bool operator==(Name a, Name b) noexcept { return a.m_record == b.m_record; }

private:
    struct Record;
    struct Table;
    explicit Name(const Record* record) noexcept
        : m_record(record)
    {}
    const Record* m_record = nullptr;
};

} // namespace zan::values

template <>
struct std::hash<zan::values::Name>
{
    std::size_t operator()(zan::values::Name name) const noexcept
    {
        return std::hash<const void*>()(name.id()) >> 4;
    }
};
