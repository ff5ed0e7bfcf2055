#pragma once

#include <QAccessible>
#include <QStringList>

#include <functional>
#include <utility>

// The toolkit tells nobody of anything while no platform has switched its accessibility on, and the platform of the tests
// never does: these are the members of its inner classes that switch it.
class QPlatformAccessibility
{
public:
    void setActive(bool active);
};
class QPlatformIntegration
{
public:
    QPlatformAccessibility* accessibility() const;
};
class QGuiApplicationPrivate
{
public:
    static QPlatformIntegration* platform_integration;
};

namespace zan::test {

/// An assistive tool that listens while it lives. There may be one at a time.
class ListeningTool
{
public:
    using Listener = std::function<void(QAccessibleEvent&)>;

    ListeningTool()
    {
        current() = this;
        m_former = QAccessible::installUpdateHandler(hear);
        setActive(true);
    }
    ~ListeningTool()
    {
        setActive(false);
        QAccessible::installUpdateHandler(m_former);
        current() = nullptr;
    }
    ListeningTool(const ListeningTool&) = delete;
    ListeningTool& operator=(const ListeningTool&) = delete;

    /// Does something in the middle of being told; it may destroy whatever it likes but for this tool.
    void setListener(Listener listener) { m_listener = std::move(listener); }
    /// What was told since the last call: kind and name, and the value where it is about one.
    QStringList take() { return std::exchange(m_told, {}); }
    /// What is told only of this kind: the beginning of a line.
    QStringList take(const QString& kind) { return take().filter(kind); }

private:
    static ListeningTool*& current()
    {
        static ListeningTool* tool = nullptr;
        return tool;
    }
    static void setActive(bool active)
    {
        QGuiApplicationPrivate::platform_integration->accessibility()->setActive(active);
    }
    static void hear(QAccessibleEvent* event)
    {
        ListeningTool* tool = current();
        tool->note(*event);
        if (const Listener listener = tool->m_listener)
            listener(*event);
    }
    void note(const QAccessibleEvent& event)
    {
        QAccessibleInterface* face = event.accessibleInterface();
        const QString who = face && face->isValid() ? face->text(QAccessible::Name) : QStringLiteral("nobody");
        switch (event.type()) {
        case QAccessible::NameChanged:
            m_told.append(QStringLiteral("name ") + who);
            break;
        case QAccessible::ValueChanged:
            m_told.append(QStringLiteral("value ") + who + QLatin1Char('=') +
                          static_cast<const QAccessibleValueChangeEvent&>(event).value().toString());
            break;
        case QAccessible::StateChanged:
            m_told.append(QStringLiteral("state ") + who);
            break;
        case QAccessible::Focus:
            m_told.append(QStringLiteral("focus ") + who);
            break;
        case QAccessible::ObjectShow:
            m_told.append(QStringLiteral("show ") + who);
            break;
        case QAccessible::ObjectHide:
            m_told.append(QStringLiteral("hide ") + who);
            break;
        case QAccessible::ObjectReorder:
            m_told.append(QStringLiteral("children ") + who);
            break;
        default:
            break;
        }
    }

    QAccessible::UpdateHandler m_former = nullptr;
    Listener m_listener;
    QStringList m_told;
};

} // namespace zan::test
