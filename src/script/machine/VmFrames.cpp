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

constexpr std::size_t StackSlots = 1 << 19;
/// Calls from script to host to script to host ... that may be under way; each takes native stack.
constexpr int MostNativeCalls = 60;
/// Loop passes and calls between two looks at the clock.
constexpr int CreditPerTick = 20000;
constexpr int UserInterrupt = 18;
constexpr int ExceptionOccurred = 507;

QString runtimeSource()
{
    return QStringLiteral("VBScript runtime error");
}

} // namespace

NamedError::NamedError(int number, values::Name about)
    : RuntimeError(number, values::errorText(number))
    , m_about(about)
{}

Vm::Vm(Engine& engine)
    : m_engine(engine)
    , m_stack(StackSlots)
{}

Vm::~Vm() = default;

void Vm::clearStack() noexcept
{
    clear(m_stack.begin(), m_stack.used());
    m_result = Variant();
}

/// First slot above everything that is in use.
Variant* Vm::top() const noexcept
{
    return m_frames.empty() ? m_stack.begin() : m_frames.back().base + m_frames.back().procedure->frameSize;
}

/// Raises 28 when the slots do not fit the stack.
void Vm::reserve(const Variant* first, std::size_t count) const
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

void Vm::clear(Variant* slots, std::size_t count) noexcept
{
    for (std::size_t slot = 0; slot < count; ++slot) {
        if (slots[slot].isCounted())
            slots[slot] = Variant();
        else
            new (&slots[slot]) Variant();
    }
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

Variant Vm::run(const Procedure& procedure, Instance* me, binding::Arguments arguments)
{
    if (m_nativeDepth >= MostNativeCalls)
        values::raise(ErrorNumber::OutOfStack);
    Variant* const base = top();
    reserve(base, arguments.size() + 8);
    m_stack.noteUse(std::size_t(base - m_stack.begin()) + arguments.size());
    std::copy(arguments.begin(), arguments.end(), base);
    if (m_nativeDepth == 0) {
        m_started = m_engine.settings().clock();
        m_nextBusy = m_started + m_engine.settings().limits.busyInterval;
        m_memoryAtStart = m_engine.settings().memoryInUse();
        m_credit = CreditPerTick;
        m_errorPositionKnown = false;
    }
    struct Depth
    {
        explicit Depth(int& value)
            : depth(value)
        {
            ++depth;
        }
        ~Depth() { --depth; }
        int& depth;
    } const depth(m_nativeDepth);
    m_depthLimit = m_engine.settings().limits.callDepth;
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
        run(*object.info().terminate, &object, {});
    } catch (const std::exception&) {
        // Whoever let the object go is not to blame for its last words.
    }
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
        const QString& source = error.source().isEmpty() ? runtimeSource() : error.source();
        if (!resume(stopDepth, error.number(), error.description(), source))
            throw;
    } catch (const CompileError& error) {
        const QString text = compileErrorText(error.number());
        const QString source = QStringLiteral("VBScript compilation error");
        if (!resume(stopDepth, error.number(), text, source))
            throw values::RuntimeError(error.number(), text, source);
    } catch (const std::bad_alloc&) {
        const QString text = values::errorText(ErrorNumber::OutOfMemory);
        if (!resume(stopDepth, static_cast<int>(ErrorNumber::OutOfMemory), text, runtimeSource()))
            values::raise(ErrorNumber::OutOfMemory);
    } catch (const std::exception&) { // from code of the host
        const QString text = values::errorText(ExceptionOccurred);
        if (!resume(stopDepth, ExceptionOccurred, text, runtimeSource()))
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
    Variant* const base = frame.base;
    m_paths.resize(frame.paths);
    clear(base + kept, frame.procedure->frameSize - kept);
    return true;
}

/// Looks at the host's limits.
void Vm::tick()
{
    m_credit = 0; // a run that is to stop stops at the next look, too, should an object's last words be cut short
    EngineSettings& settings = m_engine.settings();
    const std::chrono::nanoseconds now = settings.clock();
    const std::chrono::nanoseconds elapsed = now - m_started;
    if (elapsed > settings.limits.runTime) {
        const double seconds = std::chrono::duration<double>(settings.limits.runTime).count();
        throw StopError(UserInterrupt,
                        QStringLiteral("The script was stopped: it ran longer than %1 seconds").arg(seconds));
    }
    checkMemory(0);
    if (now >= m_nextBusy && settings.host) {
        const auto whole = std::chrono::duration_cast<std::chrono::milliseconds>(elapsed);
        bool goOn = true;
        {
            const Pause pause(*this);
            goOn = settings.host->busy(whole);
        }
        m_nextBusy = settings.clock() + settings.limits.busyInterval;
        if (!goOn)
            throw StopError(UserInterrupt, QStringLiteral("The script was cancelled"));
    }
    m_credit = CreditPerTick;
}

void Vm::checkMemory(std::size_t more)
{
    const std::size_t used = m_engine.settings().memoryInUse();
    const std::size_t grown = used > m_memoryAtStart ? used - m_memoryAtStart : 0;
    if (grown > m_engine.settings().limits.memory)
        throw StopError(ErrorNumber::OutOfMemory);
    if (grown + more > m_engine.settings().limits.memory) // not taken yet, so the script may go on without it
        values::raise(ErrorNumber::OutOfMemory);
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
    constexpr std::size_t BytesPerLook = 1 << 20;
    constexpr std::size_t BytesPerPass = 1 << 11; // as much work as one pass of a loop
    m_unchecked += bytes;
    if (m_unchecked >= BytesPerLook) {
        m_unchecked = 0;
        checkMemory(bytes);
    }
    m_credit -= int(std::min(bytes / BytesPerPass, std::size_t(CreditPerTick)));
}

void Vm::chargeValue(const Variant& value)
{
    if (value.isText())
        charge(value.text().size());
    else if (value.isArray())
        chargeBytes(value.array().elements().size() * sizeof(Variant));
}

Vm::Pause::Pause(Vm& vm)
    : m_vm(vm)
    , m_from(vm.m_engine.settings().clock())
{}

Vm::Pause::~Pause()
{
    const std::chrono::nanoseconds taken = m_vm.m_engine.settings().clock() - m_from;
    m_vm.m_started += taken;
    m_vm.m_nextBusy += taken;
}

} // namespace zan::script
