#include "script/compiler/Builtins.h"
#include "script/machine/Engine.h"
#include "script/machine/VmPush.h"
#include "script/syntax/CompileError.h"

#include "values/Arithmetic.h"
#include "values/Convert.h"

namespace zan::script {

using values::ErrorNumber;
using values::Kind;
using values::Variant;

namespace {

QString pieceText(const Variant& piece)
{
    return piece.isNull() ? QString() : values::toText(piece);
}

} // namespace

bool Vm::isTrue(const Variant& value)
{
    if (value.is(Kind::Boolean))
        return value.boolean();
    if (value.isNull())
        return false;
    if (value.isObject() && value.object()) {
        const Variant plain = value.objectRef()->defaultValue();
        m_budget.countCall();
        return plain.isNull() ? false : values::toBoolean(plain);
    }
    spendOn(value);
    return values::toBoolean(value);
}

values::Ordering Vm::generalCompare(const Variant& left, const Variant& right, int flags)
{
    spendOn(left);
    spendOn(right);
    return values::compare(left, right, static_cast<values::Operand>(flags >> LeftLiteralShift & 3),
                           static_cast<values::Operand>(flags >> RightLiteralShift & 3));
}

/// `+` in its general form; two texts are joined, and count as any joined text.
Variant Vm::generalAdd(const Variant& left, const Variant& right)
{
    if (left.isText() && right.isText())
        charge(left.text().size() + right.text().size());
    Variant result = values::add(left, right);
    if (result.isText())
        charge(result.text().size());
    return result;
}

/// left & right
Variant Vm::concatenate(const Variant& left, const Variant& right)
{
    if (left.isText() && right.isText()) {
        charge(left.text().size() + right.text().size());
        return Variant(left.text() + right.text());
    }
    Variant result = values::concatenate(left, right);
    charge(result.isText() ? result.text().size() : 0);
    return result;
}

/// `&` over many pieces at once: Null counts as an empty text, unless all of them are Null.
Variant Vm::join(const Slot* pieces, std::size_t count)
{
    std::vector<QString> texts;
    texts.reserve(count);
    bool allNull = true;
    qsizetype size = 0;
    for (std::size_t place = 0; place < count; ++place) {
        const Variant& given = pieces[place].value();
        const Variant piece = given.isObject() ? plainValue(given) : given;
        allNull = allNull && piece.isNull();
        texts.push_back(pieceText(piece));
        size += texts.back().size();
    }
    if (allNull)
        return Variant::null();
    charge(size);
    QString result;
    result.reserve(size);
    for (const QString& text : texts)
        result += text;
    return Variant(std::move(result));
}

/// The pieces joined, in the variable that was the first of them; its text grows in place where nobody shares it.
void Vm::append(Slot& slot, Slot* pieces, std::size_t count)
{
    qsizetype added = 0;
    for (std::size_t place = 1; place < count; ++place) {
        const Variant& piece = pieces[place].value();
        if (!piece.isText() && !piece.isNull())
            pieces[place] = Variant(pieceText(plainValue(piece)));
        added += piece.isText() ? piece.text().size() : 0;
    }
    Variant& target = follow(slot);
    const Variant& old = pieces[0].value();
    if (old.isText() && target.isText() && &old.text() == &target.text()) {
        checkLength(target.text().size() + added);
        pieces[0].clear();
        if (QString* text = target.uniqueText()) {
            chargeBytes(std::size_t(added) * sizeof(QChar));
            for (std::size_t place = 1; place < count; ++place) {
                if (const Variant& piece = pieces[place].value(); piece.isText())
                    text->append(piece.text());
            }
            clear(pieces, count);
            return;
        }
        pieces[0] = target;
    }
    Variant result = join(pieces, count);
    clear(pieces, count);
    follow(slot) = std::move(result);
}

Variant Vm::callBuiltin(std::uint32_t number, const Variant* arguments, std::size_t count)
{
    const Builtin& function = builtinAt(number);
    if (count < function.requiredArguments || count > function.allowedArguments)
        throw NamedError(ErrorNumber::WrongArgumentCount, values::Name(function.name));
    if (function.cost == Builtin::Cost::Reading) {
        for (std::size_t place = 0; place < count; ++place)
            spendOn(arguments[place]);
    }
    Variant result = function.function(m_engine, {arguments, count});
    chargeValue(result);
    look();
    return result;
}

/// Eval, Execute and ExecuteGlobal. Inside a procedure the names of the text mean what they mean there. An object
/// stands for its default value.
bool Vm::runText(const Variant& given, RunMode mode, Operand result)
{
    const Variant text = given.isObject() ? plainValue(given) : given;
    if (!text.isText()) {
        if (mode != RunMode::Eval)
            values::raise(ErrorNumber::TypeMismatch);
        deliver(result, Variant(text));
        return false;
    }
    const std::size_t current = m_frames.size() - 1;
    const Procedure& running = *m_frames[current].procedure;
    const bool inside = mode != RunMode::ExecuteGlobal && (!running.isMain || running.dynamicScope);
    const std::size_t scope = running.dynamicScope ? m_frames[current].scope : current;
    const QString source = text.text(); // looking at the limits may run code that changes the variable
    const std::shared_ptr<const Unit> unit = m_engine.compile(source, mode, inside);
    m_engine.load(unit);
    if (--m_credit < 0)
        tick();
    Instance* const me = inside ? m_frames[scope].me : nullptr;
    push(*unit->main, top(), 0, me, result);
    m_frames.back().scope = scope;
    m_units.push_back(unit);
    return true;
}

} // namespace zan::script
