#include "script/machine/Instance.h"

#include "script/machine/Engine.h"

#include "binding/MemberTable.h"
#include "values/Array.h"
#include "values/Burial.h"
#include "values/RuntimeError.h"

namespace zan::script {

using values::Variant;

Tracked::Tracked(Engine& engine)
    : m_engine(&engine)
{
    engine.track(*this);
}

Tracked::~Tracked()
{
    if (m_engine)
        m_engine->untrack(*this);
}

Instance::Instance(Engine& engine, const ClassInfo& info)
    : Tracked(engine)
    , m_info(&info)
    , m_fields(info.fields.size())
{
    for (std::size_t place = 0; place < info.fields.size(); ++place) {
        if (info.fields[place].isArray)
            m_fields[place] = newArray(info.fields[place].upperBounds);
    }
}

Instance::~Instance()
{
    buryFields();
}

const binding::MemberTable& Instance::members() const
{
    static const binding::MemberTable none("Object", nullptr, {});
    return none;
}

QString Instance::typeName() const
{
    return engine() ? m_info->name.text() : QStringLiteral("Object"); // the class goes with its program
}

Variant Instance::defaultValue()
{
    return invoke({}, binding::Access::Get, {});
}

Variant Instance::invoke(values::Name name, binding::Access access, binding::Arguments arguments)
{
    if (!engine())
        values::raise(values::ErrorNumber::ObjectRequired); // its program has ended
    const values::Ref<Instance> alive(this);
    return engine()->vm().invokeInstance(*this, name, access, arguments);
}

void Instance::sayGoodbye()
{
    if (m_terminated)
        return;
    m_terminated = true;
    if (engine() && m_info->terminate)
        engine()->vm().runTerminate(*this);
}

void Instance::letGo()
{
    buryFields();
}

/// Lets go of what the fields hold. Their places stay: code of the object may still be under way.
void Instance::buryFields() noexcept
{
    std::vector<Variant> contents;
    for (Slot& field : m_fields) {
        if (field.isCounted())
            contents.push_back(std::move(field.value()));
    }
    values::bury(std::move(contents));
}

void Instance::operator delete(Instance* object, std::destroying_delete_t)
{
    if (!object->m_terminated) {
        object->sayGoodbye();
        if (object->endDying() > 0)
            return; // somebody keeps it
        object->beginDying();
    }
    object->~Instance();
    ::operator delete(object);
}

} // namespace zan::script
