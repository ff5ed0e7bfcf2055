#pragma once

#include "binding/MemberTable.h"
#include "binding/Object.h"
#include "binding/PropertyBag.h"
#include "support/ErrorOf.h"
#include "values/NumberText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zan::binding {

/// Members of a class that the checks leave alone, by name: there has to be a reason for each.
struct MemberExemptions
{
    bool keepsNothing = false;        ///< an abstract class: what is written goes nowhere
    std::vector<const char*> notRead; ///< reading changes something, or raises on an object with nothing behind it
    std::vector<const char*> notWritten; ///< writing changes something else, or does not keep what is written
};

/// Walks the member table of an object and tries every member on it. Whatever breaks a rule that holds for every class
/// is one complaint. Properties without indices are read, written with what was read, written with other values of
/// their type and put back as a document would; methods are never called.
class MemberChecks
{
public:
    explicit MemberChecks(Object& object, MemberExemptions exemptions = {})
        : m_object(&object)
        , m_exemptions(std::move(exemptions))
    {}

    std::vector<std::string> complaints()
    {
        checkTable();
        for (const Member& member : table().members()) {
            checkDeclaration(member);
            checkStatuses(member);
            if (member.kind == Member::Kind::Property && member.allowedArguments == 0 && member.get &&
                !isExempt(m_exemptions.notRead, member))
                checkValue(member);
        }
        return m_complaints;
    }

private:
    const MemberTable& table() const { return m_object->members(); }

    void complain(const Member& member, const char* what)
    {
        m_complaints.push_back(member.name.text().toStdString() + ": " + what);
    }

    void require(bool holds, const Member& member, const char* what)
    {
        if (!holds)
            complain(member, what);
    }

    static bool isExempt(const std::vector<const char*>& names, const Member& member)
    {
        return std::any_of(names.begin(), names.end(),
                           [&](const char* name) { return Name(name).equalsIgnoringCase(member.name); });
    }

    void checkTable()
    {
        const auto complainOfTable = [&](const char* what) {
            m_complaints.push_back(std::string("table: ") + what);
        };
        if (table().className().isEmpty())
            complainOfTable("has no class name");
        if (&table() != &m_object->members())
            complainOfTable("is not the same table each time");
        const auto defaults = std::count_if(table().members().begin(), table().members().end(),
                                            [](const Member& member) { return member.isDefault; });
        if (defaults > 1)
            complainOfTable("has more than one default member");
        Variant value;
        const Name unknown("NoClassHasAMemberOfThisName");
        if (m_object->tryGet(unknown, value) != AccessStatus::UnknownName ||
            m_object->tryPut(unknown, value) != AccessStatus::UnknownName)
            complainOfTable("knows a name that it does not have");
    }

