#include "designer/DesignedClasses.h"

#include "display/SiteMap.h"
#include "display/StatusLight.h"
#include "display/ValueBar.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"

#include <QPainter>

#include <algorithm>
#include <memory>

namespace zan::designer {

namespace {

QWidget* createPanel(QWidget* parent)
{
    auto* panel = new window::BenchWindow(parent);
    panel->InitProperties();
    return panel;
}

template <class Widget>
QWidget* createControl(QWidget* parent)
{
    return new Widget(parent);
}

template <class Widget>
Ref<binding::Object> controlOf(QWidget& widget)
{
    return Ref<binding::Object>(&static_cast<Widget&>(widget).control());
}

constexpr DesignedClass Rows[] = {
    {"zan::window::BenchWindow", "benchWindow", "A live panel for a remote data logger", 480, 320, createPanel,
     [](QWidget& widget) { return Ref<binding::Object>(static_cast<window::BenchWindow&>(widget).object()); }},
    {"zan::display::SiteMap", "siteMap", "A map of sites, each with its scheme", 320, 240,
     createControl<display::SiteMap>, controlOf<display::SiteMap>},
    {"zan::display::StatusLight", "statusLight", "A light with two states, each with a colour and a caption", 120,
     40, createControl<display::StatusLight>, controlOf<display::StatusLight>},
    {"zan::display::ValueBar", "valueBar", "A bar between two limits, with an optional scale", 60, 200,
     createControl<display::ValueBar>, controlOf<display::ValueBar>},
};

constexpr int IconSize = 24;

} // namespace

std::span<const DesignedClass> designedClasses()
{
    return Rows;
}

const DesignedClass* designedClassOf(const QObject& widget)
{
    const QLatin1String name(widget.metaObject()->className());
    const auto* const found = std::find_if(std::begin(Rows), std::end(Rows), [&](const DesignedClass& row) {
        return name == QLatin1String(row.className);
    });
    return found == std::end(Rows) ? nullptr : found;
}

QIcon iconOf(const DesignedClass& row)
{
    const std::unique_ptr<QWidget> control(row.create(nullptr));
    control->resize(IconSize * 2, IconSize * 2);
    QPixmap picture = control->grab().scaled(IconSize, IconSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&picture);
    painter.setPen(Qt::darkGray);
    painter.drawRect(0, 0, IconSize - 1, IconSize - 1);
    return QIcon(picture);
}

} // namespace zan::designer
