#pragma once

#include "script/compiler/Bytecode.h"
#include "script/compiler/SlotArena.h"
#include "script/machine/Budget.h"

#include "binding/Object.h"
#include "values/Array.h"
#include "values/Compare.h"
#include "values/RuntimeError.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace zan::script {

class Engine;
class Instance;

/// A run-time error about a name, which the error record shows and Err.Description does not.
class NamedError : public values::RuntimeError
{
public:
    NamedError(int number, values::Name about);
    NamedError(values::ErrorNumber number, values::Name about)
        : NamedError(static_cast<int>(number), about)
    {}
    values::Name about() const noexcept { return m_about; }

private:
    values::Name m_about;
};

/// An array as Dim declares it: of these upper bounds, or without dimensions when there are none.
values::Variant newArray(const std::vector<std::int32_t>& upperBounds);
/// Bytes that such an array takes.
std::size_t bytesOfArray(const std::vector<std::int32_t>& upperBounds) noexcept;

/// The machine that runs bytecode. Calls between procedures of scripts take no native stack; code of the host that
/// calls back into a script does, and is counted.
class Vm
{
public:
    /// The stack must be a row of StackSlots.
    Vm(Engine& engine, SlotArena& stack);
    ~Vm();
    Vm(const Vm&) = delete;
    Vm& operator=(const Vm&) = delete;

    /// Runs a procedure from outside. Raises what the script leaves uncaught.
    values::Variant run(const Procedure& procedure, Instance* me, binding::Arguments arguments);
    /// Late-bound access to an object of a script's class from outside.
    values::Variant invokeInstance(Instance& object, values::Name name, binding::Access access,
                                   binding::Arguments arguments);
    /// Runs Class_Terminate; nothing leaves it. Where the native stack or the machine's has no room for it left, the
    /// object is kept and hears it as soon as there is some.
    void runTerminate(Instance& object) noexcept;

    /// Lets go of whatever an interrupted call left in its slots.
    void clearStack() noexcept;

    bool isRunning() const noexcept { return !m_frames.empty(); }
    /// Where the error that is on its way out was raised.
    Position errorPosition() const noexcept { return m_errorPosition; }
    /// The statement that has called out of the script; nothing of a place while no script runs.
    Position currentPosition() const noexcept;
    /// What this machine and those around it may still take.
    Budget& budget() noexcept { return m_budget; }
    /// Counts work that takes as long as so many passes of a loop.
    void spend(std::size_t passes) noexcept
    {
        m_credit = m_credit > 0 && passes <= std::size_t(m_credit) ? m_credit - int(passes)
                   : passes                                        ? -1
                                                                   : m_credit;
    }
    /// Counts work over so many characters.
    void spendText(qsizetype characters) noexcept { spend(std::size_t(characters) / CharactersPerPass); }
    /// Counts the work of reading a value through: a long text takes as long as it is.
    void spendOn(const values::Variant& value) noexcept
    {
        if (value.isText())
            spendText(value.text().size());
    }
    /// Looks at the limits when the work counted so far makes it time to. Code of the host may run meanwhile, and
    /// scripts that it calls: what a caller holds must be its own.
    void look()
    {
        if (m_credit < 0) [[unlikely]]
            tick();
    }
    /// Counts the memory and the work of a text that is about to be made; raises 14 when it is longer than the host
    /// allows.
    void charge(qsizetype characters);
    /// Raises 14 for a text longer than the host allows.
    void checkLength(qsizetype characters) const;
    /// Counts memory that is about to be taken, and the work of filling it. Raises 7 when it would go beyond the host's limit.
    void chargeBytes(std::size_t bytes);
    /// Counts what a value takes that code outside the machine has made.
    void chargeValue(const values::Variant& value)
    {
        if (value.isCounted())
            chargeCounted(value);
    }

    static constexpr std::size_t StackSlots = 1 << 19;

private:
    static constexpr std::size_t CharactersPerPass = 32;
    void chargeCounted(const values::Variant& value);
    class Room;
    enum class Purpose : std::uint8_t { Call, LastWords };
    /// Variables that text run inside a procedure declared there.
    using DynamicScope = std::unordered_map<values::Name, std::unique_ptr<Slot>>;
    struct Frame
    {
        const Procedure* procedure;
        const Instruction* next;
        Slot* base;
        Instance* me;          ///< retained
        DynamicScope* dynamic; ///< owned; null until needed
        std::size_t paths;     ///< element paths below belong to callers
        std::size_t units;     ///< running texts below belong to callers
        std::size_t scope;     ///< of text run inside a procedure: number of that procedure's frame
        Operand result;        ///< of the caller
        bool resumeNext;
    };