    void checkDeclaration(const Member& member)
    {
        const QString& name = member.name.text();
        require(!name.isEmpty() && name.front().isLetter() &&
                    std::all_of(name.begin(), name.end(),
                                [](QChar c) { return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'_'); }),
                member, "is not a name that a script can write");
        require(m_names.insert(name.toCaseFolded()).second, member, "stands twice");
        require(table().find(member.name) == &member && table().find(Name(name.toUpper())) == &member &&
                    table().find(Name(name.toLower())) == &member,
                member, "is not found by its name in any case");
        require(member.requiredArguments <= member.allowedArguments, member, "needs more arguments than it takes");
        require(!member.isDefault || member.get, member, "is the default but cannot be read");
        if (member.kind == Member::Kind::Method) {
            require(member.get && !member.put, member, "is a method that is not one");
        } else {
            require(member.get || member.put, member, "can neither be read nor written");
            require(member.type != ValueType::None, member, "is a property without a type");
        }
    }

    /// What each kind of member answers to an access that it does not allow.
    void checkStatuses(const Member& member)
    {
        Variant value;
        if (!member.get)
            require(m_object->tryGet(member.name, value) == AccessStatus::WriteOnly, member, "can be read");
        if (!member.put)
            require(m_object->tryPut(member.name, value) == AccessStatus::ReadOnly &&
                        m_object->tryPutText(member.name, QStringLiteral("1")) == AccessStatus::ReadOnly,
                    member, "can be written");
        if (member.requiredArguments > 0 && member.get)
            require(test::errorOf([&] { m_object->get(member.name); }) == int(ErrorNumber::WrongArgumentCount),
                    member, "takes fewer arguments than it needs");
    }

    void checkValue(const Member& member)
    {
        Variant first;
        if (m_object->tryGet(member.name, first) != AccessStatus::Ok)
            return complain(member, "cannot be read");
        require(fits(member.type, first), member, "gives a value of another type than it says");
        Variant second;
        require(m_object->tryGet(member.name, second) == AccessStatus::Ok && same(first, second), member,
                "gives another value when it is read again");
        require(!member.hasField || same(first, member.fallback), member, "is not its default in a new object");
        if (!member.put || m_exemptions.keepsNothing || isExempt(m_exemptions.notWritten, member))
            return;
        require(m_object->tryPut(member.name, first) == AccessStatus::Ok, member, "refuses the value that it has");
        require(m_object->tryGet(member.name, second) == AccessStatus::Ok && same(first, second), member,
                "changes when it is written with its own value");
        for (const Variant& other : otherValues(member.type, first)) {
            // A value outside the property's range is refused and leaves the property as it is.
            const bool taken = m_object->tryPut(member.name, other) == AccessStatus::Ok;
            require(m_object->tryGet(member.name, second) == AccessStatus::Ok &&
                        same(taken ? other : first, second),
                    member, taken ? "does not keep what is written" : "changes although it refuses");
            if (taken && member.isStored && member.hasField)
                checkBag(member, other);
            require(putBack(member, first), member, "cannot be put back");
        }
        if (member.range.isBounded())
            checkRange(member, first);
        if (member.type != ValueType::Object)
            require(m_object->tryPut(member.name, Variant::nothing()) != AccessStatus::Ok ||
                        member.type == ValueType::Variant,
                    member, "takes Nothing for a value");
    }

    /// What the ends of its range allow and no more.
    void checkRange(const Member& member, const Variant& before)
    {
        const auto takes = [&](double number) {
            return m_object->tryPut(member.name, Variant(number)) == AccessStatus::Ok;
        };
        for (const double end : {member.range.least, member.range.most}) {
            const double beyond = end == member.range.least ? end - 1 : end + 1;
            if (std::isfinite(end))
                require(takes(end) && !takes(beyond), member, "does not keep to its range");
        }
        require(putBack(member, before), member, "cannot be put back");
    }

    /// The value goes into a bag and comes back from it; without it the property has its default.
    void checkBag(const Member& member, const Variant& value)
    {
        PropertyBag bag;
        Variant now;
        writeStored(*m_object, member, bag);
        readStored(*m_object, member, nullptr);
        const bool isReset = m_object->tryGet(member.name, now) == AccessStatus::Ok && same(now, member.fallback);
        PropertyBag empty;
        writeStored(*m_object, member, empty);
        readStored(*m_object, member, &bag);
        const bool isBack = m_object->tryGet(member.name, now) == AccessStatus::Ok && same(now, value);
        require(isReset && isBack && empty.entries().empty(), member, "does not come back from a bag");
    }

    /// Puts the value back, as the text of a document's element where the type has one.
    bool putBack(const Member& member, const Variant& value)
    {
        const std::optional<QString> text = elementText(value);
        const AccessStatus status =
            text ? m_object->tryPutText(member.name, *text) : m_object->tryPut(member.name, value);
        Variant now;
        return status == AccessStatus::Ok && m_object->tryGet(member.name, now) == AccessStatus::Ok &&
               same(value, now);
    }

    static std::optional<QString> elementText(const Variant& value)
    {
        if (value.is(values::Kind::Boolean))
            return value.boolean() ? QStringLiteral("-1") : QStringLiteral("0");
        if (value.isText())
            return value.text();
        return value.isNumber() ? std::optional(values::documentText(values::toDouble(value))) : std::nullopt;
    }

    static std::vector<Variant> otherValues(ValueType type, const Variant& value)
    {
        switch (type) {
        case ValueType::Boolean:
            return {Variant(!value.boolean())};
        case ValueType::Byte:
            return {Variant(std::uint8_t(value.byte() == 1 ? 2 : 1))};
        case ValueType::Integer:
            return {Variant(std::int16_t(value.integer() == 1 ? 0 : 1)), Variant(std::int16_t(2))};
        case ValueType::Long:
        case ValueType::Colour:
            return {Variant(std::int32_t(value.longInteger() == 1 ? 2 : 1))};
        case ValueType::Single:
            return {Variant(value.single() == 1.0F ? 2.0F : 1.0F)};
        case ValueType::Double:
            return {Variant(value.real() == 1 ? 2.0 : 1.0)};
        case ValueType::String:
            return {Variant(QStringLiteral("zan \u00e4 & <x>")), Variant(QString())};
        default:
            return {};
        }
    }

    static bool fits(ValueType type, const Variant& value)
    {
        switch (type) {
        case ValueType::Variant:
            return true;
        case ValueType::Boolean:
            return value.is(values::Kind::Boolean);
        case ValueType::Byte:
            return value.is(values::Kind::Byte);
        case ValueType::Integer:
            return value.is(values::Kind::Integer);
        case ValueType::Long:
        case ValueType::Colour:
            return value.is(values::Kind::Long);
        case ValueType::Single:
            return value.is(values::Kind::Single);
        case ValueType::Double:
            return value.is(values::Kind::Double);
        case ValueType::Currency:
            return value.is(values::Kind::Currency);
        case ValueType::Date:
            return value.is(values::Kind::Date);
        case ValueType::String:
            return value.isText();
        case ValueType::Object:
            return value.isObject();
        case ValueType::None:
            break;
        }
        return false;
    }

    static bool same(const Variant& a, const Variant& b)
    {
        if (a.kind() != b.kind())
            return false;
        if (a.isObject())
            return a.object() == b.object();
        if (a.isText())
            return a.text() == b.text();
        return a.isArray() || (!a.isNumber() && !a.is(values::Kind::Date)) ||
               values::toDouble(a) == values::toDouble(b);
    }

    Ref<Object> m_object;
    MemberExemptions m_exemptions;
    std::set<QString> m_names;
    std::vector<std::string> m_complaints;
};

/// Every rule that a member table of the object breaks; none for a sound one:
/// `EXPECT_EQ(brokenRules(*object), Rules())`.
using Rules = std::vector<std::string>;
inline Rules brokenRules(Object& object, MemberExemptions exemptions = {})
{
    return MemberChecks(object, std::move(exemptions)).complaints();
}

} // namespace zan::binding
