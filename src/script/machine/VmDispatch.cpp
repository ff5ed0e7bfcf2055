#include "script/machine/Vm.h"

#include "script/compiler/Builtins.h"
#include "script/machine/Engine.h"
#include "script/machine/ErrObject.h"
#include "script/machine/Instance.h"
#include "script/machine/VmNumbers.h"
#include "script/machine/VmPush.h"
#include "script/machine/VmSteps.h"
#include "script/syntax/Operators.h"

#include "values/Arithmetic.h"
#include "values/Convert.h"

#include <functional>

// Threaded code: each operation jumps straight to the next one, which the compilers offer as an extension.
#pragma GCC diagnostic ignored "-Wpedantic"

namespace zan::script {

using values::ErrorNumber;
using values::Kind;
using values::Ordering;
using values::Variant;

void Vm::dispatch(std::size_t stopDepth)
{
    static const void* const Labels[] = {
#define ZAN_SCRIPT_OPERATION(name) &&label##name,
        ZAN_SCRIPT_OPERATIONS(ZAN_SCRIPT_OPERATION)
#undef ZAN_SCRIPT_OPERATION
    };
    Slot* banks[4] = {};
    const Procedure* procedure = nullptr;
    const Instruction* next = nullptr;
    const Instruction* code = nullptr;
// The state of the running frame, taken apart. Neither a function nor a lambda: `next` must stay in a register.
#define LOAD                                                                                                       \
    do {                                                                                                           \
        const Frame& running = m_frames.back();                                                                    \
        procedure = running.procedure;                                                                             \
        next = running.next;                                                                                       \
        banks[0] = running.base;                                                                                   \
        banks[1] = procedure->constants.data();                                                                    \
        banks[3] = running.me ? running.me->fields() : nullptr;                                                    \
    } while (false)
    banks[2] = m_engine.symbols().slots();
    LOAD;

#define R(op) (banks[(op) >> 30][(op)&0x3fffffff])
#define READ(op) (read(R(op)))
#define OP(name) label##name:
#define NEXT                                                                                                       \
    do {                                                                                                           \
        code = next++;                                                                                             \
        goto* Labels[static_cast<int>(code->op)];                                                                  \
    } while (false)
#define JUMP(target) (next = procedure->code.data() + (target))
#define PASS                                                                                                       \
    do {                                                                                                           \
        if (--m_credit < 0)                                                                                        \
            tick();                                                                                                \
    } while (false)
// After something that may have pushed a frame.
#define CALLED(pushed)                                                                                             \
    if (pushed)                                                                                                    \
    LOAD
// NEXT stands outside the braces of an operation: a jump through a table runs no destructors on its way.
// Before something that may push a frame.
#define SAVE (m_frames.back().next = next)

#define ARITHMETIC(name, step, general)                                                                            \
    OP(name)                                                                                                       \
    {                                                                                                              \
        if (!calculate(R(code->a), R(code->b), R(code->c), step())) {                                              \
            const Variant& first = READ(code->b);                                                                  \
            const Variant& second = READ(code->c);                                                                 \
            spendOn(first);                                                                                        \
            spendOn(second);                                                                                       \
            R(code->a) = general(first, second);                                                                   \
            look();                                                                                                \
        }                                                                                                          \
    }                                                                                                              \
    NEXT;

#define UNLESS(name, step, op)                                                                                     \
    OP(name)                                                                                                       \
    {                                                                                                              \
        bool holds = false;                                                                                        \
        if (!compareNumbers(R(code->a), R(code->b), step(), holds)) {                                              \
            const Variant result = comparisonResult(op, generalCompare(READ(code->a), READ(code->b), code->n));    \
            look();                                                                                                \
            holds = !result.isNull() && result.boolean();                                                          \
        }                                                                                                          \
        if (!holds)                                                                                                \
            JUMP(code->c);                                                                                         \
    }                                                                                                              \
    NEXT;

    while (true) {
        try {
            NEXT;

            OP(Move)
            {
                Slot& source = R(code->b);
                if (code->n && !source.isReference())
                    R(code->a) = std::move(source.value());
                else
                    R(code->a) = read(source);
            }
            NEXT;
            OP(Let)
            {
                let(R(code->a), R(code->b), code->n != 0);
            }
            NEXT;
            OP(Set)
            {
                set(R(code->a), R(code->b), code->n != 0);
            }
            NEXT;
            OP(Clear)
            {
                clear(&R(code->a), code->n);
            }
            NEXT;
            OP(MakeReference)
            {
                R(code->a) = wayTo(R(code->b));
            }
            NEXT;
            OP(ElementReference)
            {
                SAVE;
                CALLED(elementReference(*code, banks));
            }
            NEXT;
            OP(DropPaths)
            {
                m_paths.resize(m_frames.back().paths);
            }
            NEXT;
            ARITHMETIC(Add, std::plus<>, generalAdd)
            ARITHMETIC(Subtract, std::minus<>, values::subtract)
            ARITHMETIC(Multiply, std::multiplies<>, values::multiply)
            ARITHMETIC(Divide, Quotient, values::divide)
            OP(Binary)
            {
                const auto op = static_cast<Operator>(code->n);
                if (!combineBits(op, R(code->a), R(code->b), R(code->c))) {
                    const Variant& first = READ(code->b);
                    const Variant& second = READ(code->c);
                    spendOn(first);
                    spendOn(second);
                    R(code->a) = applyBinary(op, first, second);
                    look();
                }
            }
            NEXT;
            OP(Unary)
            {
                const Slot& source = R(code->b);
                if (static_cast<Operator>(code->n) == Operator::Not && source.is(Kind::Boolean))
                    put(R(code->a), !source.value().boolean());
                else {
                    const Variant& operand = READ(code->b);
                    spendOn(operand);
                    R(code->a) = applyUnary(static_cast<Operator>(code->n), operand);
                    look();
                }
            }
            NEXT;
            OP(Concat2)
            {
                R(code->a) = concatenate(READ(code->b), READ(code->c));
                look();
            }
            NEXT;
            OP(Concat)
            {
                Slot* const pieces = &R(code->b);
                Variant result = join(pieces, code->n);
                clear(pieces, code->n);
                R(code->a) = std::move(result);
                look();
            }
            NEXT;
            OP(Append)
            {
                append(R(code->a), &R(code->b), code->n);
                look();
            }
            NEXT;
            OP(Compare)
            {
                const auto op = static_cast<Operator>(code->n & 0xff);
                std::int32_t x = 0;
                std::int32_t y = 0;
                if (integral(R(code->b), x) && integral(R(code->c), y))
                    R(code->a) = comparisonResult(op, x < y   ? Ordering::Less
                                                      : x > y ? Ordering::Greater
                                                              : Ordering::Equal);
                else {
                    R(code->a) = comparisonResult(op, generalCompare(READ(code->b), READ(code->c), code->n));
                    look();
                }
            }
            NEXT;
            OP(Is)
            {
                put(R(code->a), isSameObject(READ(code->b), READ(code->c)));
            }
            NEXT;
            OP(Jump)
            {
                JUMP(code->a);
            }
            NEXT;
            OP(Loop)
            {
                PASS;
                JUMP(code->a);
            }
            NEXT;
            OP(JumpIf)
            {
                const bool taken = isTrue(READ(code->a));
                if (code->n)
                    clear(&R(code->a), 1);
                if (taken)
                    JUMP(code->b);
            }
            NEXT;
            OP(JumpUnless)
            {
                const bool taken = !isTrue(READ(code->a));
                if (code->n)
                    clear(&R(code->a), 1);
                if (taken)
                    JUMP(code->b);
            }
            NEXT;
            UNLESS(UnlessEqual, std::equal_to<>, Operator::Equal)
            UNLESS(UnlessNotEqual, std::not_equal_to<>, Operator::NotEqual)
            UNLESS(UnlessLess, std::less<>, Operator::Less)
            UNLESS(UnlessGreater, std::greater<>, Operator::Greater)
            UNLESS(UnlessLessEqual, std::less_equal<>, Operator::LessEqual)
            UNLESS(UnlessGreaterEqual, std::greater_equal<>, Operator::GreaterEqual)
            OP(ForStart)
            {
                if (!startFor(R(code->a), &R(code->b)))
                    JUMP(code->c);
            }
            NEXT;
            OP(ForNext)
            {
                const Slot* const state = &R(code->b);
                bool again = false;
                if (!stepWhole(follow(R(code->a)), state, again))
                    again = nextFor(R(code->a), state);
                if (again) {
                    PASS;
                    JUMP(code->c);
                }
            }
            NEXT;
            OP(EachStart)
            {
                R(code->a) = startEach(READ(code->b));
            }
            NEXT;
            OP(EachNext)
            {
                if (!nextEach(R(code->b).value(), R(code->a)))
                    JUMP(code->c);
            }
            NEXT;
            OP(Call)
            {
                PASS;
                const Symbol& symbol = m_engine.symbols().at(code->c);
                if (!symbol.procedure)
                    throw NamedError(ErrorNumber::TypeMismatch, symbol.name);
                SAVE;
                push(*symbol.procedure, &R(code->b), code->n, nullptr, code->a);
                LOAD;
            }
            NEXT;
            OP(CallOwn)
            {
                PASS;
                SAVE;
                push(*procedure->callees[code->c], &R(code->b), code->n, m_frames.back().me, code->a);
                LOAD;
            }
            NEXT;
            OP(CallBuiltin)
            {
                Slot* const arguments = &R(code->b);
                Variant result = callBuiltin(code->c, valuesOf(arguments), code->n);
                clear(arguments, code->n);
                R(code->a) = std::move(result);
            }
            NEXT;
            OP(CallBuiltin1)
            {
                R(code->a) = callBuiltin(code->c, &READ(code->b), 1);
            }
            NEXT;
            OP(RunText)
            {
                SAVE;
                CALLED(runText(READ(code->b), static_cast<RunMode>(code->n), code->a));
            }
            NEXT;
            OP(Member)
            {
                SAVE;
                CALLED(getMember(READ(code->b), procedure->sites[code->c], nullptr, 0, code->a,
                                 (code->n & MemberWithParentheses) != 0));
            }
            NEXT;
            OP(CallMember)
            {
                SAVE;
                Slot* const slot = &R(code->b);
                const Variant object = std::move(slot->value()); // must not live on in the temporary
                CALLED(getMember(object, procedure->sites[code->c], slot + 1, code->n, code->a));
            }
            NEXT;
            OP(PutMember)
            {
                SAVE;
                Slot value(READ(code->b));
                CALLED(putMember(READ(code->a), procedure->sites[code->c], &value, 1, code->n != 0));
            }
            NEXT;
            OP(PutMemberIndexed)
            {
                SAVE;
                Slot* const slot = &R(code->a);
                const Variant object = std::move(slot->value());
                CALLED(putMember(object, procedure->sites[code->c], slot + 1, code->n + 1u, code->b != 0));
            }
            NEXT;
            OP(Index)
            {
                const Variant& target = READ(code->b);
                // COMPAT: Nothing in a variable has an index that fails for want of an object; Nothing that an
                // expression gave is a value like any other that takes no index.
                const bool isMade = bankOf(code->b) == Bank::Local && placeOf(code->b) >= procedure->localCount;
                if (isMade && target.isObject() && !target.object())
                    values::raise(ErrorNumber::TypeMismatch);
                SAVE;
                CALLED(indexInto(R(code->b), &R(code->c), code->n, code->a));
            }
            NEXT;
            OP(Index1)
            {
                const Variant& target = READ(code->b);
                const Variant& index = READ(code->c);
                if (target.isArray()) {
                    const std::int64_t place = simplePlace(target.array(), index);
                    if (place >= 0) {
                        R(code->a) = target.array().elements()[std::size_t(place)];
                        NEXT;
                    }
                }
                SAVE;
                Slot argument(index);
                CALLED(indexInto(R(code->b), &argument, 1, code->a));
            }
            NEXT;
            OP(PutIndex)
            {
                SAVE;
                CALLED(putIndex(R(code->a), &R(code->b), code->n, code->c != 0));
                look();
            }
            NEXT;
            OP(PutIndex1)
            {
                SAVE;
                CALLED(putElement(R(code->a), READ(code->b), READ(code->c)));
                look();
            }
            NEXT;
            OP(CallValue)
            {
                SAVE;
                CALLED(callDefault(READ(code->b), &R(code->c), code->n, code->a));
            }
            NEXT;
            OP(New)
            {
                SAVE;
                CALLED(create(procedure->names[code->c], code->a));
            }
            NEXT;
            OP(LoadName)
            {
                SAVE;
                CALLED(loadName(procedure->names[code->c], code->a, code->n != 0));
            }
            NEXT;
            OP(RefName)
            {
                SAVE;
                CALLED(refName(procedure->names[code->c], code->a));
            }
            NEXT;
            OP(StoreName)
            {
                SAVE;
                CALLED(storeName(procedure->names[code->c], READ(code->b), code->n != 0));
            }
            NEXT;
            OP(BindName)
            {
                bindName(R(code->a), procedure->names[code->c], code->n != 0);
            }
            NEXT;
            OP(CallName)
            {
                SAVE;
                CALLED(callName(procedure->names[code->c], &R(code->b), code->n, code->a));
            }
            NEXT;
            OP(LoadMe)
            {
                Instance* const me = m_frames.back().me;
                if (!me)
                    values::raise(ErrorNumber::ObjectRequired);
                R(code->a) = Variant(values::Ref<Instance>(me));
            }
            NEXT;
            OP(DimArray)
            {
                Variant& target = follow(R(code->a));
                if (!target.isArray())
                    target = declaredArray(procedure->bounds[code->c]);
            }
            NEXT;
            OP(DimAgain)
            {
                if (R(code->a).is(Kind::Array))
                    throw NamedError(ErrorNumber::TypeMismatch, procedure->names[code->c]);
            }
            NEXT;
            OP(ReDim)
            {
                redim(follow(R(code->a)), &R(code->b), code->n, code->c != 0);
                look();
            }
            NEXT;
            OP(Erase)
            {
                erase(follow(R(code->a)));
                look();
            }
            NEXT;
            OP(ByValue)
            {
                Slot& slot = R(code->a);
                if (slot.isReference())
                    slot = read(slot);
            }
            NEXT;
            OP(Return)
            {
                if (finish(stopDepth)) [[unlikely]]
                    return;
                LOAD;
            }
            NEXT;
            OP(ResumeNext)
            {
                m_frames.back().resumeNext = true;
                m_engine.err().clear();
            }
            NEXT;
            OP(GoToZero)
            {
                m_frames.back().resumeNext = false;
                m_engine.err().clear();
            }
            NEXT;
            OP(Raise)
            {
                throw NamedError(int(code->a), code->c ? procedure->names[code->c - 1] : values::Name());
            }
        } catch (...) {
            m_frames.back().next = next;
            recover(stopDepth);
            LOAD;
        }
    }
}

} // namespace zan::script
