#pragma once

#include "script/machine/Tracked.h"

#include "script/compiler/Bytecode.h"

#include "binding/Object.h"

namespace zan::script {

/// What GetRef gives: an object whose default member is a procedure of the script.
class ProcedureRef final : public binding::Object, public Tracked
{
public:
    ProcedureRef(Engine& engine, const Procedure& procedure)
        : Tracked(engine)
        , m_procedure(&procedure)
    {}

    const Procedure& procedure() const noexcept { return *m_procedure; }
    const binding::MemberTable& members() const override;
    values::Variant defaultValue() override;
    /// Calls the procedure; raises 424 once its program has ended.
    values::Variant invoke(values::Name name, binding::Access access, binding::Arguments arguments) override;
    void letGo() override {}
    void hold() const override { retain(); }
    void drop() const override { release(); }

private:
    const Procedure* m_procedure;
};

} // namespace zan::script
