#include "script/compiler/Compiler.h"

#include "values/RuntimeError.h"

namespace zan::script {

namespace {

constexpr int IllegalAssignment = 501;
constexpr int UnqualifiedReference = 505;

} // namespace

void Compiler::raiseError(int number, values::Name name)
{
    emit(Op::Raise, std::uint32_t(number), 0, name.isEmpty() ? 0 : nameNumber(name) + 1);
}

void Compiler::assign(const Statement& node)
{
    const bool set = node.kind == StatementKind::SetAssign;
    const Expression& target = *node.target;
    switch (target.kind) {
    case ExpressionKind::Name:
        return assignName(target, *node.value, set);
    case ExpressionKind::Member:
    case ExpressionKind::WithMember:
        return assignMember(target, *node.value, set);
    case ExpressionKind::Index:
        return assignIndex(target, *node.value, set);
    default:
        value(*node.value);
        raiseError(IllegalAssignment, {});
        break;
    }
}

void Compiler::assignName(const Expression& target, const Expression& source, bool set)
{
    const Resolved place = resolve(target.name);
    if (place.where == Where::ClassMember)
        return assignOwnMember(*place.member, {}, source, set);
    if (place.where == Where::HostMember) {
        return putMember(operand(Bank::Global, place.number), target.name, source, set);
    }
    if (!set && appendTo(target, place, source))
        return;
    // An operator's result is never an object and may be made in the variable itself.
    const bool direct = !set && place.isVariable() && !place.maybeReference && givesPlainValue(source);
    const Operand made = value(source, direct ? place.place : NoOperand);
    if (!direct || made != place.place)
        store(place, target.name, made, set);
}

/// `s = s & a & b` grows the text in place, so that a loop of appends takes time in proportion to what it adds.
bool Compiler::appendTo(const Expression& target, const Resolved& place, const Expression& source)
{
    constexpr std::size_t MostAtOnce = 200;
    if (!place.isVariable() || source.kind != ExpressionKind::Binary || source.op != Operator::Concatenate)
        return false;
    std::vector<const Expression*> operands;
    const Expression* first = concatOperands(source, operands);
    if (first->kind != ExpressionKind::Name || !first->name.equalsIgnoringCase(target.name) ||
        operands.size() > MostAtOnce)
        return false;
    const Operand base = newTemporary();
    emit(Op::Move, base, place.place);
    for (std::size_t piece = 1; piece < operands.size(); ++piece)
        valueInto(*operands[piece], newTemporary());
    emit(Op::Append, place.place, base, 0, operands.size());
    return true;
}

void Compiler::store(const Resolved& place, values::Name name, Operand source, bool set)
{
    const std::size_t move = isTemporary(source) ? 1 : 0;
    if (place.isVariable())
        emit(set ? Op::Set : Op::Let, place.place, source, 0, move);
    else if (place.where == Where::Unknown)
        emit(Op::StoreName, 0, source, nameNumber(name), set ? 1 : 0);
    else
        raiseError(IllegalAssignment, name);
}

void Compiler::assignOwnMember(const ClassMember& member, const std::vector<Expression*>& arguments,
                               const Expression& source, bool set)
{
    const Procedure* procedure = set ? member.set : member.let;
    const Operand base = callArguments(arguments, true);
    const Operand slot = newTemporary();
    argument(source, slot, false);
    if (!procedure) {
        const bool isMethod = member.get && member.get->kind != ProcedureKind::PropertyGet;
        raiseError(isMethod ? IllegalAssignment : static_cast<int>(values::ErrorNumber::NoSuchMember), member.name);
        return;
    }
    emit(Op::CallOwn, NoOperand, base, callee(procedure), arguments.size() + 1);
}

void Compiler::putMember(Operand object, values::Name name, const Expression& source, bool set)
{
    const Operand made = value(source);
    emit(Op::PutMember, object, made, site(name), set ? 1 : 0);
    clearTemporary(made);
}

void Compiler::assignMember(const Expression& target, const Expression& source, bool set)
{
    if (target.kind == ExpressionKind::WithMember) {
        if (withObject() == NoOperand)
            return raiseError(UnqualifiedReference, {});
        return putMember(withObject(), target.name, source, set);
    }
    if (const ClassMember* own = ownMember(target)) {
        if (own->field >= 0) {
            const Operand made = value(source);
            emit(set ? Op::Set : Op::Let, operand(Bank::Field, std::uint32_t(own->field)), made, 0,
                 isTemporary(made) ? 1 : 0);
            return;
        }
        if (!own->isConstant)
            return assignOwnMember(*own, {}, source, set);
    }
    const Operand object = stable(*target.left, source);
    putMember(object, target.name, source, set);
    clearTemporary(object);
}

void Compiler::putMemberIndexed(const Expression& object, values::Name name,
                                const std::vector<Expression*>& arguments, const Expression& source, bool set)
{
    const Operand base = newTemporary();
    valueInto(object, base);
    callArguments(arguments, true);
    valueInto(source, newTemporary());
    emit(Op::PutMemberIndexed, base, set ? 1 : 0, site(name), arguments.size());
}

void Compiler::putIndex(Operand variable, const std::vector<Expression*>& arguments, const Expression& source,
                        bool set)
{
    if (arguments.size() == 1 && !set && arguments[0]->kind != ExpressionKind::Missing) {
        const Operand index = stable(*arguments[0], source);
        const Operand made = value(source);
        emit(Op::PutIndex1, variable, index, made);
        clearTemporary(made);
        return;
    }
    const Operand base = callArguments(arguments, false);
    valueInto(source, newTemporary());
    emit(Op::PutIndex, variable, base, set ? 1 : 0, arguments.size());
}

void Compiler::assignIndex(const Expression& target, const Expression& source, bool set)
{
    const Expression& left = *target.left;
    if (left.kind == ExpressionKind::Name) {
        const Resolved place = resolve(left.name);
        if (place.where == Where::ClassMember)
            return assignOwnMember(*place.member, target.arguments, source, set);
        if (place.where == Where::HostMember) {
            Expression object;
            object.kind = ExpressionKind::Name;
            object.name = m_context.symbols.at(place.number).name;
            return putMemberIndexed(object, left.name, target.arguments, source, set);
        }
        if (place.where == Where::Procedure && !target.arguments.empty()) {
            value(source);
            return raiseError(IllegalAssignment, left.name);
        }
        if (place.isVariable() || place.where == Where::Unknown || place.where == Where::Procedure)
            return putIndex(reference(left), target.arguments, source, set);
        if (place.place != NoOperand && place.where != Where::Class)
            return putIndex(place.place, target.arguments, source, set);
        value(source);
        return raiseError(IllegalAssignment, left.name);
    }
    if (left.kind == ExpressionKind::Member) {
        const ClassMember* own = ownMember(left);
        if (own && own->field >= 0)
            return putIndex(operand(Bank::Field, std::uint32_t(own->field)), target.arguments, source, set);
        if (own && !own->isConstant)
            return assignOwnMember(*own, target.arguments, source, set);
        return putMemberIndexed(*left.left, left.name, target.arguments, source, set);
    }
    if (left.kind == ExpressionKind::WithMember) {
        if (withObject() == NoOperand)
            return raiseError(UnqualifiedReference, {});
        const Operand base = newTemporary();
        emit(Op::Move, base, withObject());
        callArguments(target.arguments, true);
        valueInto(source, newTemporary());
        emit(Op::PutMemberIndexed, base, set ? 1 : 0, site(left.name), target.arguments.size());
        return;
    }
    putIndex(reference(left), target.arguments, source, set);
}

} // namespace zan::script
