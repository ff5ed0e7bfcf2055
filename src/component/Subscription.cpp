#include "component/Subscription.h"

#include "binding/MemberTable.h"
#include "component/Boundary.h"
#include "component/CVariant.h"

#include <QWidget>

namespace zan::component {

namespace {

Variant variantOf(const QMetaType& type, const void* value)
{
    if (type == QMetaType::fromType<int>())
        return Variant(std::int32_t(*static_cast<const int*>(value)));
    if (type == QMetaType::fromType<float>())
        return Variant(*static_cast<const float*>(value));
    if (type == QMetaType::fromType<double>())
        return Variant(*static_cast<const double*>(value));
    if (type == QMetaType::fromType<bool>())
        return Variant(*static_cast<const bool*>(value));
    if (type == QMetaType::fromType<QString>())
        return Variant(*static_cast<const QString*>(value));
    if (type == QMetaType::fromType<Variant>())
        return *static_cast<const Variant*>(value);
    return {};
}

} // namespace

std::vector<QMetaMethod> eventsOf(const QMetaObject& type)
{
    std::vector<QMetaMethod> events;
    const QMetaObject* toolkits = &type;
    while (toolkits != &QObject::staticMetaObject && toolkits != &QWidget::staticMetaObject)
        toolkits = toolkits->superClass();
    for (int i = toolkits->methodCount(); i < type.methodCount(); ++i) {
        if (type.method(i).methodType() == QMetaMethod::Signal)
            events.push_back(type.method(i));
    }
    return events;
}

/// Receives every signal of the source. Has no meta object of its own: the number of the slot that each signal is
/// connected to is the event's place in the list.
class Subscription::Relay : public QObject
{
public:
    Relay(Subscription& subscription, QObject& source)
        : m_subscription(subscription)
        , m_events(eventsOf(*source.metaObject()))
    {
        if (m_events.empty())
            fail(ZAN_E_INTERFACE, "This object has no events.");
        const int firstSlot = QObject::staticMetaObject.methodCount();
        for (std::size_t i = 0; i < m_events.size(); ++i)
            QMetaObject::connect(&source, m_events[i].methodIndex(), this, firstSlot + int(i),
                                 Qt::DirectConnection);
    }
    int qt_metacall(QMetaObject::Call call, int index, void** arguments) override
    {
        index = QObject::qt_metacall(call, index, arguments);
        if (index < 0 || call != QMetaObject::InvokeMetaMethod)
            return index;
        m_subscription.tell(m_events[std::size_t(index)], arguments);
        return -1;
    }

private:
    Subscription& m_subscription;
    std::vector<QMetaMethod> m_events;
};

Subscription::Subscription(QObject& source, ZanHandle handle, ZanEvent receiver, void* context)
    : m_handle(handle)
    , m_receiver(receiver)
    , m_context(context)
    , m_relay(std::make_unique<Relay>(*this, source))
{}

Subscription::~Subscription() = default;

const binding::MemberTable& Subscription::members() const
{
    return binding::table([] { return binding::MemberTable("Subscription", nullptr, {}); });
}

/// The receiver may let this subscription go, and the source with it. What a receiver throws that was not written in C
/// stays here: above us is the toolkit.
void Subscription::tell(const QMetaMethod& event, void** arguments)
{
    const Ref<Subscription> alive(this);
    const Module::Depth depth;
    values::atBoundary(
        [&] {
            const QByteArray name = event.name();
            LentValues lent;
            for (int i = 0; i < event.parameterCount(); ++i)
                lent.add(variantOf(event.parameterMetaType(i), arguments[i + 1]));
            m_receiver(m_context, m_handle, name.constData(), lent.data(), lent.count());
        },
        [](const values::RuntimeError& error) { remember(error); });
}

} // namespace zan::component