    // VmDispatch.cpp
    void dispatch(std::size_t stopDepth);
    // VmSteps.h
    bool finish(std::size_t stopDepth);
    void let(Slot& target, Slot& source, bool take);
    void set(Slot& target, Slot& source, bool take);
    bool putElement(Slot& slot, const values::Variant& index, const values::Variant& source);
    // VmText.cpp
    bool isTrue(const values::Variant& value);
    values::Ordering generalCompare(const values::Variant& left, const values::Variant& right, int flags);
    values::Variant generalAdd(const values::Variant& left, const values::Variant& right);
    values::Variant concatenate(const values::Variant& left, const values::Variant& right);
    values::Variant join(const Slot* pieces, std::size_t count);
    void append(Slot& slot, Slot* pieces, std::size_t count);
    // VmFrames.cpp
    Slot* top() const noexcept;
    void push(const Procedure& procedure, Slot* base, std::size_t count, Instance* me, Operand result);
    void pop() noexcept;
    void popRest() noexcept;
    [[noreturn]] void refusePush(const Procedure& procedure, std::size_t count) const;
    void reserve(const Slot* first, std::size_t count) const;
    void deliver(Operand result, values::Variant&& value);
    void refer(Operand result, Slot&& way);
    void recover(std::size_t stopDepth);
    bool resume(std::size_t stopDepth, int number, const QString& description, const QString& source);
    void noteErrorPosition();
    void tick();
    values::Variant execute(const Procedure& procedure, Instance* me, binding::Arguments arguments,
                            Purpose purpose);
    void hearWaiting() noexcept;
    // VmArrays.cpp
    values::Variant& follow(Slot& slot) { return slot.isReference() ? followReference(slot, true) : slot.value(); }
    const values::Variant& read(const Slot& slot)
    {
        return slot.isReference() ? followReference(slot, false) : slot.value();
    }
    values::Variant& followReference(const Slot& slot, bool forWriting);
    void plainIndices(Slot* indices, std::size_t count);
    static std::size_t elementPlace(const values::Variant& holder, const Slot* indices, std::size_t count);
    values::Variant plainValue(const values::Variant& value);
    bool elementReference(const Instruction& code, Slot* const* banks);
    bool indexInto(Slot& slot, Slot* arguments, std::size_t count, Operand result);
    bool putIndex(Slot& slot, Slot* arguments, std::size_t count, bool set);
    void redim(values::Variant& variable, const Slot* bounds, std::size_t count, bool preserve);
    void erase(values::Variant& variable);
    values::Array& writable(values::Variant& variable);
    values::Variant declaredArray(const std::vector<std::int32_t>& upperBounds);
    values::Variant startEach(const values::Variant& collection);
    bool nextEach(const values::Variant& state, Slot& slot);
    bool startFor(Slot& slot, Slot* state);
    bool nextFor(Slot& slot, const Slot* state);
    // VmCalls.cpp: true when a frame was pushed, so that the result comes later
    bool getMember(const values::Variant& object, Site& site, Slot* arguments, std::size_t count, Operand result,
                   bool parentheses = false);
    bool putMember(const values::Variant& object, Site& site, Slot* arguments, std::size_t count, bool set);
    bool callDefault(const values::Variant& value, Slot* arguments, std::size_t count, Operand result);
    values::Variant callBuiltin(std::uint32_t number, const values::Variant* arguments, std::size_t count);
    bool callInstance(Instance& object, const ClassMember* member, Slot* arguments, std::size_t count,
                      Operand result, bool parentheses = false);
    bool putInstance(Instance& object, const ClassMember* member, Slot* arguments, std::size_t count, bool set);
    bool isInsideClass(const ClassInfo& info) const noexcept;
    Slot* onStack(Slot* arguments, std::size_t count);
    void settle(Slot* arguments, std::size_t count);
    static void clear(Slot* slots, std::size_t count) noexcept;
    bool create(values::Name name, Operand result);
    bool runText(const values::Variant& text, RunMode mode, Operand result);
    // VmNames.cpp
    struct Found
    {
        Slot* variable = nullptr;
        const Procedure* procedure = nullptr;
        Instance* me = nullptr;
        const ClassMember* member = nullptr;
        int builtin = -1;
        std::optional<RunMode> runText;
        const values::Variant* constant = nullptr;
        int hostItem = -1;
        bool readOnly = false;

        bool isCallable() const noexcept { return procedure || member || builtin >= 0 || runText || hostItem >= 0; }
    };
    Found find(values::Name name);
    Slot* findVariable(values::Name name);
    bool loadName(values::Name name, Operand result, bool statement);
    bool refName(values::Name name, Operand result);
    bool storeName(values::Name name, const values::Variant& value, bool set);
    void bindName(Slot& slot, values::Name name, bool make);
    bool callFound(const Found& found, values::Name name, Slot* arguments, std::size_t count, Operand result);
    bool callName(values::Name name, Slot* arguments, std::size_t count, Operand result);
    Slot& makeVariable(values::Name name);

    Engine& m_engine;
    Budget& m_budget;
    SlotArena& m_stack;
    Slot* m_stackEnd; ///< the last part of the stack is kept for last words
    std::vector<Frame> m_frames;
    std::vector<std::unique_ptr<const ElementPath>> m_paths; ///< that slots of the frames hold the way to
    std::vector<std::shared_ptr<const Unit>> m_units;        ///< texts that Eval and Execute are running
    values::Variant m_result;                                ///< of the last procedure that returned to outside
    std::size_t m_depthLimit = 0;
    int m_credit = 0;                             ///< loop passes and calls until the limits are looked at
    std::vector<values::Ref<Instance>> m_waiting; ///< objects that wait for their last words
    bool m_isHearing = false;
    Position m_errorPosition;
    bool m_errorPositionKnown = false;
};

} // namespace zan::script
