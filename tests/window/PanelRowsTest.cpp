// Facts that stand in rows: what each type of control begins with, and what a host hears of each property of a panel.

#include "WindowFixture.h"

#include "surface/host/Picture.h"

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::Name;

namespace {

struct TypeRow
{
    const char16_t* key;
    const char16_t* menuCaption;
    const char16_t* arrayName;
    float left, top, width, height;
};

constexpr TypeRow typeRows[] = {
    {u"VB.Label", u"&Label", u"Label", 4560, 1560, 825, 225},
    {u"VB.TextBox", u"&Text Box", u"Text", 4560, 960, 1335, 285},
    {u"VB.CommandButton", u"&Command Button", u"CommandButton", 4560, 240, 1215, 375},
    {u"VB.Picture", u"&Picture", u"Pic", 2400, 480, 1815, 1095},
    {u"VB.CheckBox", u"&Checkbox", u"cbCheck", 4560, 1320, 1095, 195},
    {u"VB.OptionButton", u"", u"obOption", 4560, 720, 1095, 255},
    {u"VB.Shape", u"&Shape", u"Shape", 240, 2400, 2655, 1215},
    {u"ZanDataControls.ENTViewer", u"Log &Buffer", u"ENT", 3240, 1920, 3255, 1815},
    {u"ZanBenchWindow.StatusLight", u"S&tatus Light", u"StatusLight1", 240, 1800, 975, 255},
    {u"ZanDataControls.ZanGraph", u"&Graph", u"ZanGraph1", 240, 3840, 4935, 1815},
    {u"MSComctlLib.ProgressBar", u"Progress &Bar", u"pbar", 7680, 2040, 495, 3405},
    {u"ZanBenchWindow.ValueBar", u"&Value Bar", u"ValueBar", 5880, 600, 1695, 5055},
    {u"SITEMAP", u"", u"SiteMap1", 360, -120, 1695, 3495},
};

class PanelRows : public WindowTest
{};

} // namespace

TEST_F(PanelRows, EachTypeBeginsWithItsRectangleItsCaptionInTheMenuAndItsArray)
{
    for (const TypeRow& row : typeRows) {
        const wrappers::ControlType* type = controlTypes().find(row.key);
        ASSERT_TRUE(type) << QString::fromUtf16(row.key).toStdString();
        EXPECT_EQ(type->menuCaption, row.menuCaption);
        EXPECT_EQ(type->arrayName, row.arrayName);
        EXPECT_EQ(type->design, (wrappers::TwipsRectangle{row.left, row.top, row.width, row.height}))
            << QString::fromUtf16(row.key).toStdString();
    }
    EXPECT_EQ(controlTypes().size(), std::size(typeRows));
}

TEST_F(PanelRows, EveryWriteOfEachPropertyOfTheBagIsReportedOnceByItsName)
{
    const std::pair<const char*, Variant> rows[] = {
        {"BackColor", Variant(7)},           {"ForeColor", Variant(7)},
        {"Enabled", Variant(false)},         {"Font", Variant(values::make<surface::FontObject>())},
        {"BackStyle", Variant(0)},           {"BorderStyle", Variant(1)},
        {"GridSize", Variant(300)},          {"SnapToGrid", Variant(false)},
        {"LockPositions", Variant(false)},   {"LockMenu", Variant(true)},
        {"ShowSiteMap", Variant(true)},      {"Stretch", Variant(true)},
        {"PictureFile", Variant(QString())},
    };
    fill("A", "<CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    QStringList told;
    QObject::connect(panel.get(), &BenchWindow::PropertyChanged, panel.get(),
                     [&](const QString& name) { told << name; });
    for (const auto& row : rows) {
        told.clear();
        panel->object()->put(Name(row.first), row.second);
        EXPECT_EQ(told, QStringList{QString::fromLatin1(row.first)}) << row.first;
    }
}
