// The functions that programs in C call. Each is a boundary: what is behind it may raise.

#include "binding/MemberTable.h"
#include "component/Application.h"
#include "component/Boundary.h"
#include "component/CVariant.h"
#include "component/Classes.h"
#include "component/Frame.h"
#include "component/Module.h"
#include "component/Registry.h"
#include "component/Subscription.h"
#include "component/TypeLibrary.h"

#include <cstring>
#include <optional>

using namespace zan::component;
using zan::binding::Access;
using zan::binding::Name;
using zan::values::ErrorNumber;

namespace {

const ZanId FactoryInterface = ZAN_INTERFACE_FACTORY;
const ZanId DispatchInterface = ZAN_INTERFACE_DISPATCH;
const ZanId FrameInterface = ZAN_INTERFACE_FRAME;

constexpr qsizetype LongestName = 255; // names live as long as the process

/// The class object of a class.
class Factory : public Object
{
public:
    explicit Factory(const ClassRow& row)
        : m_row(row)
    {}
    const ClassRow& row() const noexcept { return m_row; }
    const zan::binding::MemberTable& members() const override
    {
        return zan::binding::table([] {
            return zan::binding::MemberTable("Factory", nullptr,
                                             {zan::binding::readOnly<&Factory::ClassName>("ClassName")});
        });
    }

private:
    QString ClassName() const { return QString::fromLatin1(m_row.name); }
    const ClassRow& m_row;
};

std::atomic<int> locks = 0;

void put(ZanHandle* place, ZanHandle handle)
{
    *place = handle;
}

/// The interface of an object that is not the dispatch interface, which all have.
ZanHandle interfaceOf(const Handles::Entry& entry, const ZanId& id)
{
    Handles& handles = Module::get().handles();
    if (sameId(id, DispatchInterface))
        return handles.give(entry.object);
    if (sameId(id, FactoryInterface) && dynamic_cast<Factory*>(entry.object.get()))
        return handles.give(entry.object);
    if (sameId(id, FrameInterface) && entry.holder)
        return handles.give(entry.holder->frame());
    fail(ZAN_E_INTERFACE, "The object does not have this interface.");
}

QObject& eventSource(const Handles::Entry& entry)
{
    QObject* source = dynamic_cast<QObject*>(entry.object.get());
    if (entry.holder)
        source = entry.holder->control();
    else if (const auto* frame = dynamic_cast<Frame*>(entry.object.get()))
        source = &frame->window();
    if (!source)
        fail(ZAN_E_INTERFACE, "This object has no events.");
    return *source;
}

Access accessOf(std::int32_t access)
{
    switch (access) {
    case ZAN_GET:
        return Access::Get;
    case ZAN_PUT:
        return Access::Put;
    case ZAN_PUT_REFERENCE:
        return Access::PutReference;
    default:
        zan::values::raise(ErrorNumber::InvalidCall);
    }
}

ZanResult invoke(ZanHandle object, const char* member, std::int32_t access, const ZanVariant* arguments,
                 std::int32_t count, ZanVariant* result) noexcept
{
    if (result)
        *result = ZanVariant{};
    return atCallBoundary([&] {
        const Module::Call call;
        const Handles::Entry entry = Module::get().handles().at(object); // held until we are done
        const QString name = textFromC(member);
        if (name.size() > LongestName)
            zan::values::raise(ErrorNumber::NoSuchMember);
        const std::vector<Variant> values = fromC(arguments, count);
        const Variant value = entry.object->invoke(Name(name), accessOf(access), values);
        if (result)
            *result = toC(value);
    });
}

} // namespace

// The four standard entry points -------------------------------------------------------------------------------

ZanResult DllGetClassObject(const ZanId* class_id, const ZanId* interface_id, ZanHandle* factory)
{
    if (factory)
        *factory = 0;
    return atCallBoundary([&] {
        const Module::Call call;
        const ClassRow& row = classOf(due(class_id));
        const ZanId& id = due(interface_id);
        due(factory);
        const Handles::Entry entry{zan::values::make<Factory>(row), nullptr, 0};
        put(factory, interfaceOf(entry, id));
    });
}

int32_t DllCanUnloadNow(void)
{
    return Alive::anything() || locks > 0 ? 1 : 0;
}

ZanResult DllRegisterServer(void)
{
    return atCallBoundary([] { Registry::enter(); });
}

ZanResult DllUnregisterServer(void)
{
    return atCallBoundary([] { Registry::remove(); });
}

// The application object ---------------------------------------------------------------------------------------

ZanResult zanStart(int32_t how)
{
    return atCallBoundary([&] { Application::start(how); });
}

ZanResult zanEnd(void)
{
    return atCallBoundary([] { Application::end(); });
}

