#pragma once

#include "surface/host/Spoken.h"

#include <QAccessible>

namespace zan::surface {

/// A painted control as assistive tools see it. Faces are made when somebody asks for one, live as long as their control
/// is loaded, and are found by it. Whatever asks the owner of the surface may come back without the control.
class PaintedFace : public QAccessibleInterface, public QAccessibleActionInterface, public QAccessibleValueInterface
{
public:
    /// The face of a loaded control.
    static PaintedFace* of(LiveControl& control);
    /// The control goes: tools that still hold its face find nothing.
    static void forget(const LiveControl& control) noexcept;

    const LiveControl& control() const { return *m_control; }

    bool isValid() const override { return m_control->isLoaded(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return toolkitRole(m_control->accessibleRole()); }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // What a click would run, where it would run anything.
    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    // The number that is shown; nobody sets it by hand.
    QVariant currentValue() const override;
    void setCurrentValue(const QVariant&) override {}
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override { return {}; }

private:
    explicit PaintedFace(LiveControl& control)
        : m_control(&control)
    {}
    QVariant number(double AccessibleRange::*field) const;

    Ref<LiveControl> m_control;
};

/// The control of a surface that keys edit; null for none.
LiveControl* currentOf(const Surface& surface);

} // namespace zan::surface
