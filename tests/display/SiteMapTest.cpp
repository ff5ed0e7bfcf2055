// The rules of loading, laying out and selecting; what is seen of it stands in SiteMapViewTest.cpp.
#include "SiteMapFixture.h"

#include "binding/MemberTable.h"

#include <cmath>

using namespace zan;
using binding::Variant;
using display::SiteBox;
using display::SiteLine;
using display::Sites;
using test::errorOf;
using values::make;
using values::Name;
using values::Ref;

namespace {

class SiteMap : public test::SiteMapStage
{
protected:
    static float centre(const SiteBox& box) { return box.left + box.width / 2; }
};

} // namespace

TEST_F(SiteMap, NewMapIsEmptyAndHasTheOffsetsOfItsCreation)
{
    EXPECT_EQ(number("ColumnOffset"), 1000);
    EXPECT_EQ(number("RowOffset"), 750);
    EXPECT_EQ(map->mapFile(), u"");
    EXPECT_EQ(map->sites()->Count(), 0);
    EXPECT_EQ(map->selectedSite(), 0);
    EXPECT_EQ(chart().shownCount(), 0);
    EXPECT_EQ(colour("LineColour"), values::rgb(255, 0, 0));
    EXPECT_EQ(number("LineWidth"), 5);
}

TEST_F(SiteMap, SiteWithoutChildElementsShowsSiteAndNamesNoScheme)
{
    ASSERT_TRUE(load("<SITE/>"));
    EXPECT_EQ(chart().site(1).caption, u"Site");
    EXPECT_EQ(chart().site(1).description, u"");
    map->chooseSite(1);
    EXPECT_EQ(host.schemes, QStringList{QString()});
    // What was missing has been filled in, in memory.
    EXPECT_EQ(map->sites()->Item(Variant(1)).child(Name("NAME")).text(), u"Site");
    EXPECT_FALSE(map->sites()->Item(Variant(1)).child(Name("SCHEME")));
}

TEST_F(SiteMap, RootStandsInItsColumnAndTheThirdChildTwoColumnsToTheRightInTheSameRow)
{
    ASSERT_TRUE(load(site("root", site("a") + site("b") + site("c"))));
    ASSERT_EQ(chart().shownCount(), 4);
    EXPECT_EQ(label(1).top, 50);
    EXPECT_EQ(label(1).left, 150.0F + 500.0F - label(1).width / 2);
    EXPECT_EQ(centre(label(4)), 2650);
    EXPECT_EQ(label(4).top, 50);
}

TEST_F(SiteMap, RootWithOneChildMakesAnUprightLineOfTheChildsColumn)
{
    ASSERT_TRUE(load(site("a rather long root", site("a"))));
    EXPECT_EQ(label(2).top, label(1).top + 750);
    EXPECT_EQ(centre(label(2)), 650);
    const SiteLine expected{650, label(1).top + label(1).height, 650, label(2).top};
    EXPECT_EQ(chart().site(2).line, expected);
}

TEST_F(SiteMap, RootWithThreeChildrenShowsOneBelowItAndTwoInItsOwnRow)
{
    ASSERT_TRUE(load(site("root", site("a", site("aa")) + site("b", site("ba")) + site("c"))));
    // In the order of the walk: root, a, aa, b, ba, c.
    EXPECT_EQ(label(2).top, 800);
    EXPECT_EQ(label(3).top, 1550);
    EXPECT_EQ(label(4).top, 50);
    EXPECT_EQ(label(5).top, 800); // goes down from its parent in the first row
    EXPECT_EQ(label(6).top, 50);
    EXPECT_EQ(centre(label(4)), 1650);
    EXPECT_EQ(centre(label(5)), 1650);
    EXPECT_EQ(centre(label(6)), 2650);
    // Each line of a later child begins at the parent's right edge and runs across the nearer siblings.
    const float right = label(1).left + label(1).width;
    const float middle = label(1).top + label(1).height / 2;
    EXPECT_EQ(chart().site(4).line, (SiteLine{right, middle, label(4).left, middle}));
    EXPECT_EQ(chart().site(6).line, (SiteLine{right, middle, label(6).left, middle}));
}

