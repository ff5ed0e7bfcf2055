#pragma once

#include "binding/MemberTable.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "document/XmlText.h"
#include "surface/host/LiveControl.h"
#include "window/ControlTypes.h"
#include "wrappers/BenchControl.h"
#include "wrappers/BenchControls.h"

#include <functional>
#include <vector>

/// A panel window without a surface, for tests of what joins document and controls.
namespace zan::fake {

using values::Ref;
using values::Variant;

/// A font that takes what it is given.
class FakeFont : public binding::Object
{
public:
    QString Name() const { return name; }
    void setName(const QString& value) { name = value; }
    double Size() const { return size; }
    void setSize(double value)
    {
        size = value;
        ++sizeWrites;
    }
    bool Bold() const { return bold; }
    void setBold(bool value) { bold = value; }

    QString name = QStringLiteral("Window Font");
    double size = 8.25;
    bool bold = false;
    int sizeWrites = 0;

    const binding::MemberTable& members() const override
    {
        using C = FakeFont;
        static const binding::MemberTable table("Font", nullptr,
                                                {binding::property<&C::Name, &C::setName>("Name"),
                                                 binding::property<&C::Size, &C::setSize>("Size"),
                                                 binding::property<&C::Bold, &C::setBold>("Bold")});
        return table;
    }
};

/// A live control without a surface: reached by its own members, as if it lay on one.
class LooseControl : public surface::LiveControl
{
public:
    Hosting hosting() const noexcept override { return Hosting::Windowless; }
    surface::AccessibleRole accessibleRole() const noexcept override { return surface::AccessibleRole::Graphic; }
    Variant invoke(values::Name name, binding::Access access, binding::Arguments arguments) override
    {
        return Object::invoke(name, access, arguments);
    }
};

/// A live control that remembers what has been done to it.
class FakeControl : public LooseControl
{
public:
    float left = 10, top = 20, width = 30, height = 40;
    bool visible = false, templateElement = false, discarded = false;
    std::int32_t backColor = 7, foreColor = 8, handle = 0;
    std::int16_t borderStyle = 0;
    QString caption, tag, toolTip, text;
    Ref<FakeFont> font = values::make<FakeFont>();
    Ref<binding::Object> picture;
    std::vector<std::vector<float>> moves;
    bool refusesWidth = false;

    float Left() const { return left; }
    void setLeft(float value) { left = value; }
    float Top() const { return top; }
    void setTop(float value) { top = value; }
    float Width() const { return width; }
    void setWidth(float value)
    {
        if (refusesWidth)
            values::raise(values::ErrorNumber::InvalidPropertyValue);
        width = value;
    }
    float Height() const { return height; }
    void setHeight(float value) { height = value; }
    bool Visible() const { return visible; }
    void setVisible(bool value) { visible = value; }
    values::Colour BackColor() const { return {backColor}; }
    void setBackColor(values::Colour value) { backColor = value.code; }
    values::Colour ForeColor() const { return {foreColor}; }
    void setForeColor(values::Colour value) { foreColor = value.code; }
    std::int16_t BorderStyle() const { return borderStyle; }
    void setBorderStyle(std::int16_t value) { borderStyle = value; }
    QString Caption() const { return caption; }
    void setCaption(const QString& value) { caption = value; }
    QString Text() const { return text; }
    void setText(const QString& value) { text = value; }
    QString Tag() const { return tag; }
    void setTag(const QString& value) { tag = value; }
    QString ToolTipText() const { return toolTip; }
    void setToolTipText(const QString& value) { toolTip = value; }
    Ref<FakeFont> Font() const { return font; }
    void setFont(const Ref<FakeFont>& value) { font = value; }
    Ref<binding::Object> Picture() const { return picture; }
    void setPicture(const Ref<binding::Object>& value) { picture = value; }
    std::int32_t hWnd() const { return handle; }
    void Move(float newLeft, std::optional<float> newTop, std::optional<float> newWidth,
              std::optional<float> newHeight)
    {
        left = newLeft;
        top = newTop.value_or(top);
        width = newWidth.value_or(width);
        height = newHeight.value_or(height);
        moves.push_back({left, top, width, height});
    }

    const binding::MemberTable& members() const override
    {
        using C = FakeControl;
        using binding::property;
        static const binding::MemberTable table(
            "FakeControl", nullptr,
            {property<&C::Left, &C::setLeft>("Left"), property<&C::Top, &C::setTop>("Top"),
             property<&C::Width, &C::setWidth>("Width"), property<&C::Height, &C::setHeight>("Height"),
             property<&C::Visible, &C::setVisible>("Visible"),
             property<&C::BackColor, &C::setBackColor>("BackColor"),
             property<&C::ForeColor, &C::setForeColor>("ForeColor"),
             property<&C::BorderStyle, &C::setBorderStyle>("BorderStyle"),
             property<&C::Caption, &C::setCaption>("Caption"), property<&C::Text, &C::setText>("Text"),
             property<&C::Tag, &C::setTag>("Tag"), property<&C::ToolTipText, &C::setToolTipText>("ToolTipText"),
             property<&C::Font, &C::setFont>("Font"), property<&C::Picture, &C::setPicture>("Picture"),
             binding::readOnly<&C::hWnd>("hWnd"), binding::method<&C::Move>("Move")});
        return table;
    }
};

/// A window that makes every type but "UNKNOWN", one fake control each; the first of a type is its template.
class FakePanelWindow : public wrappers::PanelWindow
{
public:
    std::vector<Ref<FakeControl>> made;
    std::vector<QString> types;
    Ref<site::SchemeWindows> windows;
    std::vector<values::RuntimeError> errors;

    wrappers::ControlTypes controlTypes() const override { return window::controlTypes(); }
    Ref<wrappers::iBenchControl> createControl(const QString& type) override
    {
        if (type.isEmpty() || type == QLatin1String("UNKNOWN"))
            return {};
        const auto live = values::make<FakeControl>();
        live->templateElement = std::find(types.begin(), types.end(), type) == types.end();
        made.push_back(live);
        types.push_back(type);
        const auto wrapper = values::make<wrappers::BenchControl>();
        wrapper->setControlType(type);
        wrapper->setControl(live);
        wrapper->setVisible(true);
        return wrapper;
    }
    Ref<site::SchemeWindows> schemeWindows() override
    {
        if (!windows)
            values::raise(values::ErrorNumber::ObjectNotSet);
        return windows;
    }
    void discardControl(const Ref<binding::Object>& control) override
    {
        auto& live = static_cast<FakeControl&>(*control);
        live.discarded = !live.templateElement;
        if (live.templateElement)
            live.visible = false;
    }
    void restoreControl(const wrappers::PlacedControl& placed) override
    {
        auto& live = static_cast<FakeControl&>(*placed.control->Control());
        live.discarded = false;
        live.visible = placed.visible;
    }
    void reportError(const values::RuntimeError& error) override { errors.push_back(error); }
};

/// The document element of an XML text.
inline document::Node tree(const char* xml)
{
    return document::parseXml(QByteArray(xml)).document.documentElement();
}

} // namespace zan::fake
