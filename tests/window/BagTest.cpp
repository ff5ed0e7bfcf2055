#include "WindowFixture.h"

#include "surface/host/Surface.h"

using namespace zan;
using namespace zan::window;
using binding::PropertyBag;
using binding::Variant;
using values::Name;

namespace {
class Bag : public WindowTest
{
protected:
    static QStringList keys(const PropertyBag& bag)
    {
        QStringList list;
        for (const PropertyBag::Entry& entry : bag.entries())
            list << entry.name.text();
        return list;
    }
};
} // namespace

TEST_F(Bag, PanelOfDefaultsWritesOnlyWhatHasNoDefault)
{
    PropertyBag bag;
    panel->WriteProperties(bag);
    EXPECT_EQ(keys(bag), (QStringList{u"ShowSiteMap"_qs, u"LockMenu"_qs}));
}

TEST_F(Bag, ChangedPropertiesAreWrittenInTheBagsOrder)
{
    panel->setLockMenu(true);
    panel->setPictureFile(QStringLiteral("nowhere.bmp"));
    panel->setStretch(true);
    panel->setLockPositions(false);
    panel->setSnapToGrid(false);
    panel->setGridSize(90);
    panel->setBorderStyle(1);
    panel->setBackStyle(0);
    panel->setFont(values::make<surface::FontObject>());
    panel->setEnabled(false);
    panel->setForeColor({1});
    panel->setBackColor({2});
    panel->setShowSiteMap(false);
    PropertyBag bag;
    panel->WriteProperties(bag);
    EXPECT_EQ(keys(bag).join(u' '), u"BackColor ForeColor Enabled Font BackStyle BorderStyle GridSize SnapToGrid "
                                    u"LockPositions Stretch PictureFile ShowSiteMap LockMenu");
}

TEST_F(Bag, RoundTripRestoresEveryProperty)
{
    panel->setLockMenu(true);
    panel->setStretch(true);
    panel->setLockPositions(false);
    panel->setSnapToGrid(false);
    panel->setGridSize(90.5f);
    panel->setBorderStyle(1);
    panel->setEnabled(false);
    panel->setForeColor({1});
    panel->setShowSiteMap(false);
    panel->setPictureFile(QStringLiteral("nowhere.bmp"));
    PropertyBag bag;
    panel->WriteProperties(bag);
    BenchWindow other;
    other.ReadProperties(bag);
    EXPECT_TRUE(other.LockMenu());
    EXPECT_TRUE(other.Stretch());
    EXPECT_FALSE(other.LockPositions());
    EXPECT_FALSE(other.SnapToGrid());
    EXPECT_EQ(other.GridSize(), 90.5f);
    EXPECT_EQ(other.BorderStyle(), 1);
    EXPECT_FALSE(other.Enabled());
    EXPECT_EQ(other.ForeColor().code, 1);
    EXPECT_FALSE(other.ShowSiteMap());
    EXPECT_EQ(other.PictureFile(), u"nowhere.bmp");
}

TEST_F(Bag, FontThatIsKeptIsACopyAndSoIsTheOneThatIsGiven)
{
    const auto font = values::make<surface::FontObject>();
    font->setName(QStringLiteral("Arial"));
    panel->setFont(font);
    PropertyBag bag;
    panel->WriteProperties(bag);
    font->setName(QStringLiteral("Tahoma"));
    BenchWindow first;
    first.ReadProperties(bag);
    EXPECT_EQ(first.Font()->name(), u"Arial");
    first.Font()->setName(QStringLiteral("Verdana"));
    BenchWindow second;
    second.ReadProperties(bag);
    EXPECT_EQ(second.Font()->name(), u"Arial");
}

TEST_F(Bag, StyleThatIsNoneCountsAsTheDefault)
{
    PropertyBag bag;
    bag.WriteProperty(Name("BackStyle"), Variant(5));
    bag.WriteProperty(Name("BorderStyle"), Variant(-1));
    BenchWindow other;
    other.ReadProperties(bag);
    EXPECT_EQ(other.BackStyle(), 1);
    EXPECT_EQ(other.BorderStyle(), 0);
}

TEST_F(Bag, EmptyBagGivesTheDefaults)
{
    BenchWindow other;
    other.setGridSize(5);
    other.ReadProperties({});
    EXPECT_EQ(other.GridSize(), 200);
    EXPECT_TRUE(other.SnapToGrid());
    EXPECT_TRUE(other.LockPositions());
    EXPECT_TRUE(other.ShowSiteMap());
    EXPECT_FALSE(other.LockMenu());
    EXPECT_EQ(other.BackColor(), values::ButtonFace);
    EXPECT_EQ(other.BackStyle(), 1);
}

/// The file is read last: an absent one puts away a picture that came as an object.
TEST_F(Bag, APictureWithoutAFileIsPutAwayByTheAbsentFile)
{
    PropertyBag bag;
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    bag.WriteProperty(values::Name("Picture"), binding::Variant(values::make<surface::Picture>(image)));
    panel->ReadProperties(bag);
    EXPECT_FALSE(panel->surface().picture());
    EXPECT_EQ(panel->PictureFile(), QString());
}

TEST_F(Bag, ReadingRestylesTheTemplatesOfPlainControls)
{
    PropertyBag bag;
    bag.WriteProperty(Name("ForeColor"), Variant(1234));
    BenchWindow other;
    other.ReadProperties(bag);
    EXPECT_EQ(values::toLong(other.surface().array(u"Label")->item(1)->get(Name("ForeColor"))), 1234);
    EXPECT_NE(values::toLong(other.surface().array(u"Label")->item(1)->get(Name("ForeColor"))),
              values::toLong(panel->surface().array(u"Label")->item(1)->get(Name("ForeColor"))));
}
