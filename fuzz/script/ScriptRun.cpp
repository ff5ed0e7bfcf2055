// Any program under small limits: it ends by itself, with an ordinary error, or at a limit, and the control is good
// for the next program.

#include "script/ScriptControl.h"

#include "binding/MemberTable.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

using namespace zan::script;

namespace {

/// Something of the host's to get at.
class Thing : public zan::binding::Object
{
public:
    const zan::binding::MemberTable& members() const override
    {
        static const zan::binding::MemberTable table(
            "Thing", nullptr,
            {
                zan::binding::property<&Thing::value, &Thing::setValue>("Value").asDefault(),
                zan::binding::method<&Thing::again>("Again"),
                zan::binding::method<&Thing::call>("Call"),
            });
        return table;
    }
    zan::values::Variant value() const { return m_value; }
    void setValue(const zan::values::Variant& value) { m_value = value; }
    void again() { control->Reset(); }
    void call(const QString& name) { static_cast<void>(control->Run(name)); }
    void forget() { m_value = {}; }

    ScriptControl* control = nullptr;

private:
    zan::values::Variant m_value;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto thing = zan::values::make<Thing>();
    {
        ScriptControl control;
        ScriptLimits limits;
        limits.callDepth = 40;
        limits.memory = 64u << 20;
        limits.stringLength = 10000;
        limits.runTime = std::chrono::milliseconds(20);
        control.setLimits(limits);
        thing->control = &control;
        control.AddObject(QStringLiteral("Thing"), thing);
        const QString source = QString::fromLatin1(reinterpret_cast<const char*>(data), qsizetype(size));
        control.AddCode(source);
        static_cast<void>(control.Run(QStringLiteral("Main")));
        thing->forget();
        control.Reset();
        if (!control.AddCode(QStringLiteral("x = 1")))
            std::abort();
    }
    return thing->references() == 1 ? 0 : (std::abort(), 0);
}
