// A type of control that the panel does not bring along: all of it is the class and the row in this file.
#include "WindowFixture.h"

#include "binding/MemberTable.h"
#include "surface/host/StyledControl.h"
#include "window/ControlFactory.h"
#include "window/ControlTypes.h"

#include <QPainter>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::Name;
using values::Ref;
using wrappers::ControlType;
using wrappers::iBenchControl;

namespace {

constexpr values::Colour Red{255};

/// A round gauge that is filled from below.
class Dial : public surface::StyledControl
{
public:
    Dial()
        : StyledControl(values::ButtonFace, Red)
    {}
    double value() const { return m_value; }
    double full() const { return m_full; }
    std::int16_t borderStyle() const { return m_borderStyle; }
    Hosting hosting() const noexcept override { return Hosting::Painted; }
    surface::AccessibleRole accessibleRole() const noexcept override { return surface::AccessibleRole::Chart; }
    void paint(surface::PaintContext& context, const QRect& rectangle) override
    {
        QRect filled = rectangle;
        filled.setTop(filled.bottom() + 1 - int(filled.height() * m_value / m_full));
        context.painter.fillRect(filled, values::toQColor(foreColor(), context.palette));
    }
    const binding::MemberTable& members() const override
    {
        using binding::field;
        return binding::table([] {
            return binding::MemberTable("Dial", &styledMembers(),
                                        {field<&Dial::m_foreColor, &Dial::restyle>("ForeColor", Red),
                                         field<&Dial::m_value, &Dial::look>("Value"),
                                         field<&Dial::m_full, &Dial::look>("Full", 100),
                                         field<&Dial::m_borderStyle, &Dial::look>("BorderStyle")});
        });
    }

private:
    double m_value = 0;
    double m_full = 100;
    std::int16_t m_borderStyle = 0;
};

void updateDial(iBenchControl& control, wrappers::BenchControls&)
{
    if (const Ref<site::Channel> channel = control.Channel())
        control.Control()->put(Name("Value"), channel->Value());
}

constexpr ControlType dialType{.key = u"Demo.Dial",
                               .menuCaption = u"&Dial",
                               .arrayName = u"Dial1",
                               .design = {150, 300, 600, 900},
                               .create = []() -> Ref<surface::LiveControl> { return values::make<Dial>(); },
                               .styling = wrappers::CopiesFont | wrappers::CopiesBackColor,
                               .restylesTemplate = true,
                               .border = wrappers::LockBorder{0, 1},
                               .click = wrappers::OnClick::RunsAction,
                               .live = {.update = updateDial,
                                        .due = wrappers::UpdateDue::AtEachScan,
                                        .followLink = [](iBenchControl& control, int state) {
                                            control.setToolTipText(QString::number(state));
                                        }}};

wrappers::ControlTypes typesWithDial()
{
    static const std::vector<ControlType> rows = [] {
        const wrappers::ControlTypes known = controlTypes();
        std::vector<ControlType> all(known.begin(), known.end());
        all.push_back(dialType);
        return all;
    }();
    return std::span<const ControlType>(rows);
}

class DialPanel : public WindowTest
{
protected:
    DialPanel()
        : WindowTest(typesWithDial())
    {}
    void load(const char* elements)
    {
        fill("A", (std::string("<CONTROL><TYPE>Demo.Dial</TYPE>") + elements + "</CONTROL>").c_str());
        panel->LoadWindow(QStringLiteral("A"));
    }
    Dial& dial() { return static_cast<Dial&>(*live(1)); }
    document::Node dialNode() { return nodeOf("A").child(Name("CONTROL")); }
};

} // namespace

TEST_F(DialPanel, TypeIsOfferedInTheMenuAndPlacedAtItsDesignRectangle)
{
    EXPECT_EQ(panel->newControlMenu().back().caption, u"&Dial");
    panel->setBackColor(values::rgb(1, 2, 3));
    const Ref<iBenchControl> placed = panel->Controls()->Add(QStringLiteral("Demo.Dial"));
    ASSERT_TRUE(placed);
    EXPECT_EQ(placed->Left(), 150);
    EXPECT_EQ(placed->Height(), 900);
    EXPECT_EQ(placed->BackColour().code, values::rgb(1, 2, 3).code);
    EXPECT_FALSE(panel->Controls()->Add(QStringLiteral("demo.dial")));
    EXPECT_EQ(panel->Controls()->Add(QStringLiteral("Demo.Dial"))->Top(), 300 + 900 + 50);
}

TEST_F(DialPanel, PanelThatDoesNotKnowTheTypeKeepsItsNode)
{
    load("");
    BenchWindow plain;
    plain.setLogger(logger);
    plain.setShowSiteMap(false);
    plain.LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(plain.Controls()->Count(), 0);
    EXPECT_EQ(nodeOf("A").children(Name("CONTROL")).size(), 1u);
}

TEST_F(DialPanel, ScanBringsTheValueOfItsChannel)
{
    const Ref<fake::FakeChannel> channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"));
    channel->value = Variant(25.0);
    load("<BINDTO>RTD|STAGE</BINDTO><FORECOLOR>255</FORECOLOR><LEFT>0</LEFT><TOP>0</TOP>");
    EXPECT_EQ(dial().value(), 25);
    channel->value = Variant(75.0);
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(dial().value(), 75);
    panel->resize(100, 100);
    const QImage picture = panel->grab().toImage().convertToFormat(QImage::Format_RGB32);
    // The dial is 60 pixels high, and three quarters of it are filled.
    const QRgb background = picture.pixel(90, 90);
    EXPECT_EQ(picture.pixel(20, 14), background);
    EXPECT_EQ(picture.pixel(20, 15) & 0xFFFFFF, 0xFF0000u);
    EXPECT_EQ(picture.pixel(20, 59) & 0xFFFFFF, 0xFF0000u);
    EXPECT_EQ(picture.pixel(20, 60), background);
}

TEST_F(DialPanel, RowNamesWhatTheLinkAndTheLockDoToIt)
{
    load("");
    logger->link->enter(site::LinkState::Connected);
    EXPECT_EQ(dial().toolTipText(), u"2");
    panel->setLockPositions(false);
    EXPECT_EQ(dial().borderStyle(), 1);
    panel->setLockPositions(true);
    EXPECT_EQ(dial().borderStyle(), 0);
}

TEST_F(DialPanel, WhatIsSavedIsWhatTheNextLoadShows)
{
    load("<FULL>50</FULL><WIDTH>1200</WIDTH><MYSTERY>kept</MYSTERY>");
    EXPECT_EQ(dial().full(), 50);
    panel->Controls()->Control(Variant(1))->Move(450, 600);
    panel->SaveWindow();
    EXPECT_EQ(dialNode().child(Name("LEFT")).text(), u"450");
    EXPECT_EQ(dialNode().child(Name("WIDTH")).text(), u"1200");
    EXPECT_EQ(dialNode().child(Name("MYSTERY")).text(), u"kept");
    fill("B", dialNode().xml().toUtf8().constData());
    panel->LoadWindow(QStringLiteral("B"));
    EXPECT_EQ(dial().left(), 450);
    EXPECT_EQ(dial().top(), 600);
    EXPECT_EQ(dial().full(), 50);
}
