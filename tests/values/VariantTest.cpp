#include "values/Variant.h"
#include "values/Array.h"
#include "values/Name.h"
#include "values/RuntimeError.h"

#include <gtest/gtest.h>

namespace zan::values {

namespace {

class Counted : public AutomationObject
{
public:
    explicit Counted(int& alive)
        : m_alive(alive)
    {
        ++m_alive;
    }
    ~Counted() override { --m_alive; }
    QString typeName() const override { return QStringLiteral("Counted"); }

private:
    int& m_alive;
};

} // namespace

TEST(Variant, IsEmptyAtFirstAndKnowsItsKind)
{
    EXPECT_TRUE(Variant().isEmpty());
    EXPECT_EQ(Variant(true).kind(), Kind::Boolean);
    EXPECT_EQ(Variant(std::int16_t(1)).kind(), Kind::Integer);
    EXPECT_EQ(Variant(1).kind(), Kind::Long);
    EXPECT_EQ(Variant(1.0f).kind(), Kind::Single);
    EXPECT_EQ(Variant(1.0).kind(), Kind::Double);
    EXPECT_EQ(Variant(u"a").kind(), Kind::String);
    EXPECT_EQ(Variant(Date{1}).kind(), Kind::Date);
    EXPECT_EQ(Variant(Currency{1}).kind(), Kind::Currency);
    EXPECT_EQ(Variant::nothing().kind(), Kind::Object);
    EXPECT_EQ(Variant::nothing().object(), nullptr);
    EXPECT_TRUE(Variant::missing().isMissing());
    EXPECT_TRUE(Variant::null().isNull());
}

TEST(Variant, DatesAndTextsAreNoNumbers)
{
    EXPECT_TRUE(Variant(true).isNumber());
    EXPECT_TRUE(Variant(Currency{1}).isNumber());
    EXPECT_FALSE(Variant(Date{1}).isNumber());
    EXPECT_FALSE(Variant(u"1").isNumber());
    EXPECT_FALSE(Variant().isNumber());
}

TEST(Variant, SharesTextAndAppendsInPlaceOnlyWhenItIsTheOnlyOwner)
{
    Variant first(u"abc");
    ASSERT_NE(first.uniqueText(), nullptr);
    const Variant second = first;
    EXPECT_EQ(first.uniqueText(), nullptr);
    EXPECT_EQ(&first.text(), &second.text());
}

TEST(Variant, ReleasesItsObjectWithTheLastCopy)
{
    int alive = 0;
    {
        Variant first = make<Counted>(alive);
        Variant second = first;
        first = Variant();
        EXPECT_EQ(alive, 1);
        Variant& same = second;
        second = same;
        EXPECT_EQ(alive, 1);
        second = std::move(same);
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(Variant, CopiesAnArrayOnTheFirstWriteOnly)
{
    Variant first(Array::fromValues({1, 2}));
    const Variant second = first;
    EXPECT_EQ(&first.array(), &second.array());
    first.arrayForWriting().elements()[0] = 9;
    EXPECT_NE(&first.array(), &second.array());
    EXPECT_EQ(second.array().elements()[0].longInteger(), 1);
}

TEST(Array, FirstIndexRunsFastest)
{
    const Array array({{0, 1}, {1, 3}});
    EXPECT_EQ(array.elements().size(), 6u);
    const std::int32_t second[]{1, 1};
    const std::int32_t third[]{0, 2};
    EXPECT_EQ(array.offset(second), 1u);
    EXPECT_EQ(array.offset(third), 2u);
}

TEST(Array, AnIndexOutsideOrAWrongRankIsOutOfRange)
{
    const Array array({{0, 1}});
    const auto error = [](const auto& call) {
        try {
            call();
            return 0;
        } catch (const RuntimeError& raised) {
            return raised.number();
        }
    };
    const std::int32_t outside[]{2};
    const std::int32_t below[]{-1};
    const std::int32_t two[]{0, 0};
    EXPECT_EQ(error([&] { static_cast<void>(array.offset(outside)); }), 9);
    EXPECT_EQ(error([&] { static_cast<void>(array.offset(below)); }), 9);
    EXPECT_EQ(error([&] { static_cast<void>(array.offset(two)); }), 9);
    EXPECT_EQ(error([&] { static_cast<void>(Array().offset(outside)); }), 9);
    EXPECT_EQ(error([] { Array made({{0, -3}}); }), 9);
    EXPECT_EQ(error([] { Array made({{0, 2147483646}}); }), 7);
    EXPECT_EQ(error([] { Array made({{0, 99999}, {0, 99999}}); }), 7);
}

TEST(Array, ResizingTheLastDimensionKeepsWhatStays)
{
    Array array({{0, 1}, {0, 1}});
    for (int place = 0; place < 4; ++place)
        array.elements()[std::size_t(place)] = place;
    array.resizeLast(2);
    const std::int32_t kept[]{1, 1};
    const std::int32_t added[]{0, 2};
    EXPECT_EQ(array.elements()[array.offset(kept)].longInteger(), 3);
    EXPECT_TRUE(array.elements()[array.offset(added)].isEmpty());
    array.resizeLast(0);
    EXPECT_EQ(array.elements().size(), 2u);
    array.resizeLast(-1);
    EXPECT_TRUE(array.elements().empty());
    EXPECT_THROW(array.resizeLast(-2), RuntimeError);
    EXPECT_THROW(array.resizeLast(2147483646), RuntimeError);
    EXPECT_THROW(Array().resizeLast(1), RuntimeError);
    EXPECT_TRUE(array.elements().empty());
}

TEST(Array, AnUpperBoundOneBelowTheLowerIsNoElement)
{
    const Array array({{0, -1}});
    EXPECT_EQ(array.rank(), 1u);
    EXPECT_EQ(array.bound(0).count(), 0);
    EXPECT_TRUE(array.elements().empty());
}

TEST(Name, EqualTextsAreOneNameAndFoldingIgnoresCase)
{
    EXPECT_EQ(Name(u"Caption"), Name("Caption"));
    EXPECT_FALSE(Name(u"Caption") == Name(u"CAPTION"));
    EXPECT_TRUE(Name(u"Caption").equalsIgnoringCase(Name(u"CAPTION")));
    EXPECT_TRUE(Name().isEmpty());
    EXPECT_EQ(Name(u"Caption").text(), QStringLiteral("Caption"));
    EXPECT_EQ(Name(u"CAPTION").folded().text(), QStringLiteral("caption"));
}

TEST(RuntimeError, EveryNumberHasItsText)
{
    EXPECT_EQ(errorText(5), QStringLiteral("Invalid procedure call or argument"));
    EXPECT_EQ(errorText(ErrorNumber::TypeMismatch), QStringLiteral("Type mismatch"));
    EXPECT_EQ(errorText(94), QStringLiteral("Invalid use of Null"));
    EXPECT_EQ(errorText(32811), QStringLiteral("Element not found"));
    EXPECT_EQ(errorText(12345), QStringLiteral("Unknown runtime error"));
    EXPECT_EQ(errorText(-1), QStringLiteral("Unknown runtime error"));
    for (const ErrorNumber number : {ErrorNumber::InvalidCall,
                                     ErrorNumber::Overflow,
                                     ErrorNumber::OutOfMemory,
                                     ErrorNumber::SubscriptOutOfRange,
                                     ErrorNumber::ArrayLocked,
                                     ErrorNumber::DivisionByZero,
                                     ErrorNumber::TypeMismatch,
                                     ErrorNumber::OutOfStringSpace,
                                     ErrorNumber::OutOfStack,
                                     ErrorNumber::FileNotFound,
                                     ErrorNumber::PathFileAccess,
                                     ErrorNumber::PathNotFound,
                                     ErrorNumber::ObjectNotSet,
                                     ErrorNumber::ForLoopNotInitialized,
                                     ErrorNumber::InvalidNull,
                                     ErrorNumber::InvalidPropertyValue,
                                     ErrorNumber::InvalidArrayIndex,
                                     ErrorNumber::ReadOnlyProperty,
                                     ErrorNumber::WriteOnlyProperty,
                                     ErrorNumber::ObjectRequired,
                                     ErrorNumber::CannotCreateObject,
                                     ErrorNumber::NoSuchMember,
                                     ErrorNumber::NamedArgumentNotFound,
                                     ErrorNumber::WrongArgumentCount,
                                     ErrorNumber::NotACollection,
                                     ErrorNumber::DuplicateKey,
                                     ErrorNumber::InvalidPicture})
        EXPECT_NE(errorText(number), errorText(12345)) << int(number);
}

TEST(RuntimeError, CarriesNumberTextAndSource)
{
    const RuntimeError error(1000, QStringLiteral("no water"), QStringLiteral("Pump"));
    EXPECT_EQ(error.number(), 1000);
    EXPECT_EQ(error.description(), QStringLiteral("no water"));
    EXPECT_EQ(error.source(), QStringLiteral("Pump"));
    EXPECT_STREQ(error.what(), "no water");
    EXPECT_TRUE(RuntimeError(ErrorNumber::Overflow).is(ErrorNumber::Overflow));
}

} // namespace zan::values
