#pragma once

#include "script/compiler/Bytecode.h"
#include "script/machine/Tracked.h"

#include "binding/Object.h"

#include <new>
#include <vector>

namespace zan::script {

/// An object of a class that a script declares.
class Instance final : public binding::Object, public Tracked
{
public:
    Instance(Engine& engine, const ClassInfo& info);

    const binding::MemberTable& members() const override;
    QString typeName() const override;
    values::Variant defaultValue() override;
    values::Variant invoke(values::Name name, binding::Access access, binding::Arguments arguments) override;

    const ClassInfo& info() const noexcept { return *m_info; }
    Slot* fields() noexcept { return m_fields.data(); }

    void sayGoodbye() override;
    void letGo() override;
    void hold() const override { retain(); }
    void drop() const override { release(); }

    /// The last release: Class_Terminate runs while the object is whole, and may keep it alive by storing Me.
    static void operator delete(Instance* object, std::destroying_delete_t);

private:
    ~Instance() override;
    void buryFields() noexcept;

    const ClassInfo* m_info;
    std::vector<Slot> m_fields;
    bool m_terminated = false;
};

} // namespace zan::script
