#include "HostFixture.h"

#include "zanbench/ChangeWatch.h"
#include "zanbench/PanelLoader.h"

#include "document/XMLOps.h"
#include "surface/forms/RecordingForms.h"
#include "trellis/SchemeFile.h"
#include "window/PanelSetup.h"

using namespace zan;
using document::Node;
using document::XMLOps::GetAttribute;
using document::XMLOps::SetAttribute;
using values::Name;

namespace {

class Changes : public HostTest
{
protected:
    Changes()
    {
        QFile file(path("w.scheme"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<SCHEME><WINDOW><KEY>A</KEY><CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE></CONTROL>"
                   "<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE><BINDTO>A|B</BINDTO></CONTROL>"
                   "<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE></CONTROL></WINDOW></SCHEME>");
        file.close();
        scheme = trellis::SchemeFile::open(path("w.scheme")).scheme;
        watch = std::make_unique<host::ChangeWatch>(scheme);
        controls = scheme->document().documentElement().child(Name("WINDOW")).children(Name("CONTROL"));
    }
    values::Ref<trellis::SchemeFile> scheme;
    std::unique_ptr<host::ChangeWatch> watch;
    std::vector<Node> controls;
};

} // namespace

TEST_F(Changes, WhatReadsAndScansStoreIsNoChange)
{
    GetAttribute(controls[0], Name("PROGRAM"), QStringLiteral("CONNECTIONSTATUS"));
    Node(controls[0]).appendChild(controls[0].createElement(Name("ACTION")));
    GetAttribute(controls[0].child(Name("ACTION")), Name("TYPE"), QStringLiteral("SET"));
    SetAttribute(controls[1], Name("TOOLTIPTEXT"), QStringLiteral("Level 2.5 (m) "));
    SetAttribute(controls[1], Name("IGNORESCAN"), QStringLiteral("-1"));
    EXPECT_TRUE(scheme->isChanged());
    EXPECT_FALSE(watch->isChanged());
    EXPECT_FALSE(scheme->isChanged()) << "the mark is taken away again";
}

TEST_F(Changes, OpeningTheSetupFormsOfTheDemoAndCancellingThemIsNoChange)
{
    const auto opened = host::OpenedSite::open(QStringLiteral(DEMO_SCHEME), QString());
    ASSERT_TRUE(opened.site);
    QDir::setCurrent(QFileInfo(QStringLiteral(DEMO_SCHEME)).path()); // where its pictures lie
    surface::RecordingForms forms;                                   // closes every form that comes up
    for (const QString& key : opened.site->panelKeys()) {
        const auto panel = host::loadPanel(*opened.site, key, std::nullopt,
                                           [&](window::BenchWindow& made) { made.setForms(&forms); });
        panel->UpdateDocument();
        host::ChangeWatch demo{values::Ref<trellis::SchemeFile>(&opened.site->scheme())};
        for (int place = 1; place <= panel->Controls()->Count(); ++place)
            panel->setup().edit(panel->Controls()->Control(binding::Variant(place)));
        panel->setup().editWindow();
        EXPECT_FALSE(demo.isChanged()) << qPrintable(key);
        EXPECT_FALSE(demo.compare()) << qPrintable(key);
    }
    EXPECT_GT(forms.boxes().size(), 10u);
}

TEST_F(Changes, EditsOfTheSameElementsAreChanges)
{
    SetAttribute(controls[0], Name("PROGRAM"), QStringLiteral("DATASTATUS"));
    EXPECT_TRUE(watch->isChanged());
    watch->settle();
    SetAttribute(controls[2], Name("TOOLTIPTEXT"), QStringLiteral("mine"));
    EXPECT_TRUE(watch->isChanged()) << "a bar without a channel has the tip that somebody gave it";
}

/// A bound label that takes the size of its text, of this alignment, with this place and width.
static Node boundLabel(const Node& control, const char* alignment, const char* left, const char* width)
{
    SetAttribute(control, Name("TYPE"), QStringLiteral("VB.Label"));
    SetAttribute(control, Name("BINDTO"), QStringLiteral("A|B"));
    SetAttribute(control, Name("AUTOSIZE"), QStringLiteral("-1"));
    SetAttribute(control, Name("ALIGNMENT"), QLatin1String(alignment));
    SetAttribute(control, Name("LEFT"), QLatin1String(left));
    SetAttribute(control, Name("WIDTH"), QLatin1String(width));
    return control;
}

TEST_F(Changes, ALabelThatFollowsItsTextKeepsItsEdgeOrItsMiddle)
{
    boundLabel(controls[0], "1", "300", "600");
    boundLabel(controls[1], "2", "300", "600");
    boundLabel(controls[2], "0", "300", "600");
    watch->settle();
    boundLabel(controls[0], "1", "0", "900"); // no LEFT at all
    boundLabel(controls[1], "2", "150", "900");
    boundLabel(controls[2], "0", "300", "900");
    EXPECT_FALSE(watch->compare()) << "a text has grown";
    SetAttribute(controls[0], Name("LEFT"), QStringLiteral("15"));
    EXPECT_TRUE(watch->compare()) << "moved by a user";
    SetAttribute(controls[0], Name("LEFT"), QStringLiteral("0"));
    EXPECT_FALSE(watch->compare());
    SetAttribute(controls[2], Name("LEFT"), QStringLiteral("0"));
    EXPECT_TRUE(watch->compare()) << "its left edge is what this one keeps";
}
