#pragma once

#include "binding/Object.h"

#include <QIcon>
#include <QString>

#include <span>

class QPainter;
class QWidget;

namespace zan::designer {

using values::Ref;

/// A control as the form designer has it: one row.
struct DesignedClass
{
    const char* className; ///< with its namespace
    const char* objectName;
    const char* toolTip;
    int width, height; ///< of a new one, pixels
    QWidget* (*create)(QWidget* parent);
    /// A picture of 24 by 24 pixels of a control that shows nothing while it is empty; null: the control itself, drawn
    /// small.
    void (*drawIcon)(QPainter& painter);
    /// The control behind a widget of this class, whose member table has the properties.
    Ref<binding::Object> (*control)(QWidget& widget);
};
std::span<const DesignedClass> designedClasses();
/// The row of a widget; null for one that is no control of ours.
const DesignedClass* designedClassOf(const QObject& widget);

/// The name without its namespace.
QString shortNameOf(const DesignedClass& row);
QIcon iconOf(const DesignedClass& row);

} // namespace zan::designer
