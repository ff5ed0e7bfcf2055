#include "script/machine/Engine.h"
#include "script/machine/Instance.h"
#include "script/machine/ProcedureRef.h"
#include "script/machine/RegExpObject.h"
#include "script/machine/VmPush.h"

#include "binding/MemberTable.h"

#include <typeinfo>

namespace zan::script {

using binding::Access;
using values::ErrorNumber;
using values::Kind;
using values::Variant;

namespace {

constexpr int UndefinedVariable = 500;
constexpr int UndefinedClass = 506;

/// The object of this class that a value holds and that belongs to this engine, or null. One of another engine is
/// an object like any of the host's. These classes are this library's own, so that each has one type record:
/// comparing records by name took a sixth of an access to a host's object.
template <class T>
T* ownObject(const Variant& value, const Engine& engine) noexcept
{
    values::AutomationObject* object = value.isObject() ? value.object() : nullptr;
    if (!object || &typeid(*object) != &typeid(T))
        return nullptr;
    T* const own = static_cast<T*>(object);
    return own->engine() == &engine ? own : nullptr;
}

} // namespace

/// Arguments for code outside the engine: values instead of references.
void Vm::settle(Slot* arguments, std::size_t count)
{
    for (std::size_t place = 0; place < count; ++place) {
        if (arguments[place].isReference())
            arguments[place] = Variant(followReference(arguments[place], false));
        spendOn(arguments[place].value());
    }
}

bool Vm::isInsideClass(const ClassInfo& info) const noexcept
{
    return !m_frames.empty() && m_frames.back().me && &m_frames.back().me->info() == &info;
}

/// The arguments where a callee can take them over as its first slots.
Slot* Vm::onStack(Slot* arguments, std::size_t count)
{
    if (arguments >= m_stack.begin() && arguments < m_stack.end())
        return arguments;
    Slot* const base = top();
    reserve(base, count + 1);
    m_stack.noteUse(std::size_t(base - m_stack.begin()) + count);
    std::copy(arguments, arguments + count, base);
    return base;
}

bool Vm::getMember(const Variant& target, Site& site, Slot* arguments, std::size_t count, Operand result,
                   bool parentheses)
{
    if (Instance* object = ownObject<Instance>(target, m_engine)) {
        if (site.classSerial != object->info().serial) {
            site.member = object->info().find(site.name);
            site.classSerial = object->info().serial;
        }
        if (!site.member)
            throw NamedError(ErrorNumber::NoSuchMember, site.name);
        return callInstance(*object, site.member, arguments, count, result, parentheses);
    }
    if (!target.isObject())
        throw NamedError(ErrorNumber::ObjectRequired, site.name);
    if (!target.object())
        throw NamedError(ErrorNumber::ObjectNotSet, site.name);
    settle(arguments, count);
    const values::Ref<values::AutomationObject> alive = target.objectRef();
    Variant value;
    try {
        value = static_cast<binding::Object&>(*alive).invoke(site.name, Access::Get, {valuesOf(arguments), count});
    } catch (const StopError&) {
        throw;
    } catch (const values::RuntimeError& error) {
        const bool isUnknown = !static_cast<binding::Object&>(*alive).members().find(site.name);
        if (isUnknown && error.is(ErrorNumber::NoSuchMember) && error.source().isEmpty())
            throw NamedError(ErrorNumber::NoSuchMember, site.name);
        throw;
    }
    clear(arguments, count);
    chargeValue(value);
    m_budget.countCall();
    deliver(result, std::move(value));
    return false;
}

bool Vm::callInstance(Instance& object, const ClassMember* member, Slot* arguments, std::size_t count,
                      Operand result, bool parentheses)
{
    const bool inside = isInsideClass(object.info());
    const auto refuse = [member] { throw NamedError(ErrorNumber::NoSuchMember, member->name); };
    if (member->field >= 0 || member->isConstant) {
        if (!member->fieldIsPublic && !inside)
            refuse();
        Slot value = member->isConstant ? Slot(member->constant) : object.fields()[member->field];
        if (count == 0) {
            // COMPAT: a field cannot be read with empty parentheses, though it can be assigned so: they are an index
            // without dimensions where the field is an array.
            if (parentheses && value.is(Kind::Array))
                values::raise(ErrorNumber::SubscriptOutOfRange);
            if (parentheses && !value.is(Kind::Object))
                values::raise(ErrorNumber::InvalidCall);
            deliver(result, std::move(value.value()));
            return false;
        }
        if (!value.is(Kind::Array) && !value.is(Kind::Object))
            refuse();
        settle(arguments, count);
        return indexInto(value, arguments, count, result);
    }
    if (!member->get || (!member->get->isPublic && !inside))
        refuse();
    if (--m_credit < 0)
        tick();
    push(*member->get, onStack(arguments, count), count, &object, result);
    return true;
}

/// Assigns the last argument to a member; the others are its indices.
bool Vm::putMember(const Variant& target, Site& site, Slot* arguments, std::size_t count, bool set)
{
    if (set && !read(arguments[count - 1]).isObject())
        values::raise(ErrorNumber::ObjectRequired);
    if (Instance* object = ownObject<Instance>(target, m_engine)) {
        if (site.classSerial != object->info().serial) {
            site.member = site.name.isEmpty() ? object->info().defaultMember : object->info().find(site.name);
            site.classSerial = object->info().serial;
        }
        if (!site.member)
            throw NamedError(ErrorNumber::NoSuchMember, site.name);
        return putInstance(*object, site.member, arguments, count, set);
    }
    if (!target.isObject())
        throw NamedError(ErrorNumber::ObjectRequired, site.name);
    if (!target.object())
        throw NamedError(ErrorNumber::ObjectNotSet, site.name);
    settle(arguments, count);
    const values::Ref<values::AutomationObject> alive = target.objectRef();
    static_cast<binding::Object&>(*alive).invoke(site.name, set ? Access::PutReference : Access::Put,
                                                 {valuesOf(arguments), count});
    clear(arguments, count);
    m_budget.countCall();
    return false;
}

bool Vm::putInstance(Instance& object, const ClassMember* member, Slot* arguments, std::size_t count, bool set)
{
    const bool inside = isInsideClass(object.info());
    const auto refuse = [member] { throw NamedError(ErrorNumber::NoSuchMember, member->name); };
    if (member->field >= 0) {
        if (!member->fieldIsPublic && !inside)
            refuse();
        settle(arguments, count);
        if (count == 1) {
            const Variant& value = arguments[0].value();
            object.fields()[member->field] = set ? value : plainValue(value);
            return false;
        }
        Slot& field = object.fields()[member->field];
        if (!field.is(Kind::Array) && !field.is(Kind::Object))
            refuse();
        return putIndex(field, arguments, count - 1, set);
    }
    const Procedure* procedure = set ? member->set : member->let;
    if (!procedure || (!procedure->isPublic && !inside))
        refuse();
    if (--m_credit < 0)
        tick();
    push(*procedure, onStack(arguments, count), count, &object, NoOperand);
    return true;
}

/// A value used as a procedure: the default member of an object. Raises 13 for anything else.
bool Vm::callDefault(const Variant& value, Slot* arguments, std::size_t count, Operand result)
{
    if (!value.isObject())
        values::raise(ErrorNumber::TypeMismatch);
    if (!value.object())
        values::raise(ErrorNumber::ObjectNotSet);
    if (Instance* object = ownObject<Instance>(value, m_engine)) {
        if (!object->info().defaultMember)
            values::raise(ErrorNumber::NoSuchMember);
        return callInstance(*object, object->info().defaultMember, arguments, count, result);
    }
    if (const ProcedureRef* reference = ownObject<ProcedureRef>(value, m_engine)) {
        const Procedure& procedure = reference->procedure();
        if (--m_credit < 0)
            tick();
        push(procedure, onStack(arguments, count), count, nullptr, result);
        return true;
    }
    settle(arguments, count);
    const values::Ref<values::AutomationObject> alive = value.objectRef();
    Variant made = static_cast<binding::Object&>(*alive).invoke({}, Access::Get, {valuesOf(arguments), count});
    clear(arguments, count);
    chargeValue(made);
    m_budget.countCall();
    deliver(result, std::move(made));
    return false;
}

bool Vm::create(values::Name name, Operand result)
{
    if (name.folded().text() == QLatin1String("regexp")) { // even where the script has a class of that name
        deliver(result, Variant(values::make<RegExpObject>(m_engine)));
        return false;
    }
    const Symbol* symbol = m_engine.symbols().find(name);
    if (symbol && symbol->kind == Symbol::Kind::Class) {
        const ClassInfo& info = *symbol->classInfo;
        std::size_t bytes = sizeof(Instance) + info.fields.size() * sizeof(Slot);
        for (const ClassInfo::Field& field : info.fields)
            bytes += bytesOfArray(field.upperBounds);
        chargeBytes(bytes);
        const auto object = values::make<Instance>(m_engine, info);
        deliver(result, Variant(object));
        if (!info.initialize)
            return false;
        if (--m_credit < 0)
            tick();
        push(*info.initialize, top(), 0, object.get(), NoOperand);
        return true;
    }
    const bool known = symbol && symbol->kind != Symbol::Kind::Undefined;
    throw NamedError(known || findVariable(name) ? UndefinedClass : UndefinedVariable, name);
}

Variant Vm::invokeInstance(Instance& object, values::Name name, Access access, binding::Arguments arguments)
{
    const ClassMember* member = name.isEmpty() ? object.info().defaultMember : object.info().find(name);
    if (!member)
        values::raise(ErrorNumber::NoSuchMember);
    const bool isGet = access == Access::Get;
    if (member->field >= 0 || member->isConstant) {
        if (!member->fieldIsPublic)
            values::raise(ErrorNumber::NoSuchMember);
        if (isGet && arguments.empty())
            return member->isConstant ? member->constant : object.fields()[member->field].value();
        if (!isGet && arguments.size() == 1 && !member->isConstant) {
            object.fields()[member->field] =
                access == Access::PutReference ? arguments[0] : plainValue(arguments[0]);
            return {};
        }
        values::raise(ErrorNumber::NoSuchMember);
    }
    const Procedure* procedure = isGet ? member->get : access == Access::PutReference ? member->set : member->let;
    if (!procedure || !procedure->isPublic)
        values::raise(ErrorNumber::NoSuchMember);
    return run(*procedure, &object, arguments);
}

} // namespace zan::script
