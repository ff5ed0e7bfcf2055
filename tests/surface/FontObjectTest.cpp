#include "surface/text/FontObject.h"

#include "binding/MemberTable.h"
#include "support/ErrorOf.h"
#include "surface/text/FontFace.h"

#include <QFontInfo>

#include <gtest/gtest.h>

#include <algorithm>

namespace zan::surface::tests {

using test::errorOf;

namespace {

using binding::AccessStatus;
using values::ErrorNumber;
using values::Name;
using values::RuntimeError;

struct CountingListener final : FontListener
{
    int changes = 0;
    void fontChanged(FontObject&) override { ++changes; }
};

Ref<FontObject> font()
{
    return values::make<FontObject>();
}

} // namespace

TEST(FontObject, StartsAsTheClassicFont)
{
    const auto plain = font();
    EXPECT_EQ(plain->name(), u"MS Sans Serif");
    EXPECT_EQ(plain->size(), values::Currency{82500});
    EXPECT_EQ(plain->weight(), 400);
    EXPECT_EQ(plain->charset(), 0);
    EXPECT_FALSE(plain->bold());
}

TEST(FontObject, BoldAndWeightAreTwoViewsOfOneValue)
{
    const auto some = font();
    some->setBold(true);
    EXPECT_EQ(some->weight(), 700);
    some->setBold(false);
    EXPECT_EQ(some->weight(), 400);
    some->setWeight(551);
    EXPECT_TRUE(some->bold());
    some->setWeight(550);
    EXPECT_FALSE(some->bold());
    some->setWeight(600);
    some->setBold(true);
    EXPECT_EQ(some->weight(), 700);
}

TEST(FontObject, SizeIsKeptWithFourDecimals)
{
    const auto some = font();
    ASSERT_EQ(some->tryPutText(Name("SIZE"), QStringLiteral("9.75")), AccessStatus::Ok);
    EXPECT_EQ(some->size(), values::Currency{97500});
    some->put(Name("Size"), Variant(8.12345));
    EXPECT_EQ(some->size().scaled, 81234); // half to even at the fifth decimal
    some->put(Name("Size"), some->get(Name("Size")));
    EXPECT_EQ(some->size().scaled, 81234);
}

TEST(FontObject, ValuesOutOfRangeAreRefusedAndChangeNothing)
{
    const auto some = font();
    EXPECT_EQ(errorOf([&] { some->setSize({0}); }), 380);
    EXPECT_EQ(errorOf([&] { some->setSize({-82500}); }), 380);
    EXPECT_EQ(errorOf([&] { some->setSize({21600001}); }), 380);
    EXPECT_EQ(errorOf([&] { some->setName({}); }), 380);
    EXPECT_EQ(errorOf([&] { some->setWeight(-1); }), 380);
    EXPECT_EQ(errorOf([&] { some->setWeight(1001); }), 380);
    EXPECT_EQ(errorOf([&] { some->setCharset(256); }), 380);
    EXPECT_TRUE(fontsEqual(*some, *font()));
}

TEST(FontObject, EveryListenerHearsOfAChangeAndNoneOfASameValue)
{
    const auto some = font();
    CountingListener first;
    CountingListener second;
    some->addListener(first);
    some->addListener(second);
    some->setItalic(true);
    some->setItalic(true);
    some->setSize(some->size());
    EXPECT_EQ(first.changes, 1);
    EXPECT_EQ(second.changes, 1);
    some->removeListener(first);
    some->setUnderline(true);
    EXPECT_EQ(first.changes, 1);
    EXPECT_EQ(second.changes, 2);
    some->removeListener(second);
}

TEST(FontObject, ACopyIsEqualAndChangesAlone)
{
    const auto original = font();
    original->setName(QStringLiteral("Terminal"));
    original->setCharset(0);
    original->setWeight(600);
    original->setStrikethrough(true);
    const auto copy = copyFont(*original);
    EXPECT_TRUE(fontsEqual(*original, *copy));
    EXPECT_EQ(copy->charset(), 0) << "a character set given apart from the name stays";
    EXPECT_EQ(copy->weight(), 600);
    copy->setItalic(true);
    EXPECT_FALSE(original->italic());
}

TEST(FontObject, EqualityAndCopiesLookAtEachOfTheEightValues)
{
    const std::pair<const char*, Variant> rows[]{
        {"Name", Variant(u"ms sans serif")},
        {"Bold", Variant(true)},
        {"Charset", Variant(std::int16_t(2))},
        {"Italic", Variant(true)},
        {"Size", Variant(8.2501)},
        {"Strikethrough", Variant(true)},
        {"Underline", Variant(true)},
        {"Weight", Variant(std::int16_t(401))},
    };
    for (const auto& [name, value] : rows) {
        const auto other = font();
        other->put(Name(name), value);
        EXPECT_FALSE(fontsEqual(*font(), *other)) << name;
        EXPECT_TRUE(fontsEqual(*copyFont(*other), *other)) << name;
    }
    EXPECT_TRUE(fontsEqual(*font(), *font()));
    for (const binding::Member* kept : font()->members().stored()) {
        EXPECT_TRUE(std::any_of(std::begin(rows), std::end(rows),
                                [kept](const auto& row) { return kept->name == Name(row.first); }))
            << "a value of fonts that nobody compares: " << kept->name.text().toStdString();
    }
    EXPECT_EQ(font()->members().stored().size(), std::size(rows) - 1) << "all but Bold, which Weight says too";
}

TEST(FontObject, AFontWithOneCharacterSetBringsIt)
{
    const auto some = font();
    some->setName(QStringLiteral("Terminal"));
    EXPECT_EQ(some->charset(), 255);
    some->setCharset(255);
    some->setName(QStringLiteral("Courier New"));
    EXPECT_EQ(some->charset(), 255) << "an ordinary name leaves the character set alone";
    some->setName(QStringLiteral("0"));
    EXPECT_EQ(some->charset(), 0) << "a name that names no font has character set 0";
    some->setName(QStringLiteral("Courier New"));
    EXPECT_EQ(some->charset(), 0);
}

TEST(FontObject, ClassicNamesStandForInstalledFamilies)
{
    for (const char* name : {"MS Sans Serif", "Terminal", "Fixedsys", "System", "Courier", "Arial",
                             "Times New Roman", "ms sans serif", "No Such Font At All"}) {
        const auto some = font();
        some->setName(QString::fromLatin1(name));
        EXPECT_TRUE(QFontInfo(some->qfont()).exactMatch()) << name;
    }
    const auto fixed = font();
    fixed->setName(QStringLiteral("Terminal"));
    EXPECT_EQ(fixed->face().glyph('i').advance, fixed->face().glyph('W').advance);
}

TEST(FontObject, SizesInPointsBecomeWholePixelsAtNinetySixToTheInch)
{
    const std::pair<double, int> rows[]{{8.25, 11}, {8, 11}, {9, 12}, {10, 13}, {12, 16}, {1, 1}};
    for (const auto& [points, pixels] : rows) {
        const auto some = font();
        some->put(Name("Size"), Variant(points));
        EXPECT_EQ(some->qfont().pixelSize(), pixels) << points;
    }
}

TEST(FontObject, EqualFontsShareOneFace)
{
    const auto first = font();
    const auto second = font();
    EXPECT_EQ(&first->face(), &second->face());
    second->setBold(true);
    EXPECT_NE(&first->face(), &second->face());
}

} // namespace zan::surface::tests
