#pragma once

#include "values/Name.h"
#include "values/RuntimeError.h"
#include "values/Variant.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace zan::binding {

using values::ErrorNumber;
using values::make;
using values::Name;
using values::Ref;
using values::RuntimeError;
using values::Variant;

struct Member;
class MemberTable;

/// Arguments of a call in order. A value of Variant::missing() stands for an argument left out.
using Arguments = std::span<const Variant>;

/// What a late-bound access wants of a member.
enum class Access {
    Get,          ///< read a property or call a method; arguments are its indices or arguments
    Put,          ///< assign a plain value to a property; the last argument is the value
    PutReference, ///< assign an object (Set); the last argument is the object
};

/// Outcome of an access that reports instead of raising.
enum class AccessStatus {
    Ok,
    UnknownName, ///< no such member
    ReadOnly,    ///< the member cannot be assigned
    WriteOnly,   ///< the member cannot be read
    Refused,     ///< the value was no value of the member's type, or its setter raised an error
};

/// Walks a collection for a script's For Each. Stays valid while the collection changes: it then ends early or
/// goes on with what is there, and never returns a dead object.
class Enumerator
{
public:
    virtual ~Enumerator() = default;
    /// The next item, or nothing at the end.
    virtual std::optional<Variant> next() = 0;
};

/// Base of every object that can be reached by name: by the loader of documents, by property bags, by scripts.
/// Each class publishes one static table of its members. Every AutomationObject of the system is an Object, and
/// every Object lives behind a Ref: access by name holds a reference while it runs.
class Object : public values::AutomationObject
{
public:
    /// The class's table of members. One object keeps one table for its life.
    virtual const MemberTable& members() const = 0;

    /// A copy to be kept, for objects that stand for a value (a font does); empty for those that are what they are.
    virtual Ref<Object> valueCopy() const { return {}; }

    QString typeName() const override;
    Variant defaultValue() override;

    /// Late-bound access that raises: 438 for an unknown name, 383 or 394 for an access that the member does not
    /// allow, 450 for a wrong number of arguments, and whatever the member itself raises. An empty name means
    /// the default member. Arguments given to a property that takes none go to the default member of its value,
    /// so that `Scheme.Windows("A")` reads an item. Classes whose members are not in a table (those of a script, say) override it.
    virtual Variant invoke(Name name, Access access, Arguments arguments);

    /// How often what the object shows or stands for has changed, so that whoever has looked at it at an equal count
    /// need not look again. 0 for an object that does not count: nothing follows from it then.
    virtual std::uint32_t revision() const { return 0; }

    /// Items for For Each; nothing for an object that is no collection.
    virtual std::unique_ptr<Enumerator> enumerate();

    Variant get(Name name, Arguments arguments = {}) { return invoke(name, Access::Get, arguments); }
    void put(Name name, const Variant& value) { invoke(name, Access::Put, {&value, 1}); }
    void putReference(Name name, const Variant& object) { invoke(name, Access::PutReference, {&object, 1}); }

    /// Reads a property without raising; the result is untouched unless the status is Ok.
    [[nodiscard]] AccessStatus tryGet(Name name, Variant& result) noexcept;
    /// Assigns a property without raising.
    AccessStatus tryPut(Name name, const Variant& value) noexcept;
    /// Assigns the text of a document element to the property of that name: Boolean is true when the leading
    /// number is not zero, numbers are the leading number, colours signed decimal, text is taken verbatim.
    /// A number outside the property's range is refused.
    AccessStatus tryPutText(Name name, const QString& text) noexcept;
    /// The same for a member of `members()` that the caller has found already. A text that is there for this call only
    /// comes as a view, and is copied where the property keeps it.
    AccessStatus tryPutText(const Member& member, const QString& text) noexcept;
    AccessStatus tryPutText(const Member& member, QStringView text) noexcept;
};

/// The object behind a Variant of kind Object. Raises 424 when it holds no object, 91 when it holds Nothing.
Object& objectOf(const Variant& value);

} // namespace zan::binding
