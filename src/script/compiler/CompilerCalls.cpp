#include "script/compiler/Builtins.h"
#include "script/compiler/Compiler.h"

#include "values/RuntimeError.h"

namespace zan::script {

namespace {

constexpr std::size_t MostArguments = 60000;
constexpr int UnsupportedType = 458;
const std::vector<Expression*> NoArguments;

int numberOf(values::ErrorNumber number) noexcept
{
    return static_cast<int>(number);
}

} // namespace

Operand Compiler::resultOperand(Operand wanted, std::uint32_t mark, bool discard)
{
    if (discard) {
        release(mark);
        return NoOperand;
    }
    return destination(wanted, mark);
}

/// An argument in its slot: by reference where it is a variable or an element, else by value.
void Compiler::argument(const Expression& node, Operand slot, bool byReference)
{
    if (byReference && node.kind == ExpressionKind::Name) {
        const Resolved target = resolve(node.name);
        if (target.isVariable()) {
            emit(Op::MakeReference, slot, target.place);
            return;
        }
        if (target.where == Where::Unknown) {
            emit(Op::RefName, slot, 0, nameNumber(node.name));
            return;
        }
    } else if (byReference && node.kind == ExpressionKind::Index && node.left->kind == ExpressionKind::Name &&
               !node.arguments.empty()) {
        const Resolved target = resolve(node.left->name);
        if (target.isVariable()) {
            elementArgument(node, target.place, slot);
            return;
        }
    }
    valueInto(node, slot);
}

void Compiler::elementArgument(const Expression& node, Operand variable, Operand slot)
{
    const std::uint32_t mark = m_body->temporaries;
    const Operand base = callArguments(node.arguments, false);
    emit(Op::ElementReference, slot, variable, base, node.arguments.size());
    m_body->pathsUsed = true;
    release(mark);
}

/// Arguments side by side in new temporaries; returns the first.
Operand Compiler::callArguments(const std::vector<Expression*>& arguments, bool byReference)
{
    if (arguments.size() > MostArguments)
        throw CompileError(SyntaxError::OutOfMemory, arguments.front()->position);
    const Operand base = newTemporaries(0);
    for (const Expression* node : arguments)
        argument(*node, newTemporary(), byReference);
    return base;
}

Operand Compiler::callBuiltin(const Expression& node, const Resolved& target, Operand wanted)
{
    const std::uint32_t mark = m_body->temporaries;
    const std::vector<Expression*>& arguments = node.kind == ExpressionKind::Index ? node.arguments : NoArguments;
    if (target.where == Where::RunText) {
        if (arguments.size() != 1) {
            raiseError(numberOf(values::ErrorNumber::WrongArgumentCount), node.name);
            return destination(wanted, mark);
        }
        const Operand text = value(*arguments[0]);
        const Operand result = destination(wanted, mark);
        // The text may change any variable, so the result is made aside.
        emit(Op::RunText, isTemporary(result) ? result : newTemporary(), text, 0, target.number);
        if (!isTemporary(result))
            emit(Op::Move, result, operand(Bank::Local, m_body->temporaries - 1), 0, 1);
        return result;
    }
    if (arguments.size() == 1 && arguments[0]->kind != ExpressionKind::Missing) {
        const Operand only = value(*arguments[0]);
        const Operand result = destination(wanted, mark);
        emit(Op::CallBuiltin1, result, only, target.number);
        return result;
    }
    const Operand base = callArguments(arguments, false);
    const Operand result = destination(wanted, mark);
    emit(Op::CallBuiltin, result, base, target.number, arguments.size());
    return result;
}

/// A bare name, or a name with arguments, that is no plain variable.
Operand Compiler::callName(const Expression& node, const Resolved& target, Operand wanted, bool statement)
{
    const std::uint32_t mark = m_body->temporaries;
    const bool hasArguments = node.kind == ExpressionKind::Index;
    const values::Name name = hasArguments ? node.left->name : node.name;
    const std::vector<Expression*>& arguments = hasArguments ? node.arguments : NoArguments;
    switch (target.where) {
    case Where::Procedure: {
        const Operand base = callArguments(arguments, true);
        const Operand result = resultOperand(NoOperand, mark, statement);
        emit(Op::Call, result, base, target.number, arguments.size());
        return result;
    }
    case Where::ClassMember:
        return callOwn(*target.member, arguments, statement ? NoOperand : destination(NoOperand, mark));
    case Where::Builtin:
        if (statement && builtinAt(target.number).onlyInExpressions) {
            callArguments(arguments, false);
            raiseError(UnsupportedType, name);
            return NoOperand;
        }
        [[fallthrough]];
    case Where::RunText:
        return callBuiltin(node, target, wanted != NoOperand && !isTemporary(wanted) ? NoOperand : wanted);
    case Where::HostMember: {
        Expression object;
        object.kind = ExpressionKind::Name;
        object.name = m_context.symbols.at(target.number).name;
        return callMember(object, name, arguments, wanted, statement);
    }
    case Where::Class:
        raiseError(numberOf(values::ErrorNumber::TypeMismatch), name);
        return destination(wanted, mark);
    default:
        break;
    }
    if (!hasArguments) {
        const Operand result = statement ? NoOperand : destination(NoOperand, mark);
        emit(Op::LoadName, result, 0, nameNumber(name), statement ? 1 : 0);
        return result;
    }
    const Operand base = callArguments(arguments, true);
    const Operand result = resultOperand(NoOperand, mark, statement);
    emit(Op::CallName, result, base, nameNumber(name), arguments.size());
    return result;
}

Operand Compiler::callOwn(const ClassMember& member, const std::vector<Expression*>& arguments, Operand wanted)
{
    if (!member.get) {
        raiseError(numberOf(values::ErrorNumber::NoSuchMember), member.name);
        return wanted == NoOperand ? newTemporary() : wanted;
    }
    const std::uint32_t mark = m_body->temporaries;
    const Operand base = callArguments(arguments, true);
    release(mark);
    emit(Op::CallOwn, wanted, base, callee(member.get), arguments.size());
    return wanted;
}

Operand Compiler::indexValue(const Expression& node, Operand wanted, bool statement)
{
    const std::uint32_t mark = m_body->temporaries;
    const Expression& left = *node.left;
    if (left.kind == ExpressionKind::Name) {
        if (isOwnName(left.name)) { // inside its own body a function's name with arguments is a call
            const Procedure& own = *m_body->procedure;
            if (own.owner)
                return callOwn(*m_class->find(left.name), node.arguments,
                               statement ? NoOperand : destination(NoOperand, mark));
            return callName(node, resolveGlobal(left.name), wanted, statement);
        }
        const Resolved target = resolve(left.name);
        if (target.place == NoOperand || target.where == Where::Procedure || target.where == Where::Class ||
            target.where == Where::HostMember)
            return callName(node, target, wanted, statement);
        if (!statement)
            return indexVariable(target.place, node.arguments, wanted);
        const Operand base = callArguments(node.arguments, true);
        release(mark);
        emit(Op::CallValue, NoOperand, target.place, base, node.arguments.size());
        return NoOperand;
    }
    if (left.kind == ExpressionKind::Member) {
        if (const ClassMember* own = ownMember(left); own && own->field < 0 && !own->isConstant)
            return callOwn(*own, node.arguments, statement ? NoOperand : destination(NoOperand, mark));
        const Operand result = callMember(*left.left, left.name, node.arguments, wanted, statement);
        if (node.arguments.empty() && m_body->procedure->code.back().op == Op::Member)
            m_body->procedure->code.back().n |= MemberWithParentheses;
        return result;
    }
    if (left.kind == ExpressionKind::WithMember) {
        const Operand object = withObject();
        if (object == NoOperand) {
            raiseError(505, {});
            return destination(wanted, mark);
        }
        const Operand base = newTemporary();
        emit(Op::Move, base, object);
        callArguments(node.arguments, true);
        const Operand result = resultOperand(NoOperand, mark, statement);
        emit(Op::CallMember, result, base, site(left.name), node.arguments.size());
        return result;
    }
    const Operand indexed = value(left);
    if (statement) {
        const Operand base = callArguments(node.arguments, true);
        release(mark);
        emit(Op::CallValue, NoOperand, indexed, base, node.arguments.size());
        return NoOperand;
    }
    const Operand base = callArguments(node.arguments, false);
    const Operand result = destination(NoOperand, mark);
    emit(Op::Index, result, indexed, base, node.arguments.size());
    return result;
}

Operand Compiler::indexVariable(Operand variable, const std::vector<Expression*>& arguments, Operand wanted)
{
    const std::uint32_t mark = m_body->temporaries;
    // An element may be an object, which no variable takes without a look at it.
    if (wanted != NoOperand && !isTemporary(wanted))
        wanted = NoOperand;
    if (arguments.size() == 1 && arguments[0]->kind != ExpressionKind::Missing) {
        const Operand index = value(*arguments[0]);
        const Operand result = destination(wanted, mark);
        emit(Op::Index1, result, variable, index);
        return result;
    }
    const Operand base = callArguments(arguments, false);
    const Operand result = destination(wanted, mark);
    emit(Op::Index, result, variable, base, arguments.size());
    return result;
}

/// The member of the running object's own class that `Me.name` means, or null.
const ClassMember* Compiler::ownMember(const Expression& target) const
{
    if (target.kind != ExpressionKind::Member || target.left->kind != ExpressionKind::Me || !m_class)
        return nullptr;
    return m_class->find(target.name);
}

Operand Compiler::memberValue(const Expression& node, Operand wanted, bool statement)
{
    const std::uint32_t mark = m_body->temporaries;
    if (node.kind == ExpressionKind::Member) {
        const ClassMember* own = ownMember(node);
        if (own && own->field >= 0 && !statement)
            return operand(Bank::Field, std::uint32_t(own->field));
        if (own && own->field < 0 && !own->isConstant)
            return callOwn(*own, NoArguments, statement ? NoOperand : destination(NoOperand, mark));
        return callMember(*node.left, node.name, NoArguments, wanted, statement);
    }
    const Operand object = withObject();
    if (object == NoOperand) {
        raiseError(505, {});
        return destination(wanted, mark);
    }
    const Operand result = resultOperand(NoOperand, mark, statement);
    emit(Op::Member, result, object, site(node.name), statement ? 1 : 0);
    return result;
}

Operand Compiler::callMember(const Expression& object, values::Name name, const std::vector<Expression*>& arguments,
                             Operand, bool statement)
{
    const std::uint32_t mark = m_body->temporaries;
    if (arguments.empty()) {
        const Operand place = value(object);
        const Operand result = resultOperand(NoOperand, mark, statement);
        emit(Op::Member, result, place, site(name), statement ? 1 : 0);
        if (place != result)
            clearTemporary(place);
        return result;
    }
    const Operand base = newTemporary();
    valueInto(object, base);
    callArguments(arguments, true);
    const Operand result = resultOperand(NoOperand, mark, statement);
    emit(Op::CallMember, result, base, site(name), arguments.size());
    return result;
}

/// An operand through which an element or a variable can be changed in place.
Operand Compiler::reference(const Expression& node)
{
    if (node.kind == ExpressionKind::Name) {
        const Resolved target = resolve(node.name);
        if (target.isVariable())
            return target.place;
        if (target.where == Where::Unknown) {
            const Operand slot = newTemporary();
            emit(Op::RefName, slot, 0, nameNumber(node.name));
            return slot;
        }
    } else if (node.kind == ExpressionKind::Index && !node.arguments.empty() &&
               (node.left->kind == ExpressionKind::Name || node.left->kind == ExpressionKind::Index)) {
        const bool isCall = node.left->kind == ExpressionKind::Name && !resolve(node.left->name).isVariable();
        if (!isCall) {
            const Operand array = reference(*node.left);
            const Operand slot = newTemporary();
            elementArgument(node, array, slot);
            return slot;
        }
    } else if (node.kind == ExpressionKind::Member) {
        if (const ClassMember* own = ownMember(node); own && own->field >= 0)
            return operand(Bank::Field, std::uint32_t(own->field));
    }
    const Operand slot = newTemporary();
    valueInto(node, slot);
    return slot;
}

void Compiler::callStatement(const Statement& node)
{
    const std::uint32_t mark = m_body->temporaries;
    const Expression& target = *node.target;
    switch (target.kind) {
    case ExpressionKind::Index:
        indexValue(target, NoOperand, true);
        break;
    case ExpressionKind::Member:
    case ExpressionKind::WithMember:
        memberValue(target, NoOperand, true);
        break;
    case ExpressionKind::Name: {
        if (isOwnName(target.name)) {
            if (m_body->procedure->owner)
                callOwn(*m_class->find(target.name), NoArguments, NoOperand);
            else
                callName(target, resolveGlobal(target.name), NoOperand, true);
            break;
        }
        const Resolved resolved = resolve(target.name);
        if (resolved.place != NoOperand && resolved.where != Where::Procedure && resolved.where != Where::Class &&
            resolved.where != Where::HostMember)
            emit(Op::CallValue, NoOperand, resolved.place, newTemporaries(0), 0);
        else
            callName(target, resolved, NoOperand, true);
        break;
    }
    default: {
        const Operand place = value(target);
        emit(Op::CallValue, NoOperand, place, newTemporaries(0), 0);
        break;
    }
    }
    release(mark);
}

} // namespace zan::script
