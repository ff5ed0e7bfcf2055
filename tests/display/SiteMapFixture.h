#pragma once

#include "display/SiteMapControl.h"
#include "display/SiteMapView.h"
#include "support/ErrorOf.h"
#include "surface/host/ControlArray.h"
#include "surface/host/Surface.h"
#include "values/Convert.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zan::test {

/// What a site map tells its host, in order.
class RecordingMapHost : public display::SiteMapControl::Host
{
public:
    virtual ~RecordingMapHost() = default;
    void loadScheme(const QString& site) override { schemes << site; }
    void propertyChanged(binding::Name name) override { properties << name.text(); }
    QStringList schemes, properties;
};

/// A surface with a site map in its top left corner, and a folder for its map files.
class SiteMapStage : public testing::Test, protected surface::SurfaceEvents
{
protected:
    SiteMapStage()
    {
        surface.resize(400, 300);
        surface.setEvents(this);
        surface.addArray<display::SiteMapControl>(QStringLiteral("SiteMap1"));
        map = values::Ref<display::SiteMapControl>(
            static_cast<display::SiteMapControl*>(surface.array(u"SiteMap1")->item(1).get()));
        map->move(0, 0.0F, 6000, 4500);
        put("BorderStyle", values::Variant(0));
        map->setHost(&host);
        QObject::connect(&surface, &surface::Surface::runtimeError, &surface,
                         [this](int number, const QString&) { errors.push_back(number); });
    }
    ~SiteMapStage() override
    {
        if (map)
            map->setHost(nullptr);
        surface.setEvents(nullptr);
    }

    QString write(const QByteArray& xml, const QString& name = QStringLiteral("region.map"))
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(xml);
        return file.fileName();
    }
    /// Loads a map of these SITE elements.
    bool load(const QByteArray& sites) { return map->LoadMap(write("<SITEMAP>" + sites + "</SITEMAP>")); }
    /// Writes a property as a script does.
    void put(const char* name, const values::Variant& value) { map->put(values::Name(name), value); }
    void put(const char* name, values::Colour colour) { put(name, values::Variant(colour.code)); }
    values::Variant get(const char* name) { return map->get(values::Name(name)); }
    double number(const char* name) { return values::toDouble(get(name)); }
    values::Colour colour(const char* name) { return {values::toLong(get(name))}; }
    static QByteArray site(const QByteArray& name, const QByteArray& below = {})
    {
        return "<SITE><NAME>" + name + "</NAME><SCHEME>" + name + ".scheme</SCHEME><DESCRIPTION>about " + name +
               "</DESCRIPTION>" + below + "</SITE>";
    }
    const display::SiteChart& chart() const { return map->chart(); }
    const display::SiteBox& label(int index) const { return chart().site(index).label; }
    const display::SiteBox& box(int index) const { return chart().site(index).box; }

    /// Shows the map; the view exists from now on.
    display::SiteMapView& show()
    {
        map->setVisible(true);
        surface.show();
        surface.flush();
        QCoreApplication::processEvents(); // the scroll bars settle with the size
        return *view();
    }
    display::SiteMapView* view() const { return static_cast<display::SiteMapView*>(map->widget()); }
    QImage picture(int scale = 1)
    {
        show();
        QImage image(surface.size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        surface.render(&image);
        return image;
    }

    QTemporaryDir folder;
    surface::Surface surface;
    values::Ref<display::SiteMapControl> map;
    RecordingMapHost host;
    std::vector<int> errors;
};

} // namespace zan::test
