#include "script/compiler/Compiler.h"

namespace zan::script {

void Compiler::block(const Block& statements)
{
    for (const Statement* node : statements)
        statement(*node);
}

void Compiler::statement(const Statement& node)
{
    const std::uint32_t temporaries = m_body->temporaries;
    m_body->pathsUsed = false;
    const std::size_t number = mark(node.position);
    switch (node.kind) {
    case StatementKind::Dim:
        dimStatement(node);
        break;
    case StatementKind::ReDim:
        redimStatement(node);
        break;
    case StatementKind::Erase:
        eraseStatement(node);
        break;
    case StatementKind::Assign:
    case StatementKind::SetAssign:
        assign(node);
        break;
    case StatementKind::Call:
        callStatement(node);
        break;
    case StatementKind::If:
        return ifStatement(node, number);
    case StatementKind::Select:
        return selectStatement(node, number);
    case StatementKind::For:
        return forStatement(node, number);
    case StatementKind::ForEach:
        return forEachStatement(node, number);
    case StatementKind::Do:
        return doStatement(node, number);
    case StatementKind::With:
        return withStatement(node);
    case StatementKind::Exit:
        exitStatement(node);
        break;
    case StatementKind::OnErrorResumeNext:
        emit(Op::ResumeNext);
        break;
    case StatementKind::OnErrorGoToZero:
        emit(Op::GoToZero);
        break;
    case StatementKind::Const:
    case StatementKind::Nothing:
        break;
    }
    if (m_body->pathsUsed)
        emit(Op::DropPaths);
    m_body->pathsUsed = false;
    release(temporaries);
    setResume(number, here());
}

// COMPAT: under Resume Next a condition that fails counts as true: execution goes on with the Then part.
void Compiler::ifStatement(const Statement& node, std::size_t markNumber)
{
    Jumps toEnd;
    for (std::size_t place = 0; place < node.branches.size(); ++place) {
        const Branch& branch = node.branches[place];
        const std::size_t number = place == 0 ? markNumber : mark(branch.position);
        const std::size_t unless = jumpUnless(*branch.condition);
        setResume(number, here());
        block(branch.body);
        const bool isLast = place + 1 == node.branches.size() && !node.hasElse;
        if (!isLast)
            toEnd.push_back(emit(Op::Jump));
        patch(unless, here());
    }
    if (node.hasElse)
        block(node.body);
    patchAll(toEnd, here());
}

// COMPAT: under Resume Next a Case expression that fails counts as equal, and a selected value that fails skips all
// cases. A Case is no statement of its own: what fails in it is reported at the Select Case.
void Compiler::selectStatement(const Statement& node, std::size_t markNumber)
{
    const std::uint32_t temporaries = m_body->temporaries;
    const Operand selected = newTemporary();
    valueInto(*node.target, selected);
    emit(Op::Let, selected, selected, 0, 0);
    Jumps toEnd;
    for (const Branch& branch : node.branches) {
        const std::size_t number = mark(node.position);
        Jumps toBody;
        for (const Expression* condition : branch.conditions) {
            const std::uint32_t inner = m_body->temporaries;
            const Operand tested = value(*condition);
            release(inner);
            const Operand result = newTemporary();
            Expression unknown; // the selected value counts as no literal
            unknown.kind = ExpressionKind::Name;
            emit(Op::Compare, result, selected, tested, literalFlags(Operator::Equal, unknown, *condition));
            release(inner);
            toBody.push_back(emit(Op::JumpIf, result));
        }
        const std::size_t toNext = emit(Op::Jump);
        setResume(number, here());
        patchAll(toBody, here());
        block(branch.body);
        toEnd.push_back(emit(Op::Jump));
        patch(toNext, here());
    }
    if (node.hasElse)
        block(node.body);
    patchAll(toEnd, here());
    setResume(markNumber, here());
    emit(Op::Clear, selected, 0, 0, 1);
    release(temporaries);
}

/// The operand of a loop's control variable.
Operand Compiler::loopVariable(const Expression& target)
{
    const Resolved place = resolve(target.name);
    if (place.isVariable())
        return place.place;
    const Operand slot = newTemporary();
    if (place.where == Where::Unknown)
        emit(Op::RefName, slot, 0, nameNumber(target.name));
    else
        raiseError(501, target.name);
    return slot;
}

void Compiler::forStatement(const Statement& node, std::size_t markNumber)
{
    const std::uint32_t temporaries = m_body->temporaries;
    const Operand state = newTemporaries(3); // limit, step, start
    emit(Op::Clear, state, 0, 0, 3);
    const Operand variable = loopVariable(*node.target);
    valueInto(*node.value, state + 2);
    valueInto(*node.limit, state);
    if (node.step)
        valueInto(*node.step, state + 1);
    else
        emit(Op::Move, state + 1, constant(values::Variant(std::int16_t(1))));
    const std::size_t start = emit(Op::ForStart, variable, state);
    const std::uint32_t body = here();
    // COMPAT: a bound that fails under Resume Next leaves the loop without its state; the body runs once and Next
    // raises 92.
    setResume(markNumber, body);
    m_body->loops.push_back({ExitKind::For, m_body->temporaries, {}});
    block(node.body);
    const std::size_t next = mark(node.endPosition);
    emit(Op::ForNext, variable, state, body);
    setResume(next, here());
    patch(start, here());
    patchAll(m_body->loops.back().exits, here());
    m_body->loops.pop_back();
    release(temporaries);
}

void Compiler::forEachStatement(const Statement& node, std::size_t markNumber)
{
    const std::uint32_t temporaries = m_body->temporaries;
    const Operand state = newTemporary();
    emit(Op::Clear, state, 0, 0, 1);
    const Operand variable = loopVariable(*node.target);
    const std::uint32_t inner = m_body->temporaries;
    const Operand collection = value(*node.value);
    emit(Op::EachStart, state, collection);
    clearTemporary(collection);
    release(inner);
    const std::size_t toNext = emit(Op::Jump);
    const std::uint32_t body = here();
    setResume(markNumber, body);
    m_body->loops.push_back({ExitKind::For, m_body->temporaries, {}});
    block(node.body);
    const std::size_t next = mark(node.endPosition);
    patch(toNext, here());
    const std::size_t step = emit(Op::EachNext, variable, state);
    emit(Op::Loop, body);
    patch(step, here());
    setResume(next, here());
    patchAll(m_body->loops.back().exits, here());
    m_body->loops.pop_back();
    emit(Op::Clear, state, 0, 0, 1);
    release(temporaries);
}

// COMPAT: under Resume Next a Do While whose condition fails enters the body, a Loop While whose condition fails
// leaves the loop.
void Compiler::doStatement(const Statement& node, std::size_t markNumber)
{
    const std::uint32_t start = here();
    Jumps exits;
    if (node.value && !node.flag)
        exits.push_back(node.negated ? jumpIf(*node.value) : jumpUnless(*node.value));
    setResume(markNumber, here());
    m_body->loops.push_back({ExitKind::Do, m_body->temporaries, {}});
    block(node.body);
    const std::size_t end = mark(node.endPosition);
    if (node.value && node.flag)
        exits.push_back(node.negated ? jumpIf(*node.value) : jumpUnless(*node.value));
    emit(Op::Loop, start);
    setResume(end, here());
    patchAll(exits, here());
    patchAll(m_body->loops.back().exits, here());
    m_body->loops.pop_back();
}

void Compiler::withStatement(const Statement& node)
{
    const std::uint32_t temporaries = m_body->temporaries;
    const std::size_t number = m_body->procedure->marks.size() - 1;
    const Operand object = newTemporary();
    emit(Op::Clear, object, 0, 0, 1);
    valueInto(*node.target, object);
    emit(Op::Set, object, object); // raises 424 for what is no object
    setResume(number, here());
    m_body->withObjects.push_back(object);
    block(node.body);
    m_body->withObjects.pop_back();
    emit(Op::Clear, object, 0, 0, 1);
    release(temporaries);
}

void Compiler::exitStatement(const Statement& node)
{
    if (node.exit != ExitKind::Do && node.exit != ExitKind::For) {
        m_body->returns.push_back(emit(Op::Jump));
        return;
    }
    for (auto loop = m_body->loops.rbegin(); loop != m_body->loops.rend(); ++loop) {
        if (loop->kind != node.exit)
            continue;
        // Objects that inner blocks hold are let go on the way out.
        if (m_body->temporaries > loop->temporaries)
            emit(Op::Clear, operand(Bank::Local, loop->temporaries), 0, 0, m_body->temporaries - loop->temporaries);
        loop->exits.push_back(emit(Op::Jump));
        return;
    }
}

/// Variables exist from the start; the statement itself only notices an array declared again.
void Compiler::dimStatement(const Statement& node)
{
    for (const Declarator& item : node.declarators) {
        const Resolved place = resolve(item.name);
        if (item.isArray && place.where == Where::Global && m_redeclaredArrays.contains(place.number)) {
            emit(Op::DimAgain, place.place, 0, nameNumber(item.name));
            m_body->procedure->bounds.push_back(item.upperBounds);
            emit(Op::DimArray, place.place, 0, std::uint32_t(m_body->procedure->bounds.size() - 1));
        }
    }
}

void Compiler::redimStatement(const Statement& node)
{
    for (const Expression* item : node.items) {
        const std::uint32_t temporaries = m_body->temporaries;
        const Operand variable = reference(*item->left);
        const Operand base = callArguments(item->arguments, false);
        emit(Op::ReDim, variable, base, node.flag ? 1 : 0, item->arguments.size());
        release(temporaries);
    }
}

void Compiler::eraseStatement(const Statement& node)
{
    for (const Expression* item : node.items) {
        const std::uint32_t temporaries = m_body->temporaries;
        emit(Op::Erase, reference(*item));
        release(temporaries);
    }
}

} // namespace zan::script
