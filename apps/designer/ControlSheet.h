#pragma once

#include "designer/DesignedClasses.h"

#include <QtDesigner/default_extensionfactory.h>
#include <QtDesigner/dynamicpropertysheet.h>
#include <QtDesigner/extension.h>
#include <QtDesigner/propertysheet.h>

#include <QPointer>
#include <QWidget>

#include <vector>

namespace zan::binding {
struct Member;
}

namespace zan::designer {

/// The properties of a control in the property editor: those that the toolkit knows of any widget, and behind them the
/// design values of the control's member table, whatever they are. They have no declaration in the toolkit, so that a
/// form keeps them as dynamic properties.
class ControlSheet : public QObject,
                     public QDesignerPropertySheetExtension,
                     public QDesignerDynamicPropertySheetExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerPropertySheetExtension QDesignerDynamicPropertySheetExtension)
public:
    /// `sheet` has the toolkit's own properties of the widget, `sheets` those of any.
    ControlSheet(QWidget& widget, const DesignedClass& row, QObject& sheet, QExtensionManager& sheets,
                 QObject* parent);

    int count() const override;
    int indexOf(const QString& name) const override;
    QString propertyName(int index) const override;
    QString propertyGroup(int index) const override;
    void setPropertyGroup(int index, const QString& group) override;
    bool hasReset(int index) const override;
    bool reset(int index) override;
    bool isVisible(int index) const override;
    void setVisible(int index, bool visible) override;
    bool isAttribute(int index) const override;
    void setAttribute(int index, bool attribute) override;
    QVariant property(int index) const override;
    void setProperty(int index, const QVariant& value) override;
    bool isChanged(int index) const override;
    void setChanged(int index, bool changed) override;
    bool isEnabled(int index) const override;

    bool dynamicPropertiesAllowed() const override;
    int addDynamicProperty(const QString& name, const QVariant& value) override;
    bool removeDynamicProperty(int index) override;
    bool isDynamicProperty(int index) const override;
    bool canAddDynamicProperty(const QString& name) const override;

private:
    struct Own
    {
        const binding::Member* member;
        QByteArray name;
        QString group;
        bool isVisible = true;
        bool isAttribute = false;
        bool isChanged = false;
    };
    /// The control's own property at an index; null for one of the toolkit's.
    Own* own(int index);
    const Own* own(int index) const { return const_cast<ControlSheet*>(this)->own(index); }

    QPointer<QWidget> m_widget;
    Ref<binding::Object> m_control;
    QDesignerPropertySheetExtension& m_toolkits;
    QDesignerDynamicPropertySheetExtension* m_dynamic; // of the same; null when it takes none
    QExtensionManager& m_sheets;
    std::vector<Own> m_own;
};

/// Gives controls of ours their sheet.
class ControlSheets : public QExtensionFactory
{
    Q_OBJECT
public:
    explicit ControlSheets(QExtensionManager* manager)
        : QExtensionFactory(manager)
    {}

protected:
    QObject* createExtension(QObject* object, const QString& iid, QObject* parent) const override;

private:
    mutable bool m_isAsking = false; // for the toolkit's own sheet, which is behind ours
};

} // namespace zan::designer