TEST_F(SiteMap, SitesOfOneCellOverlapAndNothingIsMovedApart)
{
    ASSERT_TRUE(load(site("r", site("a") + site("b", site("b1") + site("x")) + site("y"))));
    // The second child of b and the third of r stand in one cell.
    EXPECT_EQ(label(5), label(6));
    EXPECT_EQ(chart().siteAt(label(6).pixels().center()), 6);
}

TEST_F(SiteMap, EveryOperationOfTheLayoutRoundsToSinglePrecision)
{
    put("ColumnOffset", Variant(1234.567F));
    put("RowOffset", Variant(333.333F));
    QByteArray below;
    for (int i = 0; i < 300; ++i)
        below += site(QByteArray::number(i * 7919), site("x"));
    ASSERT_TRUE(load(site("root", below)));
    int differs = 0;
    for (int i = 0; i < 300; ++i) {
        const SiteBox& child = label(2 + 2 * i);
        volatile float shift = float(i) * 1234.567F;
        volatile float column = 150.0F + shift;
        volatile float half = 1234.567F / 2;
        volatile float middle = column + half;
        volatile float halfWidth = child.width / 2;
        volatile float left = middle - halfWidth;
        ASSERT_EQ(child.left, left) << i;
        const double exact = 150.0 + i * double(1234.567F) + double(1234.567F) / 2 - double(child.width) / 2;
        differs += float(exact) != left;
    }
    EXPECT_GT(differs, 0); // else this would not tell the one from the other
}

TEST_F(SiteMap, LabelIsAsWideAsItsTextAndTheBoxHasItsSizeUntilItIsSelected)
{
    ASSERT_TRUE(load(site("a&amp;b") + site("ignored: only the first site is a root")));
    EXPECT_EQ(chart().shownCount(), 1);
    surface::TextPainter text;
    const QSize size = text.measure(QStringLiteral("a&b"), map->font()->face(), false);
    EXPECT_EQ(label(1).width, size.width() * 15);
    EXPECT_EQ(label(1).height, size.height() * 15);
    EXPECT_EQ(box(1), label(1));
}

TEST_F(SiteMap, SitesHoldsTheNodesInTheOrderOfTheWalk)
{
    ASSERT_TRUE(load(site("r", site("a", site("b")) + site("c"))));
    const Ref<Sites> sites = map->sites();
    QString names;
    for (std::int32_t i = 1; i <= sites->Count(); ++i)
        names += sites->Item(Variant(i)).child(Name("NAME")).text();
    EXPECT_EQ(names, u"rabc");
    ASSERT_TRUE(load(site("x")));
    EXPECT_NE(map->sites(), sites);
    EXPECT_EQ(map->sites()->Count(), 1);
    EXPECT_EQ(sites->Count(), 4); // whoever still has the former ones
}

TEST_F(SiteMap, SaveMapReturnsFalseWhateverItIsGiven)
{
    ASSERT_TRUE(load(site("r")));
    EXPECT_FALSE(map->SaveMap());
    EXPECT_FALSE(map->SaveMap(folder.filePath(QStringLiteral("other.map"))));
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("other.map"))));
}

TEST_F(SiteMap, EmptyMapFileForgetsTheNameAndLeavesTheSitesOnScreen)
{
    const QString file = write("<SITEMAP>" + site("r", site("a")) + "</SITEMAP>");
    map->setMapFile(file);
    EXPECT_EQ(map->mapFile(), file);
    map->setMapFile({});
    EXPECT_EQ(map->mapFile(), u"");
    EXPECT_EQ(chart().shownCount(), 2);
    EXPECT_EQ(map->sites()->Count(), 2);
}

TEST_F(SiteMap, PuttingAMapFileThatCannotBeReadSaysNothing)
{
    map->setMapFile(folder.filePath(QStringLiteral("missing.map")));
    EXPECT_EQ(map->mapFile(), u"");
    EXPECT_EQ(map->tryPutText(Name("MAPFILE"), write("<SITEMAP>" + site("r") + "</SITEMAP>")),
              binding::AccessStatus::Ok);
    EXPECT_EQ(chart().shownCount(), 1);
}

