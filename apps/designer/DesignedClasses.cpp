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

constexpr int IconSize = 24;

/// Labels, a light and a bar.
void drawPanelIcon(QPainter& painter)
{
    painter.fillRect(0, 0, IconSize, IconSize, QColor(240, 240, 240));
    for (const int y : {4, 9, 14})
        painter.fillRect(3, y, 9, 2, QColor(70, 70, 70));
    painter.fillRect(3, 18, 9, 3, QColor(200, 0, 0));
    painter.fillRect(16, 3, 5, 18, Qt::white);
    painter.fillRect(16, 10, 5, 11, QColor(0, 160, 0));
}

/// A site and two that hang on it.
void drawMapIcon(QPainter& painter)
{
    painter.fillRect(0, 0, IconSize, IconSize, Qt::white);
    painter.setPen(QColor(70, 70, 70));
    painter.drawLine(7, 6, 7, 18);
    painter.drawLine(7, 12, 13, 12);
    painter.drawLine(7, 18, 13, 18);
    for (const QPoint& site : {QPoint(3, 3), QPoint(12, 9), QPoint(12, 16)})
        painter.fillRect(QRect(site, QSize(9, 5)), QColor(70, 110, 190));
}

constexpr DesignedClass Rows[] = {
    {"zan::window::BenchWindow", "benchWindow", "A live panel for a remote data logger", 480, 320, createPanel,
     drawPanelIcon,
     [](QWidget& widget) { return Ref<binding::Object>(static_cast<window::BenchWindow&>(widget).object()); }},
    {"zan::display::SiteMap", "siteMap", "A map of sites, each with its scheme", 320, 240,
     createControl<display::SiteMap>, drawMapIcon, controlOf<display::SiteMap>},
    {"zan::display::StatusLight", "statusLight", "A light with two states, each with a colour and a caption", 120,
     40, createControl<display::StatusLight>, nullptr, controlOf<display::StatusLight>},
    {"zan::display::ValueBar", "valueBar", "A bar between two limits, with an optional scale", 60, 200,
     createControl<display::ValueBar>, nullptr, controlOf<display::ValueBar>},
};

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

QString shortNameOf(const DesignedClass& row)
{
    const QString name = QString::fromLatin1(row.className);
    return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
}

namespace {

QPixmap smallPictureOf(QWidget& control)
{
    control.resize(IconSize * 2, IconSize * 2);
    return control.grab().scaled(IconSize, IconSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

QIcon iconOf(const DesignedClass& row)
{
    QPixmap picture(IconSize, IconSize);
    if (!row.drawIcon)
        picture = smallPictureOf(*std::unique_ptr<QWidget>(row.create(nullptr)));
    QPainter painter(&picture);
    if (row.drawIcon)
        row.drawIcon(painter);
    painter.setPen(Qt::darkGray);
    painter.drawRect(0, 0, IconSize - 1, IconSize - 1);
    return QIcon(picture);
}

} // namespace zan::designer
