#include "script/machine/ProcedureRef.h"

#include "script/machine/Engine.h"

#include "binding/MemberTable.h"
#include "values/RuntimeError.h"

namespace zan::script {

const binding::MemberTable& ProcedureRef::members() const
{
    static const binding::MemberTable none("Object", nullptr, {});
    return none;
}

values::Variant ProcedureRef::defaultValue()
{
    return invoke({}, binding::Access::Get, {});
}

values::Variant ProcedureRef::invoke(values::Name name, binding::Access access, binding::Arguments arguments)
{
    if (!name.isEmpty() || access != binding::Access::Get)
        values::raise(values::ErrorNumber::NoSuchMember);
    if (!engine())
        values::raise(values::ErrorNumber::ObjectRequired);
    const values::Ref<ProcedureRef> alive(this);
    return engine()->vm().run(*m_procedure, nullptr, arguments);
}

} // namespace zan::script
