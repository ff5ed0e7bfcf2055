#pragma once

#include "component/Module.h"

#include <QMetaMethod>
#include <QObject>

#include <memory>
#include <vector>

namespace zan::component {

/// The events of a class: the signals that it and its bases declare, down to the toolkit's own.
std::vector<QMetaMethod> eventsOf(const QMetaObject& type);

/// What tells a receiver in C of an object's events, for as long as somebody holds it.
class Subscription : public Object
{
public:
    /// Raises when the object has no events.
    Subscription(QObject& source, ZanHandle handle, ZanEvent receiver, void* context);
    ~Subscription() override;
    const binding::MemberTable& members() const override;

private:
    class Relay;
    void tell(const QMetaMethod& event, void** arguments);

    ZanHandle m_handle;
    ZanEvent m_receiver;
    void* m_context;
    std::unique_ptr<Relay> m_relay;
};

} // namespace zan::component
