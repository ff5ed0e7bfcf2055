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

/// The control and the host's object, made once: a run takes some microseconds, making them takes more.
struct Bench
{
    Bench()
    {
        ScriptLimits limits;
        limits.callDepth = 40;
        limits.memory = 64u << 20;
        limits.stringLength = 10000;
        limits.passesPerLook = 500;
        limits.runTime = std::chrono::milliseconds(4);
        control.setLimits(limits);
        control.setClock([this] { return now += std::chrono::milliseconds(1); }); // one run is like the next
        thing->control = &control;
    }
    ScriptControl control;
    const zan::values::Ref<Thing> thing = zan::values::make<Thing>();
    std::chrono::nanoseconds now{0};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Bench* const bench = new Bench; // outlives every static that a run may use
    bench->control.AddObject(QStringLiteral("Thing"), bench->thing);
    bench->control.AddCode(QString::fromLatin1(reinterpret_cast<const char*>(data), qsizetype(size)));
    static_cast<void>(bench->control.Run(QStringLiteral("Main")));
    bench->thing->forget();
    bench->control.Reset();
    if (bench->control.isRunning() || bench->control.isStopped() || bench->thing->references() != 1)
        std::abort();
    if (!bench->control.AddCode(QStringLiteral("x = 1")))
        std::abort();
    bench->control.Reset();
    return 0;
}