TEST_F(SiteMap, OffsetsAndTheLookOfLinesTakeEffectWithTheNextLoad)
{
    ASSERT_TRUE(load(site("r", site("a") + site("b"))));
    const SiteBox before = label(3);
    put("LineWidth", Variant(2));
    put("LineColour", values::rgb(0, 0, 255));
    put("ColumnOffset", Variant(2000));
    put("RowOffset", Variant(100));
    EXPECT_EQ(number("LineWidth"), 2);
    EXPECT_EQ(chart().lineLook().width, 5);
    EXPECT_EQ(chart().lineLook().colour, values::rgb(255, 0, 0));
    EXPECT_EQ(label(3), before);
    map->setMapFile(map->mapFile());
    EXPECT_EQ(chart().lineLook().width, 2);
    EXPECT_EQ(chart().lineLook().colour, values::rgb(0, 0, 255));
    EXPECT_EQ(centre(label(3)), 150 + 2000 + 1000);
    EXPECT_EQ(label(2).top, 150);
    EXPECT_EQ(errorOf([&] { put("LineWidth", Variant(0)); }), 380);
}

// Selecting ----------------------------------------------------------------------------------------------------

TEST_F(SiteMap, SelectedSiteGrowsByTwoPointsAndItsBoxHasAMarginThatStays)
{
    ASSERT_TRUE(load(site("r", site("long name"))));
    const SiteBox plain = label(2);
    map->SelectSite(2);
    const auto around = [](const SiteBox& inner) {
        return SiteBox{inner.left - 10, inner.top - 10, inner.width + 20, inner.height + 20};
    };
    EXPECT_GT(label(2).width, plain.width);
    EXPECT_EQ(label(2).left, plain.left); // it grows to the right and down
    EXPECT_EQ(label(2).top, plain.top);
    EXPECT_EQ(box(2), around(label(2)));
    EXPECT_EQ(chart().site(2).font->size().scaled, map->font()->size().scaled + 20000);
    EXPECT_EQ(chart().site(2).fill, values::rgb(255, 255, 230));
    EXPECT_EQ(chart().site(2).borderWidth, 2);
    map->SelectSite(1);
    EXPECT_EQ(label(2), plain);
    EXPECT_EQ(box(2), around(plain));
    EXPECT_EQ(chart().site(2).fill, map->siteColour());
    EXPECT_EQ(chart().site(2).borderWidth, 1);
    EXPECT_EQ(map->selectedSite(), 1);
}

TEST_F(SiteMap, SiteThatDoesNotExistRaises340AndIsTheSelectedOneNevertheless)
{
    ASSERT_TRUE(load(site("r")));
    EXPECT_EQ(errorOf([&] { map->SelectSite(2); }), 340);
    EXPECT_EQ(map->selectedSite(), 2);
    // The next selection cannot take its highlight away, and gets no further.
    EXPECT_EQ(errorOf([&] { map->SelectSite(1); }), 340);
    EXPECT_EQ(map->selectedSite(), 2);
}

TEST_F(SiteMap, SelectingNoneRaises340AndSelectsNone)
{
    ASSERT_TRUE(load(site("r")));
    map->SelectSite(1);
    EXPECT_EQ(errorOf([&] { map->SelectSite(0); }), 340);
    EXPECT_EQ(map->selectedSite(), 0);
    EXPECT_EQ(chart().site(1).borderWidth, 1);
    EXPECT_EQ(errorOf([&] { map->SelectSite(-3); }), 340);
    EXPECT_EQ(errorOf([&] { map->SelectSite(1); }), 0);
}

TEST_F(SiteMap, LoadKeepsTheSelectedNumberAndASmallerMapMakesItStale)
{
    ASSERT_TRUE(load(site("r", site("a") + site("b"))));
    map->SelectSite(3);
    ASSERT_TRUE(load(site("r", site("a"))));
    EXPECT_EQ(map->selectedSite(), 3);
    EXPECT_EQ(chart().site(2).borderWidth, 1);
    EXPECT_EQ(errorOf([&] { map->SelectSite(1); }), 340);
    ASSERT_TRUE(load(site("r", site("a") + site("b"))));
    EXPECT_EQ(errorOf([&] { map->SelectSite(1); }), 0);
}

TEST_F(SiteMap, NewSitesTakeTheBorderOfTheTemplateAndNotItsFill)
{
    ASSERT_TRUE(load(site("r")));
    map->SelectSite(1);
    ASSERT_TRUE(load(site("r", site("a"))));
    EXPECT_EQ(chart().site(1).borderWidth, 2);
    EXPECT_EQ(chart().site(2).borderWidth, 2);
    EXPECT_EQ(chart().site(1).fill, map->siteColour());
    EXPECT_EQ(chart().site(1).font->size(), map->font()->size());
}

