#pragma once

#include "script/compiler/Slot.h"
#include "script/syntax/Ast.h"

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace zan::script {

// The machine is a register machine: an instruction names its operands in one of four banks (the frame's slots, the
// procedure's constants, the engine's global variables, the fields of Me), so that most statements are one
// instruction and a local variable is never copied to a stack first. A frame's slots are parameters, the result,
// named variables, then temporaries; arguments are made in the caller's last temporaries, which become the first
// slots of the callee.

/// An operand: two bits of bank, thirty of place.
using Operand = std::uint32_t;

enum class Bank : std::uint32_t { Local = 0, Constant = 1, Global = 2, Field = 3 };

inline constexpr Operand NoOperand = 0xffffffff;

constexpr Operand operand(Bank bank, std::uint32_t place) noexcept
{
    return static_cast<std::uint32_t>(bank) << 30 | place;
}
constexpr Bank bankOf(Operand op) noexcept
{
    return static_cast<Bank>(op >> 30);
}
constexpr std::uint32_t placeOf(Operand op) noexcept
{
    return op & 0x3fffffff;
}

// Every operation: its name. Operands are a, b, c; n is a small number. "var" may be a slot that holds a reference.
#define ZAN_SCRIPT_OPERATIONS(X)                                                                                   \
    X(Move)             /* a := b */                                                                               \
    X(Let)              /* var a := value of b; n: b is a temporary to move from */                                \
    X(Set)              /* var a := object b; n as Let */                                                          \
    X(Clear)            /* n slots from a := Empty */                                                              \
    X(MakeReference)    /* a := address of var b */                                                                \
    X(ElementReference) /* a := address of element of var b at n indices from c, or its value */                   \
    X(DropPaths)        /* element addresses of this statement are used up */                                      \
    X(Add)              /* a := b + c */                                                                           \
    X(Subtract)                                                                                                    \
    X(Multiply)                                                                                                    \
    X(Divide)                                                                                                      \
    X(Binary)      /* a := b op c; n is the Operator */                                                            \
    X(Unary)       /* a := op b; n is the Operator */                                                              \
    X(Concat2)     /* a := b & c */                                                                                \
    X(Concat)      /* a := n temporaries from b, joined */                                                         \
    X(Append)      /* var a := n temporaries from b, joined; the first is a's old value */                         \
    X(Compare)     /* a := b op c; n is Operator and literal flags */                                              \
    X(Is)          /* a := b Is c */                                                                               \
    X(Jump)        /* to a */                                                                                      \
    X(Loop)        /* back to a, looking at the limits */                                                          \
    X(JumpIf)      /* to b when a is true */                                                                       \
    X(JumpUnless)  /* to b unless a is true */                                                                     \
    X(UnlessEqual) /* to c unless a = b; n literal flags */                                                        \
    X(UnlessNotEqual)                                                                                              \
    X(UnlessLess)                                                                                                  \
    X(UnlessGreater)                                                                                               \
    X(UnlessLessEqual)                                                                                             \
    X(UnlessGreaterEqual)                                                                                          \
    X(ForStart)         /* var a := start; limit, step, start in three slots from b; to c when there is no pass */ \
    X(ForNext)          /* var a += step; to c for another pass */                                                 \
    X(EachStart)        /* slot a := state over collection b */                                                    \
    X(EachNext)         /* var a := next item of state b, or to c at the end */                                    \
    X(Call)             /* a := global procedure c with n arguments from b */                                      \
    X(CallOwn)          /* a := procedure c of the class of Me */                                                  \
    X(CallBuiltin)      /* a := built-in function c with n arguments from b */                                     \
    X(CallBuiltin1)     /* a := built-in function c of b */                                                        \
    X(RunText)          /* a := text b run; n is the RunMode */                                                    \
    X(Member)           /* a := member c of object b */                                                            \
    X(CallMember)       /* a := member c of object in b with n arguments after it */                               \
    X(PutMember)        /* member c of object a := b; n: Set */                                                    \
    X(PutMemberIndexed) /* member c of object in a, with n arguments and the value after it; b: Set */             \
    X(Index)            /* a := var b at n indices from c, or its default member */                                \
    X(Index1)           /* a := var b at index c */                                                                \
    X(PutIndex)         /* var a at n indices from b := value after them; c: Set */                                \
    X(PutIndex1)        /* var a at index b := c */                                                                \
    X(CallValue)        /* a := default member of var b with n arguments from c, as a statement */                 \
    X(New)              /* a := new object of class name c */                                                      \
    X(LoadName)         /* a := whatever name c means now; n: as a statement */                                    \
    X(RefName)          /* a := address of the variable name c, or its value */                                    \
    X(StoreName)        /* name c := b; n: Set */                                                                  \
    X(BindName) /* slot a := address of the variable name c where there is one; n: make it when there is none */   \
    X(CallName) /* a := name c with n arguments from b */                                                          \
    X(LoadMe)   /* a := Me */                                                                                      \
    X(DimArray) /* var a := array with bounds c, unless it is one */                                               \
    X(DimAgain) /* raises 13 when a already is an array of an earlier text */                                      \
    X(ReDim)    /* var a := array with n upper bounds from b; c: Preserve */                                       \
    X(Erase)    /* var a */                                                                                        \
    X(ByValue)  /* parameter slot a := its value */                                                                \
    X(Return)                                                                                                      \
    X(ResumeNext)                                                                                                  \
    X(GoToZero)                                                                                                    \
    X(Raise) /* error a, about name c - 1 when c is not 0 */

enum class Op : std::uint16_t {
#define ZAN_SCRIPT_OPERATION(name) name,
    ZAN_SCRIPT_OPERATIONS(ZAN_SCRIPT_OPERATION)
#undef ZAN_SCRIPT_OPERATION
};

struct Instruction
{
    Op op;
    std::uint16_t n = 0;
    Operand a = 0;
    Operand b = 0;
    Operand c = 0;
};
static_assert(sizeof(Instruction) == 16);

/// Literal flags of a comparison, above the operator's number: which kind of literal each side is.
inline constexpr int LeftLiteralShift = 8;
inline constexpr int RightLiteralShift = 10;

/// Flag of a Member operation: empty parentheses stand behind the name.
inline constexpr std::uint16_t MemberWithParentheses = 2;

enum class RunMode : std::uint16_t { Eval, Execute, ExecuteGlobal };
/// Which of the three names that run a text this one is; nothing for any other name.
std::optional<RunMode> runModeOf(values::Name name);

struct ClassInfo;
struct ClassMember;

/// One member access in the code, with the member that the last object of a script's class had there.
struct Site
{
    values::Name name;
    std::uint64_t classSerial = 0; ///< 0: none yet
    const ClassMember* member = nullptr;
};

/// Where a statement's code begins, and where execution goes on when it fails under Resume Next.
struct Mark
{
    std::uint32_t start = 0;
    std::uint32_t resume = 0;
    std::uint32_t temporaries = 0; ///< first slot that holds nothing of an enclosing statement
    Position position;
};

struct Procedure
{
    values::Name name;
    ProcedureKind kind = ProcedureKind::Sub;
    bool isPublic = true;
    bool isMain = false;       ///< the statements of a text outside procedures
    bool dynamicScope = false; ///< text run inside a procedure: names mean what they mean there
    bool optionExplicit = false;
    std::uint32_t parameterCount = 0;
    std::uint32_t localCount = 0; ///< parameters, result and named variables
    std::uint32_t frameSize = 0;  ///< with temporaries
    std::int32_t resultSlot = -1;
    const ClassInfo* owner = nullptr;
    std::vector<Instruction> code;
    mutable std::vector<Slot> constants; ///< never written; the banks have one pointer type
    mutable std::vector<Site> sites;
    std::vector<Mark> marks;
    std::vector<values::Name> names;
    std::vector<std::vector<std::int32_t>> bounds;
    std::vector<const Procedure*> callees;
    std::vector<std::pair<values::Name, std::uint32_t>> locals; ///< folded name and slot, for text run inside

    /// The statement that an instruction belongs to; null for code before the first.
    const Mark* markAt(std::size_t place) const noexcept;
};

/// What a name stands for in a class.
struct ClassMember
{
    values::Name name;
    const Procedure* get = nullptr; ///< a method or Property Get
    const Procedure* let = nullptr;
    const Procedure* set = nullptr;
    std::int32_t field = -1;
    bool fieldIsPublic = true;
    bool isConstant = false;
    values::Variant constant;
};

struct ClassInfo
{
    struct Field
    {
        values::Name name;
        bool isArray = false;
        std::vector<std::int32_t> upperBounds;
    };
    values::Name name;
    std::uint64_t serial = 0; ///< unique in the process
    std::vector<Field> fields;
    std::unordered_map<values::Name, ClassMember> members; ///< by folded name
    const ClassMember* defaultMember = nullptr;
    const Procedure* initialize = nullptr;
    const Procedure* terminate = nullptr;

    const ClassMember* find(values::Name name) const noexcept;
};

/// What a text declares outside its procedures.
struct Declaration
{
    enum class Kind : std::uint8_t { Variable, Constant, Procedure, Class };
    Kind kind = Kind::Variable;
    std::uint32_t symbol = 0;
    values::Variant value;
    const Procedure* procedure = nullptr;
    const ClassInfo* classInfo = nullptr;
};

/// One compiled text. Holds no state of a run but the sites' memory, so that engines may share it.
struct Unit
{
    std::vector<values::Name> newSymbols; ///< names that compiling it added to the table of globals, in order
    std::vector<Declaration> declarations;
    std::vector<std::unique_ptr<Procedure>> procedures;
    std::vector<std::unique_ptr<ClassInfo>> classes;
    std::uint64_t serial = 0;
    const Procedure* main = nullptr;
};

} // namespace zan::script
