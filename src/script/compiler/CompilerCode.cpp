#include "script/compiler/Compiler.h"

#include <algorithm>

namespace zan::script {

namespace {

constexpr std::uint32_t MostTemporaries = 60000;

} // namespace

std::size_t Compiler::emit(Op op, Operand a, Operand b, Operand c, std::size_t n)
{
    m_body->procedure->code.push_back({op, std::uint16_t(n), a, b, c});
    return m_body->procedure->code.size() - 1;
}

/// Fills in a jump's target, wherever the operation has it.
void Compiler::patch(std::size_t instruction, std::uint32_t target)
{
    Instruction& code = m_body->procedure->code[instruction];
    switch (code.op) {
    case Op::Jump:
    case Op::Loop:
        code.a = target;
        break;
    case Op::JumpIf:
    case Op::JumpUnless:
        code.b = target;
        break;
    default:
        code.c = target;
        break;
    }
}

void Compiler::patchAll(const Jumps& jumps, std::uint32_t target)
{
    for (const std::size_t jump : jumps)
        patch(jump, target);
}

std::size_t Compiler::mark(Position position)
{
    m_body->procedure->marks.push_back({here(), here(), m_body->temporaries, position});
    return m_body->procedure->marks.size() - 1;
}

void Compiler::setResume(std::size_t markNumber, std::uint32_t target)
{
    m_body->procedure->marks[markNumber].resume = target;
}

Operand Compiler::newTemporaries(std::uint32_t count)
{
    const std::uint32_t first = m_body->temporaries;
    m_body->temporaries += count;
    if (m_body->temporaries > MostTemporaries)
        throw CompileError(SyntaxError::OutOfMemory, m_body->procedure->marks.empty()
                                                         ? Position{1, 0}
                                                         : m_body->procedure->marks.back().position);
    Procedure& procedure = *m_body->procedure;
    procedure.frameSize = std::max(procedure.frameSize, m_body->temporaries);
    return operand(Bank::Local, first);
}

Operand Compiler::newTemporary()
{
    return newTemporaries(1);
}

bool Compiler::isTemporary(Operand op) const noexcept
{
    return op != NoOperand && bankOf(op) == Bank::Local && placeOf(op) >= m_body->procedure->localCount;
}

Operand Compiler::constant(const values::Variant& value)
{
    auto& constants = m_body->procedure->constants;
    if (value.is(values::Kind::Integer)) { // small numbers are shared; others seldom repeat
        for (std::size_t place = 0; place < std::min<std::size_t>(constants.size(), 64); ++place) {
            if (constants[place].is(values::Kind::Integer) && constants[place].value().integer() == value.integer())
                return operand(Bank::Constant, std::uint32_t(place));
        }
    }
    constants.emplace_back(value);
    return operand(Bank::Constant, std::uint32_t(constants.size() - 1));
}

std::uint32_t Compiler::nameNumber(values::Name name)
{
    m_body->procedure->names.push_back(name);
    return std::uint32_t(m_body->procedure->names.size() - 1);
}

std::uint32_t Compiler::site(values::Name name)
{
    m_body->procedure->sites.push_back({.name = name});
    return std::uint32_t(m_body->procedure->sites.size() - 1);
}

std::uint32_t Compiler::callee(const Procedure* procedure)
{
    m_body->procedure->callees.push_back(procedure);
    return std::uint32_t(m_body->procedure->callees.size() - 1);
}

void Compiler::clearTemporary(Operand op)
{
    if (isTemporary(op))
        emit(Op::Clear, op, 0, 0, 1);
}

} // namespace zan::script