TEST_F(SiteMap, ChoosingASiteSelectsItAndThenTellsItsScheme)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    map->chooseSite(2);
    EXPECT_EQ(map->selectedSite(), 2);
    EXPECT_EQ(host.schemes, QStringList{QStringLiteral("a.scheme")});
    map->chooseSite(7);
    EXPECT_EQ(host.schemes.size(), 1);
}

TEST_F(SiteMap, StaleSelectionIsToldAtTheEventBoundaryAndNoSchemeIsLoaded)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    map->SelectSite(2);
    ASSERT_TRUE(load(site("r")));
    map->chooseSite(1);
    EXPECT_EQ(errors, std::vector<int>{340});
    EXPECT_TRUE(host.schemes.isEmpty());
}

// Fonts and colours --------------------------------------------------------------------------------------------

TEST_F(SiteMap, PuttingAFontKeepsTheVeryObjectAndGivesTheLabelsCopies)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    map->SelectSite(2);
    host.properties.clear();
    const Ref<surface::FontObject> font = make<surface::FontObject>();
    font->setSize({160000});
    const float narrow = label(1).width;
    const SiteBox boxBefore = box(1);
    map->putFont(font);
    EXPECT_EQ(map->font(), font);
    EXPECT_NE(chart().site(1).font, font);
    EXPECT_EQ(chart().site(1).font->size().scaled, 160000);
    EXPECT_EQ(chart().site(2).font->size().scaled, 180000); // the difference is restored
    EXPECT_GT(label(1).width, narrow);
    EXPECT_EQ(box(1), boxBefore); // boxes follow a selection, not a font
    EXPECT_EQ(host.properties, QStringList{QStringLiteral("Font")});
    font->setSize({80000}); // the labels have copies
    EXPECT_EQ(chart().site(1).font->size().scaled, 160000);
}

TEST_F(SiteMap, PuttingAFontBeforeAnySelectionAppliesItAndThenRaises340)
{
    ASSERT_TRUE(load(site("r")));
    const Ref<surface::FontObject> font = make<surface::FontObject>();
    font->setSize({160000});
    EXPECT_EQ(errorOf([&] { map->putFont(font); }), 340);
    EXPECT_EQ(map->font(), font);
    EXPECT_EQ(chart().site(1).font->size().scaled, 160000);
    EXPECT_EQ(host.properties.last(), u"Font");
    EXPECT_EQ(errorOf([&] { map->putFont({}); }), 91);
}

TEST_F(SiteMap, ColoursReachEverySiteAtOnce)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    map->SelectSite(2);
    host.properties.clear();
    put("SiteColour", values::rgb(1, 2, 3));
    EXPECT_EQ(chart().site(1).fill, values::rgb(1, 2, 3));
    EXPECT_EQ(chart().site(2).fill, values::rgb(1, 2, 3)); // the highlighted one too
    put("ForeColour", values::rgb(4, 5, 6));
    put("BackColour", values::rgb(7, 8, 9));
    map->putEnabled(false);
    put("BorderStyle", Variant(1));
    put("LineColour", values::Colour());
    put("LineWidth", Variant(1));
    put("ColumnOffset", Variant(1));
    put("RowOffset", Variant(1));
    EXPECT_EQ(host.properties.join(u' '),
              u"SiteColour ForeColour BackColour Enabled BorderStyle LineColour LineWidth ColumnOffset RowOffset");
}

TEST_F(SiteMap, MembersStandUnderTheNamesOfThePublicInterface)
{
    QStringList names;
    for (const binding::Member& member : map->members().members())
        names << member.name.text();
    for (const char* name : {"LoadMap", "SaveMap", "BorderStyle", "Enabled", "hWnd", "PopupMenu", "BackColour",
                             "MousePointer", "MouseIcon", "Font", "ForeColour", "SiteColour", "LineColour",
                             "LineWidth", "ColumnOffset", "RowOffset", "Sites", "MapFile", "SelectSite"})
        EXPECT_TRUE(names.contains(QLatin1String(name))) << name;
    EXPECT_FALSE(names.contains(QLatin1String("BackColor"))); // a panel's own colours pass it by
    EXPECT_FALSE(names.contains(QLatin1String("ForeColor")));
}
