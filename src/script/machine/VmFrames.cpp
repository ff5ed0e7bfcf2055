#include "script/machine/Vm.h"

#include "script/machine/Engine.h"
#include "script/machine/ErrObject.h"
#include "script/machine/Instance.h"
#include "script/machine/VmPush.h"

#include <algorithm>

namespace zan::script {

using values::ErrorNumber;
using values::Variant;

namespace {

/// What of stack and depth is kept for Class_Terminate, which runs wherever the last reference goes.
constexpr std::size_t SlotsForLastWords = 1 << 16;
constexpr std::size_t ProceduresForLastWords = 100;
constexpr int ExceptionOccurred = 507;

} // namespace

NamedError::NamedError(int number, values::Name about)
    : RuntimeError(number, values::errorText(number))
    , m_about(about)
{}

Vm::Vm(Engine& engine, SlotArena& stack)
    : m_engine(engine)
    , m_budget(engine.settings().budget)
    , m_stack(stack)
    , m_stackEnd(stack.end() - SlotsForLastWords)
{}

Vm::~Vm() = default;

void Vm::clearStack() noexcept
{
    clear(m_stack.begin(), m_stack.used());
    m_result = Variant();
}

/// First slot above everything that is in use.
Slot* Vm::top() const noexcept
{
    return m_frames.empty() ? m_stack.begin() : m_frames.back().base + m_frames.back().procedure->frameSize;
}

/// Raises 28 when the slots do not fit the stack.
void Vm::reserve(const Slot* first, std::size_t count) const
{
    if (std::size_t(m_stack.end() - first) < count)
        values::raise(ErrorNumber::OutOfStack);
}

void Vm::refusePush(const Procedure& procedure, std::size_t count) const
{
    if (count != procedure.parameterCount)
        throw NamedError(ErrorNumber::WrongArgumentCount, procedure.name);
    values::raise(ErrorNumber::OutOfStack);
}

void Vm::clear(Slot* slots, std::size_t count) noexcept
{
    for (std::size_t slot = 0; slot < count; ++slot)
        slots[slot].clear();
}

/// What few frames have: variables of text run inside them, element paths, texts under way.
void Vm::popRest() noexcept
{
    Frame& frame = m_frames.back();
    delete std::exchange(frame.dynamic, nullptr);
    if (m_paths.size() > m_frames.back().paths)
        m_paths.resize(m_frames.back().paths);
    if (m_units.size() > m_frames.back().units)
        m_units.resize(m_frames.back().units);
}

/// Puts a result where the running procedure wants it.
void Vm::deliver(Operand result, Variant&& value)
{
    if (result == NoOperand)
        return;
    const Frame& frame = m_frames.back();
    switch (bankOf(result)) {
    case Bank::Local:
        frame.base[placeOf(result)] = std::move(value);
        break;
    case Bank::Global:
        m_engine.symbols().value(placeOf(result)) = std::move(value);
        break;
    case Bank::Field:
        frame.me->fields()[placeOf(result)] = std::move(value);
        break;
    case Bank::Constant:
        break;
    }
}

/// Puts the way to a variable where the running procedure wants it: such an operand is an argument in the making.
void Vm::refer(Operand result, Slot&& way)
{
    Q_ASSERT(bankOf(result) == Bank::Local);
    m_frames.back().base[placeOf(result)] = std::move(way);
}

Variant Vm::run(const Procedure& procedure, Instance* me, binding::Arguments arguments)
{
    const Budget::Scope scope(m_budget);
    if (m_budget.depth >= Budget::MostNativeCalls) {
        // Scripts that set each other off through the host's controls end together: none of them would hear of it.
        if (m_budget.innermost->vm != this)
            m_budget.stop(StopError(ErrorNumber::OutOfStack));
        values::raise(ErrorNumber::OutOfStack);
    }
    m_budget.countCall();
    Variant result = execute(procedure, me, arguments, Purpose::Call);
    if (m_budget.isStopped()) // inside a Class_Terminate, which nothing leaves
        m_budget.look();
    return result;
}

/// The stack and the depth that a call may use: what the calls around it have left, and for last words a reserve.
class Vm::Room
{
public:
    Room(Vm& vm, Purpose purpose)
        : m_vm(vm)
        , m_activation({&vm, vm.m_budget.innermost, vm.m_frames.size(), 0})
        , m_depthLimit(vm.m_depthLimit)
        , m_stackEnd(vm.m_stackEnd)
    {
        if (const Activation* outer = m_activation.outer)
            m_activation.below = outer->below + outer->vm->m_frames.size() - outer->frames;
        const std::size_t allowed = vm.m_engine.settings().limits.callDepth;
        std::size_t left = allowed > m_activation.below ? allowed - m_activation.below : 0;
        if (purpose == Purpose::LastWords) {
            left = std::max(left, ProceduresForLastWords);
            vm.m_stackEnd = vm.m_stack.end();
        }
        vm.m_depthLimit = vm.m_frames.size() + left;
        vm.m_budget.innermost = &m_activation;
        ++vm.m_budget.depth;
    }
    ~Room()
    {
        --m_vm.m_budget.depth;
        m_vm.m_budget.innermost = m_activation.outer;
        m_vm.m_depthLimit = m_depthLimit;
        m_vm.m_stackEnd = m_stackEnd;
    }
    Room(const Room&) = delete;
    Room& operator=(const Room&) = delete;

private:
    Vm& m_vm;
    Activation m_activation;
    std::size_t m_depthLimit;
    Slot* m_stackEnd;
};

Variant Vm::execute(const Procedure& procedure, Instance* me, binding::Arguments arguments, Purpose purpose)
{
    if (m_frames.empty()) {
        m_credit = m_budget.isStopped() ? 0 : m_engine.settings().limits.passesPerLook;
        m_errorPositionKnown = false;
    }
    const Room room(*this, purpose);
    Slot* const base = top();
    reserve(base, arguments.size() + 8);
    m_stack.noteUse(std::size_t(base - m_stack.begin()) + arguments.size());
    std::copy(arguments.begin(), arguments.end(), base);
    const std::size_t stopDepth = m_frames.size();
    try {
        push(procedure, base, arguments.size(), me, NoOperand);
    } catch (...) {
        clear(base, arguments.size());
        throw;
    }
    dispatch(stopDepth);
    return std::move(m_result);
}

void Vm::runTerminate(Instance& object) noexcept
{
    const bool known = m_errorPositionKnown;
    const Position position = m_errorPosition;
    try {
        const Budget::Scope scope(m_budget);
        if (m_budget.depth >= Budget::MostNativeCalls + Budget::NativeCallsForLastWords) {
            m_waiting.emplace_back(&object);
            return;
        }
        if (m_budget.allowLastWords())
            execute(*object.info().terminate, &object, {}, Purpose::LastWords);
    } catch (const std::exception&) {
        // Whoever let the object go is not to blame for its last words.
    }
    if (m_budget.isStopped())
        m_credit = 0; // the run that let it go ends at its next look
    hearWaiting();
    m_errorPositionKnown = known;
    m_errorPosition = position;
}

Position Vm::currentPosition() const noexcept
{
    if (m_frames.empty())
        return {};
    const Frame& frame = m_frames.back();
    const Mark* mark = frame.procedure->markAt(std::size_t(frame.next - frame.procedure->code.data() - 1));
    return mark ? mark->position : Position();
}

/// Runs Class_Terminate of the objects that had to wait, and of those which they let go.
void Vm::hearWaiting() noexcept
{
    if (m_isHearing)
        return;
    m_isHearing = true;
    while (!m_waiting.empty()) {
        const values::Ref<Instance> object = std::move(m_waiting.back());
        m_waiting.pop_back();
        runTerminate(*object);
    }
    m_isHearing = false;
}

void Vm::noteErrorPosition()
{
    if (m_errorPositionKnown)
        return;
    m_errorPosition = currentPosition();
    m_errorPositionKnown = true;
}

/// Handles the exception under way: goes on after the failed statement of the nearest procedure that asked for it,
/// or ends everything above the depth and raises it again.
void Vm::recover(std::size_t stopDepth)
{
    noteErrorPosition();
    try {
        throw;
    } catch (const StopError&) {
        while (m_frames.size() > stopDepth)
            pop();
        throw;
    } catch (const values::RuntimeError& error) {
        const QString& source = error.source().isEmpty() ? runtimeErrorSource() : error.source();
        const auto* raised = dynamic_cast<const RaisedError*>(&error);
        if (!resume(stopDepth, error.number(), error.description(), source))
            throw;
        if (raised) {
            m_engine.err().setHelpFile(raised->helpFile());
            m_engine.err().setHelpContext(raised->helpContext());
        }
    } catch (const CompileError& error) {
        const QString text = compileErrorText(error.number());
        const QString source = compilationErrorSource();
        if (!resume(stopDepth, error.number(), text, source))
            throw values::RuntimeError(error.number(), text, source);
    } catch (const std::bad_alloc&) {
        const QString text = values::errorText(ErrorNumber::OutOfMemory);
        if (!resume(stopDepth, static_cast<int>(ErrorNumber::OutOfMemory), text, runtimeErrorSource()))
            values::raise(ErrorNumber::OutOfMemory);
    } catch (const std::exception&) { // from code of the host
        const QString text = values::errorText(ExceptionOccurred);
        if (!resume(stopDepth, ExceptionOccurred, text, runtimeErrorSource()))
            throw values::RuntimeError(ExceptionOccurred, text);
    }
}

bool Vm::resume(std::size_t stopDepth, int number, const QString& description, const QString& source)
{
    while (m_frames.size() > stopDepth && !m_frames.back().resumeNext)
        pop();
    if (m_frames.size() == stopDepth)
        return false;
    m_errorPositionKnown = false;
    m_engine.err().set(number, description, source);
    Frame& frame = m_frames.back();
    const std::vector<Instruction>& code = frame.procedure->code;
    const Mark* mark = frame.procedure->markAt(std::size_t(frame.next - code.data() - 1));
    const std::size_t kept = mark ? mark->temporaries : frame.procedure->localCount;
    frame.next = code.data() + (mark ? mark->resume : 0);
    Slot* const base = frame.base;
    m_paths.resize(frame.paths);
    clear(base + kept, frame.procedure->frameSize - kept);
    return true;
}

/// Looks at the host's limits.
void Vm::tick()
{
    m_credit = 0; // a run that is to stop stops at the next look, too, should an object's last words be cut short
    m_budget.look();
    m_budget.lookAtMemory(0);
    m_credit = m_engine.settings().limits.passesPerLook;
}

void Vm::checkLength(qsizetype characters) const
{
    if (std::size_t(characters) > m_engine.settings().limits.stringLength)
        values::raise(ErrorNumber::OutOfStringSpace);
}

void Vm::charge(qsizetype characters)
{
    checkLength(characters);
    chargeBytes(std::size_t(characters) * sizeof(QChar));
}

void Vm::chargeBytes(std::size_t bytes)
{
    constexpr std::size_t BytesPerPass = 1 << 11; // as much work as one pass of a loop
    m_budget.countBytes(bytes);
    spend(bytes / BytesPerPass);
}

void Vm::chargeCounted(const Variant& value)
{
    if (value.isText())
        charge(value.text().size());
    else if (value.isArray())
        chargeBytes(value.array().elements().size() * sizeof(Variant));
}

} // namespace zan::script
