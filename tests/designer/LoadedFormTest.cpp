#include "binding/MemberTable.h"
#include "display/DesignProperties.h"
#include "display/SiteMap.h"
#include "display/StatusLight.h"
#include "display/ValueBar.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"

#include <QColor>
#include <QFile>
#include <QFont>
#include <QUiLoader>

#include <gtest/gtest.h>

#include <memory>
#include <set>

namespace zan::test {

using binding::Name;
using binding::Ref;
using binding::Variant;
using display::DesignProperties;

namespace {

/// The example form, as a program without any code for it loads it.
class LoadedForm : public testing::Test
{
protected:
    LoadedForm()
    {
        QUiLoader loader;
        loader.addPluginPath(QStringLiteral(PLUGIN_FOLDER));
        QFile file(QStringLiteral(FORM));
        if (file.open(QIODevice::ReadOnly))
            m_form.reset(loader.load(&file));
    }
    template <class Widget>
    Widget& find(const char* name) const
    {
        auto* widget = m_form ? m_form->findChild<Widget*>(QString::fromLatin1(name)) : nullptr;
        if (!widget)
            throw std::runtime_error(std::string("the form has no ") + name);
        return *widget;
    }
    std::unique_ptr<QWidget> m_form;
};

/// The pixels, in a form that can be compared: a child may be drawn into a picture of another format than a window.
QImage picture(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

TEST_F(LoadedForm, HandsItsPropertiesOnToTheControls)
{
    auto& light = find<display::StatusLight>("pump").control();
    EXPECT_EQ(light.get(Name("TrueCaption")).text(), u"Pump runs");
    EXPECT_EQ(light.get(Name("TrueColour")).longInteger(), 160 << 8);
    EXPECT_TRUE(light.get(Name("Value")).boolean());
    auto& bar = find<display::ValueBar>("stage").control();
    EXPECT_EQ(bar.get(Name("Max")).real(), 200);
    EXPECT_TRUE(bar.get(Name("ShowScale")).boolean());
    auto& map = find<display::SiteMap>("map").control();
    EXPECT_EQ(map.get(Name("BackColour")).longInteger(), 230 | 240 << 8 | 250 << 16);
    EXPECT_EQ(find<window::BenchWindow>("panel").GridSize(), 150);
}

TEST_F(LoadedForm, LooksLikeControlsThatAreSetByHand)
{
    auto& loaded = find<display::StatusLight>("pump");
    display::StatusLight made;
    made.resize(loaded.size());
    made.control().put(Name("TrueCaption"), Variant(QStringLiteral("Pump runs")));
    made.control().put(Name("TrueColour"), Variant(std::int32_t(160 << 8)));
    made.control().put(Name("Value"), Variant(true));
    EXPECT_TRUE(picture(loaded) == picture(made));
    auto& loadedBar = find<display::ValueBar>("stage");
    display::ValueBar bar;
    bar.control().put(Name("Value"), Variant(180.0));
    bar.control().put(Name("HighLimit"), Variant(150.0));
    bar.control().put(Name("Max"), Variant(200.0));
    bar.control().put(Name("ShowScale"), Variant(true));
    bar.resize(loadedBar.size());
    EXPECT_TRUE(picture(loadedBar) == picture(bar));
    EXPECT_EQ(find<window::BenchWindow>("panel").grab().toImage().pixelColor(60, 60), QColor(255, 255, 210));
}

TEST_F(LoadedForm, TakesNothingThatAControlRefuses)
{
    auto& bar = find<display::ValueBar>("stage");
    bar.setProperty("Max", QStringLiteral("elephant"));
    EXPECT_EQ(bar.control().get(Name("Max")).real(), 200);
    auto& light = find<display::StatusLight>("pump");
    light.setProperty("TrueCaption", QVariant::fromValue(std::make_shared<int>(5)));
    EXPECT_EQ(light.control().get(Name("TrueCaption")).text(), u"Pump runs") << "a type that nobody here knows";
    bar.setProperty("Refresh", 5);
    bar.setProperty("hWnd", 5);
    bar.setProperty("Elephant", 5);
    bar.setProperty("Max", QVariant()); // taken away again: the control keeps its value
    EXPECT_EQ(bar.control().get(Name("Max")).real(), 200);
}

TEST(DesignProperties, GiveEveryStoredPropertyAndTakeItBack)
{
    display::StatusLight light;
    display::ValueBar bar;
    display::SiteMap map;
    window::BenchWindow panel;
    panel.InitProperties();
    const std::vector<Ref<binding::Object>> controls = {
        Ref<binding::Object>(&light.control()), Ref<binding::Object>(&bar.control()),
        Ref<binding::Object>(&map.control()), Ref<binding::Object>(panel.object())};
    for (const Ref<binding::Object>& control : controls) {
        const auto listed = DesignProperties::of(*control);
        EXPECT_GE(listed.size() + 1, control->members().stored().size()); // a panel's Picture is no form's
        for (const binding::Member* member : listed) {
            const Variant value = control->get(member->name);
            const QVariant shown = DesignProperties::toForm(*member, value);
            EXPECT_TRUE(shown.isValid()) << qPrintable(member->name.text());
            const Variant back = DesignProperties::fromForm(*member, shown);
            if (member->type == binding::ValueType::Colour || value.isObject())
                continue; // a colour of the system is one of its own in a form
            EXPECT_EQ(values::toText(back), values::toText(value)) << qPrintable(member->name.text());
        }
    }
}

} // namespace zan::test