ZanResult zanProcessEvents(int32_t milliseconds)
{
    return atCallBoundary([&] { Application::processEvents(milliseconds); });
}

ZanResult zanStopEvents(void)
{
    return atCallBoundary([] { Application::stopEvents(); });
}

// Objects ------------------------------------------------------------------------------------------------------

ZanResult zanCreateInstance(ZanHandle factory, const ZanId* interface_id, ZanHandle* object)
{
    if (object)
        *object = 0;
    return atCallBoundary([&] {
        const Module::Call call;
        const Handles::Entry entry = Module::get().handles().at(factory);
        const auto* const made = dynamic_cast<const Factory*>(entry.object.get());
        if (!made)
            fail(ZAN_E_INTERFACE, "This is no class object.");
        const ZanId& id = due(interface_id);
        due(object);
        const Created created = made->row().create();
        // The frame does not hold its control; whoever asks for it alone would have nothing.
        if (sameId(id, FrameInterface))
            fail(ZAN_E_INTERFACE, "A control is created by its dispatch interface.");
        Handles& handles = Module::get().handles();
        const ZanHandle handle = handles.give(created.object, created.holder);
        try {
            put(object, interfaceOf(handles.at(handle), id));
        } catch (...) {
            handles.release(handle);
            throw;
        }
        handles.release(handle);
    });
}

ZanResult zanQueryInterface(ZanHandle object, const ZanId* interface_id, ZanHandle* result)
{
    if (result)
        *result = 0;
    return atCallBoundary([&] {
        const Module::Call call;
        const Handles::Entry entry = Module::get().handles().at(object);
        const ZanId& id = due(interface_id);
        due(result);
        put(result, interfaceOf(entry, id));
    });
}

ZanResult zanRetain(ZanHandle object)
{
    return atCallBoundary([&] {
        const Module::Call call;
        Module::get().handles().retain(object);
    });
}

ZanResult zanRelease(ZanHandle object)
{
    return atCallBoundary([&] {
        const Module::Call call;
        Module::get().handles().release(object);
    });
}

ZanResult zanLockServer(int32_t lock)
{
    return atCallBoundary([&] {
        if (lock) {
            ++locks;
            return;
        }
        int held = locks;
        while (held > 0 && !locks.compare_exchange_weak(held, held - 1)) {
        }
        if (held <= 0)
            zan::values::raise(ErrorNumber::InvalidCall);
    });
}

ZanResult zanInvoke(ZanHandle object, const char* member, int32_t access, const ZanVariant* arguments,
                    int32_t count, ZanVariant* result)
{
    return invoke(object, member, access, arguments, count, result);
}

ZanResult zanGet(ZanHandle object, const char* member, ZanVariant* result)
{
    if (!result)
        return atCallBoundary([&] { due(result); });
    return invoke(object, member, ZAN_GET, nullptr, 0, result);
}

ZanResult zanPut(ZanHandle object, const char* member, const ZanVariant* value)
{
    const bool isObject = value && value->kind == ZAN_OBJECT;
    return invoke(object, member, isObject ? ZAN_PUT_REFERENCE : ZAN_PUT, value, 1, nullptr);
}

ZanResult zanSubscribe(ZanHandle object, ZanEvent receiver, void* context, ZanHandle* subscription)
{
    if (subscription)
        *subscription = 0;
    return atCallBoundary([&] {
        const Module::Call call;
        const Handles::Entry entry = Module::get().handles().at(object);
        if (!receiver)
            fail(ZAN_E_POINTER, "A null pointer was given where a receiver is due.");
        due(subscription);
        put(subscription, Module::get().handles().give(
                              zan::values::make<Subscription>(eventSource(entry), object, receiver, context)));
    });
}

ZanResult zanClear(ZanVariant* value)
{
    return atCallBoundary([&] { clear(due(value)); });
}

// What there is ------------------------------------------------------------------------------------------------

ZanResult zanClassId(const char* name, ZanId* class_id)
{
    return atCallBoundary([&] {
        const QString wanted = textFromC(name);
        ZanId& result = due(class_id);
        for (const ClassRow& row : classes()) {
            if (wanted.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0) {
                result = row.id;
                return;
            }
        }
        fail(ZAN_E_CLASS, "There is no class of this name.");
    });
}

ZanResult zanTypeLibrary(ZanVariant* text)
{
    if (text)
        *text = ZanVariant{};
    return atCallBoundary([&] {
        ZanVariant& result = due(text); // before there is a text that somebody would have to let go of
        result = toC(Variant(QString::fromUtf8(typeLibrary())));
    });
}

int32_t zanInterfaceVersion(void)
{
    return ZAN_INTERFACE_VERSION;
}

ZanResult zanErrorNumber(void)
{
    return lastError();
}

const char* zanErrorDescription(void)
{
    return lastDescription();
}
