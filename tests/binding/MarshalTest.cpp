#include "Sample.h"

#include <gtest/gtest.h>

namespace zan::binding {

namespace {

using values::Kind;

/// Another class than Sample.
class Other : public Object
{
public:
    const MemberTable& members() const override
    {
        static const MemberTable table("Other", nullptr, {});
        return table;
    }
};

} // namespace

TEST(Marshal, EachTypeTravelsAsItsOwnKind)
{
    EXPECT_EQ(Marshal<bool>::to(true).kind(), Kind::Boolean);
    EXPECT_EQ(Marshal<std::uint8_t>::to(1).kind(), Kind::Byte);
    EXPECT_EQ(Marshal<std::int16_t>::to(1).kind(), Kind::Integer);
    EXPECT_EQ(Marshal<std::int32_t>::to(1).kind(), Kind::Long);
    EXPECT_EQ(Marshal<float>::to(1).kind(), Kind::Single);
    EXPECT_EQ(Marshal<double>::to(1).kind(), Kind::Double);
    EXPECT_EQ(Marshal<values::Currency>::to({}).kind(), Kind::Currency);
    EXPECT_EQ(Marshal<values::Date>::to({}).kind(), Kind::Date);
    EXPECT_EQ(Marshal<QString>::to({}).kind(), Kind::String);
    EXPECT_EQ(Marshal<values::Colour>::to({5}).kind(), Kind::Long);
    EXPECT_EQ(Marshal<Direction>::to(Direction::Down).longInteger(), 2);
    EXPECT_EQ(Marshal<Ref<Sample>>::to({}).kind(), Kind::Object);
    EXPECT_EQ(Marshal<std::optional<std::int32_t>>::to(std::nullopt).kind(), Kind::Empty);
    EXPECT_EQ(Marshal<std::optional<std::int32_t>>::to(3).longInteger(), 3);
}

TEST(Marshal, PlainValuesAreConvertedWithTheClassicRules)
{
    EXPECT_TRUE(Marshal<bool>::from(Variant(QStringLiteral("-1"))));
    EXPECT_EQ(Marshal<std::int32_t>::from(Variant(2.5)), 2);
    EXPECT_EQ(Marshal<std::int32_t>::from(Variant(true)), -1);
    EXPECT_EQ(Marshal<std::int32_t>::from(Variant()), 0);
    EXPECT_EQ(Marshal<QString>::from(Variant(1.5)), u"1.5");
    EXPECT_EQ(Marshal<values::Colour>::from(Variant(-5)).code, -5);
    EXPECT_EQ(Marshal<Direction>::from(Variant(1)), Direction::Up);
    EXPECT_EQ(errorOf([] { Marshal<std::uint8_t>::from(Variant(256)); }), 6);
    EXPECT_EQ(errorOf([] { Marshal<std::int32_t>::from(Variant::null()); }), 94);
    EXPECT_EQ(errorOf([] { Marshal<double>::from(Variant(QStringLiteral("x"))); }), 13);
}

TEST(Marshal, AVariantPassesAsItIs)
{
    EXPECT_TRUE(Marshal<Variant>::from(Variant::null()).isNull());
    EXPECT_TRUE(Marshal<Variant>::from(Variant::missing()).isMissing());
}

TEST(Marshal, AnObjectHasToBeOneOfTheClass)
{
    const auto sample = make<Sample>();
    EXPECT_EQ(Marshal<Ref<Sample>>::from(Variant(sample)), sample);
    EXPECT_EQ(Marshal<Ref<Object>>::from(Variant(sample)).get(), sample.get()) << "or of one derived from it";
    EXPECT_FALSE(Marshal<Ref<Sample>>::from(Variant::nothing()));
    EXPECT_EQ(errorOf([&] { Marshal<Ref<Other>>::from(Variant(sample)); }), 13);
    EXPECT_EQ(errorOf([] { Marshal<Ref<Sample>>::from(Variant(1)); }), 424);
    EXPECT_EQ(errorOf([] { Marshal<Ref<Sample>>::from(Variant()); }), 424);
}

TEST(Marshal, AnObjectGivesItsDefaultValueWhereAPlainOneIsNeeded)
{
    const auto sample = make<Sample>();
    sample->setCaption(QStringLiteral("12"));
    EXPECT_EQ(Marshal<std::int32_t>::from(Variant(sample)), 12);
    EXPECT_EQ(errorOf([] { Marshal<std::int32_t>::from(Variant(make<Other>())); }), 438);
    EXPECT_EQ(errorOf([] { Marshal<std::int32_t>::from(Variant::nothing()); }), 91);
}

TEST(Marshal, AnArgumentLeftOutIsNothingWhereItMayBe)
{
    EXPECT_FALSE(Marshal<std::optional<QString>>::from(Variant::missing()));
    EXPECT_EQ(Marshal<std::optional<QString>>::from(Variant()), QString());
}

} // namespace zan::binding
