#include "component/Classes.h"

#include "component/Bag.h"
#include "component/Boundary.h"
#include "component/Site.h"
#include "display/SiteMap.h"
#include "display/StatusLight.h"
#include "display/ValueBar.h"
#include "window/BenchWindowObject.h"

#include <QApplication>

#include <algorithm>
#include <cstring>

namespace zan::component {

namespace {

Ref<surface::FontObject> ambientFont()
{
    return surface::FontObject::fromQFont(QApplication::font());
}

bool hasDisplay()
{
    const QString platform = QApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

class PanelHolder : public Holder
{
public:
    explicit PanelHolder(window::BenchWindow* panel)
        : Holder(panel)
        , m_panel(panel)
    {
        if (!hasDisplay())
            PanelHolder::setUnattended(true);
    }
    void initProperties() override { panel().InitProperties(); }
    void readProperties(const binding::PropertyBag& bag) override { panel().ReadProperties(bag); }
    void writeProperties(binding::PropertyBag& bag) const override { panel().WriteProperties(bag); }
    void setUnattended(bool unattended) override
    {
        panel().setForms(unattended ? &m_unattended->forms : nullptr);
        Holder::setUnattended(unattended);
    }
    surface::RecordingForms& forms() noexcept override { return m_unattended->forms; }

private:
    /// Goes with the panel, which may stay for the rest of a call when its holder has gone.
    struct Unattended : QObject
    {
        using QObject::QObject;
        surface::RecordingForms forms;
    };

    window::BenchWindow& panel() const
    {
        if (!m_panel)
            values::raise(values::ErrorNumber::ObjectNotSet);
        return *m_panel;
    }

    QPointer<window::BenchWindow> m_panel;
    Unattended* m_unattended = new Unattended(m_panel->window());
};

template <class Widget>
class DisplayHolder : public Holder
{
public:
    explicit DisplayHolder(Widget* widget)
        : Holder(widget)
        , m_control(&widget->control())
    {}
    void initProperties() override { m_control->InitProperties(ambientFont()); }
    void readProperties(const binding::PropertyBag& bag) override { m_control->ReadProperties(bag, ambientFont()); }
    void writeProperties(binding::PropertyBag& bag) const override
    {
        m_control->WriteProperties(bag, ambientFont());
    }

private:
    Ref<std::remove_reference_t<decltype(std::declval<Widget>().control())>> m_control;
};

class MapHolder : public Holder
{
public:
    explicit MapHolder(display::SiteMap* map)
        : Holder(map)
        , m_control(&map->control())
    {}
    // A new map has its design values from the start.
    void initProperties() override {}
    void readProperties(const binding::PropertyBag& bag) override { m_control->ReadProperties(bag, ambient()); }
    void writeProperties(binding::PropertyBag& bag) const override { m_control->WriteProperties(bag, ambient()); }

private:
    static display::SiteMapControl::Ambient ambient()
    {
        display::SiteMapControl::Ambient place;
        place.font = ambientFont();
        return place;
    }
    Ref<display::SiteMapControl> m_control;
};

Created createPanel()
{
    auto panel = std::make_unique<window::BenchWindow>();
    const Ref<Object> object = panel->object();
    const auto holder = std::make_shared<PanelHolder>(panel.release());
    holder->initProperties();
    return {object, holder};
}

template <class Widget, class WidgetHolder>
Created createControl()
{
    auto widget = std::make_unique<Widget>();
    const Ref<Object> object(&widget->control());
    const auto holder = std::make_shared<WidgetHolder>(widget.release());
    holder->initProperties();
    return {object, holder};
}

template <class Plain>
Created createPlain()
{
    return {values::make<Plain>(), nullptr};
}

constexpr ClassRow Classes[] = {
    {"BenchWindow", ZAN_CLASS_BENCHWINDOW, createPanel},
    {"SiteMap", ZAN_CLASS_SITEMAP, createControl<display::SiteMap, MapHolder>},
    {"StatusLight", ZAN_CLASS_STATUSLIGHT,
     createControl<display::StatusLight, DisplayHolder<display::StatusLight>>},
    {"ValueBar", ZAN_CLASS_VALUEBAR, createControl<display::ValueBar, DisplayHolder<display::ValueBar>>},
    {"Site", ZAN_CLASS_SITE, createPlain<Site>},
    {"PropertyBag", ZAN_CLASS_PROPERTYBAG, createPlain<Bag>},
};

const struct
{
    const char* className;
    const QMetaObject* source;
} EventSources[] = {
    {"BenchWindow", &window::BenchWindow::staticMetaObject},
    {"SiteMap", &display::SiteMap::staticMetaObject},
    {"StatusLight", &display::StatusLight::staticMetaObject},
    {"ValueBar", &display::ValueBar::staticMetaObject},
    {"Frame", &FrameWindow::staticMetaObject},
    {"Logger", &site::Logger::staticMetaObject},
    {"Link", &site::Link::staticMetaObject},
};

} // namespace

std::span<const ClassRow> classes()
{
    return Classes;
}

const QMetaObject* eventSourceOf(QStringView className)
{
    for (const auto& row : EventSources) {
        if (className == QLatin1String(row.className))
            return row.source;
    }
    return nullptr;
}

bool sameId(const ZanId& a, const ZanId& b) noexcept
{
    return std::memcmp(a.bytes, b.bytes, sizeof a.bytes) == 0;
}

QString textOf(const ZanId& id)
{
    QByteArray text = QByteArray(reinterpret_cast<const char*>(id.bytes), sizeof id.bytes).toHex();
    for (const int dash : {20, 16, 12, 8})
        text.insert(dash, '-');
    return QString::fromLatin1(text);
}

const ClassRow& classOf(const ZanId& id)
{
    const auto* const found = std::find_if(std::begin(Classes), std::end(Classes),
                                           [&](const ClassRow& row) { return sameId(row.id, id); });
    if (found == std::end(Classes))
        fail(ZAN_E_CLASS, "There is no class of this id.");
    return *found;
}

} // namespace zan::component
