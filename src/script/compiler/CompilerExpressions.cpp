#include "script/compiler/Compiler.h"

#include "values/Compare.h"

#include <algorithm>

namespace zan::script {

using values::Operand::NumberLiteral;
using values::Operand::TextLiteral;

namespace {

bool isComparison(Operator op) noexcept
{
    return op >= Operator::Equal && op <= Operator::GreaterEqual;
}

int literalFlag(const Expression& node) noexcept
{
    if (node.kind != ExpressionKind::Literal || node.literal == LiteralKind::None)
        return 0;
    return static_cast<int>(node.literal == LiteralKind::Text ? TextLiteral : NumberLiteral);
}

Op unlessOperation(Operator op) noexcept
{
    switch (op) {
    case Operator::Equal:
        return Op::UnlessEqual;
    case Operator::NotEqual:
        return Op::UnlessNotEqual;
    case Operator::Less:
        return Op::UnlessLess;
    case Operator::Greater:
        return Op::UnlessGreater;
    case Operator::LessEqual:
        return Op::UnlessLessEqual;
    default:
        return Op::UnlessGreaterEqual;
    }
}

} // namespace

/// Whether evaluating the node may run code that changes variables. Operators grouped from the left are walked in a
/// loop, however many there are.
bool Compiler::isImpure(const Expression& start) const
{
    const Expression* node = &start;
    while (true) {
        switch (node->kind) {
        case ExpressionKind::Literal:
        case ExpressionKind::Me:
        case ExpressionKind::Missing:
            return false;
        case ExpressionKind::Name: {
            const Where where = resolve(node->name).where;
            return where == Where::Procedure || where == Where::ClassMember || where == Where::Unknown ||
                   where == Where::HostMember;
        }
        case ExpressionKind::Binary:
            if (isImpure(*node->right))
                return true;
            node = node->left;
            break;
        case ExpressionKind::Unary:
        case ExpressionKind::Parenthesised:
            node = node->left;
            break;
        default:
            return true;
        }
    }
}

/// True for a node whose value is never an object, so that it may be made in the assigned variable itself.
bool Compiler::givesPlainValue(const Expression& node) noexcept
{
    return node.kind == ExpressionKind::Binary ||
           (node.kind == ExpressionKind::Unary && node.op != Operator::Plus); // `+` leaves an object as it is
}

std::uint16_t Compiler::literalFlags(Operator op, const Expression& left, const Expression& right) const
{
    return std::uint16_t(int(op) | literalFlag(left) << LeftLiteralShift | literalFlag(right) << RightLiteralShift);
}

/// Where a result goes: the operand wanted, or the first temporary above the mark.
Operand Compiler::destination(Operand wanted, std::uint32_t mark)
{
    release(mark);
    return wanted == NoOperand ? newTemporary() : wanted;
}

/// The node's value, out of reach of whatever the later node may do to variables.
Operand Compiler::stable(const Expression& node, const Expression& later)
{
    const Operand place = value(node);
    if (isTemporary(place) || bankOf(place) == Bank::Constant || !isImpure(later))
        return place;
    const Operand copy = newTemporary();
    emit(Op::Move, copy, place);
    return copy;
}

Operand Compiler::value(const Expression& node, Operand wanted)
{
    switch (node.kind) {
    case ExpressionKind::Literal:
        return constant(node.value);
    case ExpressionKind::Missing:
        return constant(values::Variant::missing());
    case ExpressionKind::Name:
        return nameValue(node, wanted);
    case ExpressionKind::Member:
    case ExpressionKind::WithMember:
        return memberValue(node, wanted, false);
    case ExpressionKind::Index:
        return indexValue(node, wanted, false);
    case ExpressionKind::Me: {
        const Operand place = newTemporary();
        emit(Op::LoadMe, place);
        return place;
    }
    case ExpressionKind::New: {
        const Operand place = newTemporary();
        emit(Op::New, place, 0, nameNumber(node.name));
        return place;
    }
    case ExpressionKind::Unary:
        return unaryValue(node, wanted);
    case ExpressionKind::Binary:
        return binaryValue(node, wanted);
    case ExpressionKind::Parenthesised:
        return value(*node.left, wanted);
    }
    return NoOperand;
}

/// The node's value in a temporary of its own, for arguments that must lie side by side.
void Compiler::valueInto(const Expression& node, Operand temporary)
{
    const std::uint32_t mark = m_body->temporaries;
    const Operand place = value(node, temporary);
    if (place != temporary)
        emit(Op::Move, temporary, place, 0, isTemporary(place) ? 1 : 0);
    release(mark);
}

Operand Compiler::unaryValue(const Expression& node, Operand wanted)
{
    const std::uint32_t mark = m_body->temporaries;
    const Operand inner = value(*node.left);
    const Operand result = destination(wanted, mark);
    emit(Op::Unary, result, inner, 0, std::size_t(node.op));
    return result;
}

Operand Compiler::binaryValue(const Expression& node, Operand wanted)
{
    if (node.op == Operator::Concatenate)
        return concatValue(node, wanted);
    const std::uint32_t mark = m_body->temporaries;
    // A chain of operators leans to the left: walk down to its first operand, then back up.
    std::vector<const Expression*> chain;
    const Expression* first = &node;
    for (; first->kind == ExpressionKind::Binary && first->op != Operator::Concatenate; first = first->left)
        chain.push_back(first);
    Operand left = stable(*first, *chain.back()->right);
    while (true) {
        const Expression& step = *chain.back();
        chain.pop_back();
        left = binaryStep(step, left, chain.empty() ? wanted : NoOperand, mark);
        if (chain.empty())
            return left;
    }
}

Operand Compiler::binaryStep(const Expression& node, Operand left, Operand wanted, std::uint32_t mark)
{
    const Operand right = value(*node.right);
    const Operand result = destination(wanted, mark);
    switch (node.op) {
    case Operator::Add:
        emit(Op::Add, result, left, right);
        break;
    case Operator::Subtract:
        emit(Op::Subtract, result, left, right);
        break;
    case Operator::Multiply:
        emit(Op::Multiply, result, left, right);
        break;
    case Operator::Divide:
        emit(Op::Divide, result, left, right);
        break;
    case Operator::Is:
        emit(Op::Is, result, left, right);
        if (right != result)
            clearTemporary(right); // an object must not live on because it was compared
        break;
    default:
        if (isComparison(node.op))
            emit(Op::Compare, result, left, right, literalFlags(node.op, *node.left, *node.right));
        else
            emit(Op::Binary, result, left, right, std::size_t(node.op));
        break;
    }
    return result;
}

/// The operands of a chain of `&` from left to right; returns the first.
const Expression* Compiler::concatOperands(const Expression& node, std::vector<const Expression*>& operands)
{
    const Expression* first = &node;
    for (; first->kind == ExpressionKind::Binary && first->op == Operator::Concatenate; first = first->left)
        operands.push_back(first->right);
    operands.push_back(first);
    std::reverse(operands.begin(), operands.end());
    return first;
}

Operand Compiler::concatValue(const Expression& node, Operand wanted)
{
    constexpr std::size_t MostAtOnce = 200;
    const std::uint32_t mark = m_body->temporaries;
    std::vector<const Expression*> operands;
    concatOperands(node, operands);
    if (operands.size() == 2) {
        const Operand left = stable(*operands[0], *operands[1]);
        const Operand right = value(*operands[1]);
        const Operand result = destination(wanted, mark);
        emit(Op::Concat2, result, left, right);
        return result;
    }
    // All pieces lie side by side and are joined at once; joining is associative.
    const Operand base = newTemporary();
    valueInto(*operands[0], base);
    std::size_t place = 1;
    while (place < operands.size()) {
        std::size_t count = 1;
        for (; count < MostAtOnce && place < operands.size(); ++count, ++place)
            valueInto(*operands[place], newTemporary());
        release(mark);
        const bool last = place == operands.size();
        const Operand result = last && wanted != NoOperand ? wanted : newTemporary();
        emit(Op::Concat, result, base, 0, count);
        if (last)
            return result;
    }
    return base;
}

Operand Compiler::nameValue(const Expression& node, Operand wanted)
{
    const Resolved target = resolve(node.name);
    switch (target.where) {
    case Where::Local:
    case Where::Constant:
    case Where::Global:
    case Where::GlobalConstant:
    case Where::HostItem:
    case Where::Field:
    case Where::BuiltinConstant:
        return target.place;
    default:
        return callName(node, target, wanted, false);
    }
}

/// Emits the condition and a jump that is taken unless it is true.
std::size_t Compiler::jumpUnless(const Expression& condition)
{
    const std::uint32_t mark = m_body->temporaries;
    m_body->pathsUsed = false;
    std::size_t jump = 0;
    if (condition.kind == ExpressionKind::Binary && isComparison(condition.op)) {
        const Operand left = stable(*condition.left, *condition.right);
        const Operand right = value(*condition.right);
        if (m_body->pathsUsed)
            emit(Op::DropPaths);
        jump = emit(unlessOperation(condition.op), left, right, 0,
                    literalFlags(condition.op, *condition.left, *condition.right));
    } else {
        const Operand place = value(condition);
        if (m_body->pathsUsed)
            emit(Op::DropPaths);
        jump = emit(Op::JumpUnless, place, 0, 0, isTemporary(place) ? 1 : 0);
    }
    m_body->pathsUsed = false;
    release(mark);
    return jump;
}

std::size_t Compiler::jumpIf(const Expression& condition)
{
    const std::uint32_t mark = m_body->temporaries;
    m_body->pathsUsed = false;
    const Operand place = value(condition);
    if (m_body->pathsUsed)
        emit(Op::DropPaths);
    m_body->pathsUsed = false;
    release(mark);
    return emit(Op::JumpIf, place, 0, 0, isTemporary(place) ? 1 : 0);
}

Operand Compiler::withObject() const
{
    return m_body->withObjects.empty() ? NoOperand : m_body->withObjects.back();
}

} // namespace zan::script
