#pragma once

// How frames come and go: a few instructions each, made part of every place that calls a procedure.

#include "script/machine/Instance.h"
#include "script/machine/Vm.h"

#include <new>

namespace zan::script {

/// Starts a procedure whose arguments lie at the base.
inline void Vm::push(const Procedure& procedure, Slot* base, std::size_t count, Instance* me, Operand result)
{
    constexpr std::size_t Spare = 8; // arguments of code of the host lie above the last frame
    Slot* const end = base + procedure.frameSize + Spare;
    if (count != procedure.parameterCount || m_frames.size() >= m_depthLimit || end > m_stackEnd) [[unlikely]]
        refusePush(procedure, count);
    m_stack.noteUse(std::size_t(end - m_stack.begin()));
    for (std::size_t slot = count; slot < procedure.localCount; ++slot)
        base[slot].clear();
    m_frames.push_back({.procedure = &procedure,
                        .next = procedure.code.data(),
                        .base = base,
                        .me = me,
                        .dynamic = nullptr,
                        .paths = m_paths.size(),
                        .units = m_units.size(),
                        .scope = 0,
                        .result = result,
                        .resumeNext = false});
    if (me)
        me->retain();
}

/// Ends the running procedure. Its variables go first, while the frame still keeps their place.
inline void Vm::pop() noexcept
{
    Slot* const base = m_frames.back().base;
    const std::size_t size = m_frames.back().procedure->frameSize;
    for (std::size_t slot = 0; slot < size; ++slot) {
        if (base[slot].isCounted())
            base[slot] = values::Variant();
    }
    const Frame& frame = m_frames.back();
    if (frame.dynamic || m_paths.size() > frame.paths || m_units.size() > frame.units) [[unlikely]]
        popRest();
    Instance* const me = m_frames.back().me;
    m_frames.pop_back();
    if (me)
        me->release();
}

} // namespace zan::script
