#include "script/compiler/Builtins.h"
#include "script/machine/Engine.h"
#include "script/machine/Instance.h"
#include "script/machine/VmPush.h"

namespace zan::script {

using values::ErrorNumber;
using values::Variant;

namespace {

constexpr int UndefinedVariable = 500;
constexpr int IllegalAssignment = 501;
constexpr int UnsupportedType = 458;

} // namespace

/// A variable that is not global: one declared by text run inside the procedure, one of the procedure that such a
/// text runs in, or a field of its object.
Slot* Vm::findVariable(values::Name name)
{
    const Frame& running = m_frames.back();
    const bool isInside = running.procedure->dynamicScope;
    const Frame& scope = isInside ? m_frames[running.scope] : running;
    if (scope.dynamic) {
        if (const auto found = scope.dynamic->find(name.folded()); found != scope.dynamic->end())
            return found->second.get();
    }
    if (!isInside)
        return nullptr;
    spend(scope.procedure->locals.size() / 16);
    for (const auto& [local, slot] : scope.procedure->locals) {
        if (local == name.folded())
            return &scope.base[slot];
    }
    if (scope.me) {
        const ClassMember* member = scope.me->info().find(name);
        if (member && member->field >= 0)
            return &scope.me->fields()[member->field];
    }
    return nullptr;
}

Vm::Found Vm::find(values::Name name)
{
    Found found;
    found.variable = findVariable(name);
    if (found.variable)
        return found;
    const Frame& running = m_frames.back();
    if (running.procedure->dynamicScope && running.me) {
        found.member = running.me->info().find(name);
        if (found.member) {
            found.me = running.me;
            return found;
        }
    }
    if (const Symbol* symbol = m_engine.symbols().find(name)) {
        switch (symbol->kind) {
        case Symbol::Kind::Variable:
            found.variable = m_engine.symbols().slots() + m_engine.symbols().numberOf(*symbol);
            return found;
        case Symbol::Kind::Constant:
        case Symbol::Kind::HostItem:
            found.variable = m_engine.symbols().slots() + m_engine.symbols().numberOf(*symbol);
            found.readOnly = true;
            return found;
        case Symbol::Kind::Procedure:
            found.procedure = symbol->procedure;
            return found;
        default:
            break;
        }
    }
    found.runText = runModeOf(name);
    if (found.runText)
        return found;
    found.builtin = findBuiltin(name);
    if (found.builtin < 0)
        found.constant = findConstant(name);
    if (found.builtin < 0 && !found.constant)
        found.hostItem = m_engine.hostItemWith(name);
    return found;
}

/// Adds a variable to the procedure that the running text belongs to, or to the globals outside procedures.
Slot& Vm::makeVariable(values::Name name)
{
    Frame& running = m_frames.back();
    Frame& scope = running.procedure->dynamicScope ? m_frames[running.scope] : running;
    if (scope.procedure->isMain) {
        const std::uint32_t number = m_engine.symbols().intern(name);
        Symbol& symbol = m_engine.symbols().at(number);
        if (symbol.kind == Symbol::Kind::Undefined) {
            symbol.kind = Symbol::Kind::Variable;
            m_engine.noteChange(name);
        }
        return m_engine.symbols().slots()[number];
    }
    if (!scope.dynamic)
        scope.dynamic = new DynamicScope;
    std::unique_ptr<Slot>& variable = (*scope.dynamic)[name.folded()];
    if (!variable)
        variable = std::make_unique<Slot>();
    return *variable;
}

bool Vm::loadName(values::Name name, Operand result, bool statement)
{
    const Found found = find(name);
    if (found.variable) {
        if (statement)
            return callDefault(read(*found.variable), nullptr, 0, result);
        deliver(result, Variant(read(*found.variable)));
        return false;
    }
    if (found.constant) {
        deliver(result, Variant(*found.constant));
        return false;
    }
    if (found.isCallable())
        return callFound(found, name, nullptr, 0, result);
    if (m_frames.back().procedure->optionExplicit)
        throw NamedError(UndefinedVariable, name);
    if (statement)
        throw NamedError(ErrorNumber::TypeMismatch, name);
    deliver(result, Variant());
    return false;
}

bool Vm::callFound(const Found& found, values::Name name, Slot* arguments, std::size_t count, Operand result)
{
    if (--m_credit < 0)
        tick();
    if (found.procedure) {
        push(*found.procedure, onStack(arguments, count), count, nullptr, result);
        return true;
    }
    if (found.member)
        return callInstance(*found.me, found.member, arguments, count, result);
    if (found.runText) {
        if (count != 1)
            throw NamedError(ErrorNumber::WrongArgumentCount, name);
        settle(arguments, count);
        const Variant text = std::move(arguments[0].value());
        clear(arguments, count);
        return runText(text, *found.runText, result);
    }
    if (found.builtin >= 0) {
        if (result == NoOperand && builtinAt(std::uint32_t(found.builtin)).onlyInExpressions)
            throw NamedError(UnsupportedType, name);
        settle(arguments, count);
        Variant value = callBuiltin(std::uint32_t(found.builtin), valuesOf(arguments), count);
        clear(arguments, count);
        deliver(result, std::move(value));
        return false;
    }
    settle(arguments, count);
    const Variant object = m_engine.symbols().value(std::uint32_t(found.hostItem));
    Variant value = binding::objectOf(object).invoke(name, binding::Access::Get, {valuesOf(arguments), count});
    clear(arguments, count);
    chargeValue(value);
    m_budget.countCall();
    deliver(result, std::move(value));
    return false;
}

bool Vm::refName(values::Name name, Operand result)
{
    const Found found = find(name);
    Slot* variable = found.variable;
    if (!variable && (found.isCallable() || found.constant))
        return loadName(name, result, false);
    if (found.readOnly) {
        deliver(result, Variant(variable->value()));
        return false;
    }
    if (!variable) {
        if (m_frames.back().procedure->optionExplicit)
            throw NamedError(UndefinedVariable, name);
        variable = &makeVariable(name);
    }
    refer(result, wayTo(*variable));
    return false;
}

bool Vm::storeName(values::Name name, const Variant& value, bool set)
{
    if (set && !value.isObject())
        values::raise(ErrorNumber::ObjectRequired);
    const Variant stored = set ? value : plainValue(value);
    const Found found = find(name);
    if (found.variable && !found.readOnly) {
        follow(*found.variable) = stored;
        return false;
    }
    if (found.member) {
        Slot copy(stored);
        return putInstance(*found.me, found.member, &copy, 1, set);
    }
    if (found.hostItem >= 0) {
        const Variant object = m_engine.symbols().value(std::uint32_t(found.hostItem));
        const auto access = set ? binding::Access::PutReference : binding::Access::Put;
        binding::objectOf(object).invoke(name, access, {&stored, 1});
        m_budget.countCall();
        return false;
    }
    if (found.variable || found.isCallable() || found.constant)
        throw NamedError(IllegalAssignment, name);
    if (m_frames.back().procedure->optionExplicit)
        throw NamedError(UndefinedVariable, name);
    makeVariable(name) = stored;
    return false;
}

/// A slot for a name that the procedure assigns without declaring it: refers to the variable of that name where
/// there is one, and is a variable of its own otherwise.
void Vm::bindName(Slot& slot, values::Name name, bool make)
{
    const Found found = find(name);
    Slot* variable = found.readOnly ? nullptr : found.variable;
    if (!variable && make && !found.member)
        variable = &makeVariable(name);
    if (variable)
        slot = wayTo(*variable);
}

bool Vm::callName(values::Name name, Slot* arguments, std::size_t count, Operand result)
{
    const Frame& running = m_frames.back();
    if (running.procedure->dynamicScope) { // a function's own name with arguments is a call, not its result
        const Frame& scope = m_frames[running.scope];
        if (scope.procedure->resultSlot >= 0 && scope.procedure->name.equalsIgnoringCase(name)) {
            push(*scope.procedure, onStack(arguments, count), count, scope.me, result);
            return true;
        }
    }
    const Found found = find(name);
    if (found.variable) {
        settle(arguments, count);
        Slot target(read(*found.variable));
        if (result == NoOperand)
            return callDefault(target.value(), arguments, count, result);
        return indexInto(target, arguments, count, result);
    }
    if (found.isCallable())
        return callFound(found, name, arguments, count, result);
    if (m_frames.back().procedure->optionExplicit)
        throw NamedError(UndefinedVariable, name);
    throw NamedError(ErrorNumber::TypeMismatch, name);
}

} // namespace zan::script
