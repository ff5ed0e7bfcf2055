#include "script/compiler/Builtins.h"
#include "script/compiler/Compiler.h"

namespace zan::script {

std::uint32_t Compiler::addLocal(values::Name name, bool maybeReference)
{
    const std::uint32_t slot = m_body->procedure->localCount++;
    m_body->locals[name.folded()] = {.slot = slot, .maybeReference = maybeReference, .value = {}};
    return slot;
}

/// Names declared anywhere in a procedure belong to it from its first line on.
void Compiler::collectLocals(const Block& statements, std::vector<const Statement*>& arrays)
{
    const bool isGlobalText = m_body->procedure->isMain && !m_context.dynamicScope;
    for (const Statement* node : statements) {
        if (node->kind == StatementKind::Dim) {
            bool hasArray = false;
            for (const Declarator& item : node->declarators) {
                hasArray = hasArray || item.isArray;
                if (!isGlobalText && !m_body->locals.contains(item.name.folded())) {
                    const std::uint32_t slot = addLocal(item.name, m_context.dynamicScope);
                    if (m_context.dynamicScope)
                        emit(Op::BindName, operand(Bank::Local, slot), 0, nameNumber(item.name), 1);
                }
            }
            if (hasArray)
                arrays.push_back(node);
        } else if (node->kind == StatementKind::Const && !isGlobalText) {
            m_body->locals[node->name.folded()] = {.isConstant = true, .value = node->value->value};
        } else if (node->kind == StatementKind::ReDim && !isGlobalText) {
            for (const Expression* item : node->items) {
                if (item->left->kind == ExpressionKind::Name && resolve(item->left->name).where == Where::Unknown) {
                    const std::uint32_t slot = addLocal(item->left->name, m_context.dynamicScope);
                    if (m_context.dynamicScope)
                        emit(Op::BindName, operand(Bank::Local, slot), 0, nameNumber(item->left->name), 1);
                }
            }
        }
        collectLocals(node->body, arrays);
        for (const Branch& branch : node->branches)
            collectLocals(branch.body, arrays);
    }
}

void Compiler::collectAssignedName(const Expression* target, std::vector<values::Name>& names)
{
    if (target && target->kind == ExpressionKind::Name)
        names.push_back(target->name);
}

void Compiler::collectAssigned(const Block& statements, std::vector<values::Name>& names) const
{
    for (const Statement* node : statements) {
        switch (node->kind) {
        case StatementKind::Assign:
        case StatementKind::SetAssign:
        case StatementKind::For:
        case StatementKind::ForEach:
            collectAssignedName(node->target, names);
            break;
        default:
            break;
        }
        collectAssigned(node->body, names);
        for (const Branch& branch : node->branches)
            collectAssigned(branch.body, names);
    }
}

/// A name that is assigned but declared nowhere is a local variable, unless a global variable of that name exists
/// when the procedure starts: its slot then refers to that one.
void Compiler::bindAssigned(const Block& statements)
{
    if (m_tree.optionExplicit)
        return;
    std::vector<values::Name> assigned;
    collectAssigned(statements, assigned);
    for (const values::Name name : assigned) {
        if (resolve(name).where != Where::Unknown)
            continue;
        const std::uint32_t slot = addLocal(name, true);
        emit(Op::BindName, operand(Bank::Local, slot), 0, nameNumber(name), m_context.dynamicScope ? 1 : 0);
    }
}

void Compiler::emitArrays(const std::vector<const Statement*>& arrays)
{
    for (const Statement* node : arrays) {
        for (const Declarator& item : node->declarators) {
            if (!item.isArray)
                continue;
            const Resolved place = resolve(item.name);
            if (place.where == Where::Global && m_redeclaredArrays.contains(place.number))
                continue;
            m_body->procedure->bounds.push_back(item.upperBounds);
            emit(Op::DimArray, place.place, 0, std::uint32_t(m_body->procedure->bounds.size() - 1));
        }
    }
}

bool Compiler::isOwnName(values::Name name) const
{
    const Procedure& procedure = *m_body->procedure;
    return procedure.resultSlot >= 0 && !procedure.isMain && procedure.name.equalsIgnoringCase(name);
}

Compiler::Resolved Compiler::resolve(values::Name name) const
{
    if (m_body) {
        if (const auto found = m_body->locals.find(name.folded()); found != m_body->locals.end()) {
            const Local& local = found->second;
            if (local.isConstant)
                return {.where = Where::Constant, .place = const_cast<Compiler*>(this)->constant(local.value)};
            return {.where = Where::Local,
                    .place = operand(Bank::Local, local.slot),
                    .maybeReference = local.maybeReference};
        }
    }
    if (m_class && m_body) {
        if (const ClassMember* member = m_class->find(name)) {
            if (member->isConstant)
                return {.where = Where::Constant, .place = const_cast<Compiler*>(this)->constant(member->constant)};
            if (member->field >= 0)
                return {.where = Where::Field, .place = operand(Bank::Field, std::uint32_t(member->field))};
            return {.where = Where::ClassMember, .member = member};
        }
    }
    if (m_context.dynamicScope)
        return {};
    return resolveGlobal(name);
}

Compiler::Resolved Compiler::resolveGlobal(values::Name name) const
{
    const auto at = [](Where where, std::uint32_t number) {
        return Resolved{.where = where, .place = operand(Bank::Global, number), .number = number};
    };
    if (const auto found = m_declared.find(name.folded()); found != m_declared.end()) {
        constexpr Where Kinds[] = {Where::Global, Where::GlobalConstant, Where::Procedure, Where::Class};
        return at(Kinds[int(found->second.kind)], found->second.symbol);
    }
    if (const Symbol* symbol = m_context.symbols.find(name)) {
        constexpr Where Kinds[] = {Where::Unknown,   Where::Global, Where::GlobalConstant,
                                   Where::Procedure, Where::Class,  Where::HostItem};
        if (symbol->kind != Symbol::Kind::Undefined)
            return at(Kinds[int(symbol->kind)], m_context.symbols.numberOf(*symbol));
    }
    if (const std::optional<RunMode> mode = runModeOf(name))
        return {.where = Where::RunText, .number = std::uint32_t(*mode)};
    if (const int number = findBuiltin(name); number >= 0)
        return {.where = Where::Builtin, .number = std::uint32_t(number)};
    if (const Variant* found = findConstant(name)) {
        const Operand place = m_body ? const_cast<Compiler*>(this)->constant(*found) : NoOperand;
        return {.where = Where::BuiltinConstant, .place = place};
    }
    if (const int item = m_context.hostItemWith(name); item >= 0)
        return at(Where::HostMember, std::uint32_t(item));
    return {};
}

} // namespace zan::script
