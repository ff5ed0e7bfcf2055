// Design values: properties that lie in a field, that a copy of a design takes over and a bag keeps.
#include "binding/PropertyBag.h"

#include "Sample.h"

#include <gtest/gtest.h>

namespace zan::binding {

namespace {

class Lamp : public Object
{
public:
    std::int16_t m_level = 3;
    QString m_caption;
    std::int16_t m_place = 1; ///< each object's own
    double m_scale = 1;       ///< copied, but no bag keeps it

    const MemberTable& members() const override { return table(); }
    static const MemberTable& table()
    {
        static const MemberTable table("Lamp", nullptr,
                                       {
                                           field<&Lamp::m_level>("Level", 3, between(0, 10)),
                                           field<&Lamp::m_caption>("Caption"),
                                           field<&Lamp::m_place>("Place", 1).notDesign(),
                                           field<&Lamp::m_scale>("Scale", 1).notStored(),
                                       });
        return table;
    }
};

/// Declares one of the base's properties anew, behind one of its own.
class Beacon : public Lamp
{
public:
    std::int32_t m_period = 500;

    const MemberTable& members() const override
    {
        static const MemberTable table("Beacon", &Lamp::table(),
                                       {
                                           field<&Beacon::m_period>("Period", 500),
                                           field<&Lamp::m_level>("Level", 3, between(0, 10)),
                                       });
        return table;
    }
};

std::string storedNames(const Object& object)
{
    QString names;
    for (const Member* member : object.members().stored())
        names += member->name.text() + u' ';
    return names.toStdString();
}

const Member& levelOf(const Object& object)
{
    return *object.members().find(Name("Level"));
}

} // namespace

TEST(Design, StoredAreTheBasesFirstAndThenThoseThatTheClassDeclaresItself)
{
    EXPECT_EQ(storedNames(*make<Lamp>()), "Level Caption ");
    EXPECT_EQ(storedNames(*make<Beacon>()), "Caption Period Level ");
}

TEST(Design, ACopyTakesOverEveryDesignValueAndNothingThatIsTheObjectsOwn)
{
    const auto from = make<Lamp>();
    from->m_level = 7;
    from->m_caption = QStringLiteral("Pump");
    from->m_place = 2;
    from->m_scale = 0.5;
    const auto to = make<Lamp>();
    to->members().copyDesign(*to, *from);
    EXPECT_EQ(to->m_level, 7);
    EXPECT_EQ(to->m_caption, u"Pump");
    EXPECT_EQ(to->m_place, 1);
    EXPECT_EQ(to->m_scale, 0.5);
}

TEST(Design, AValueComesBackFromItsBag)
{
    const auto lamp = make<Lamp>();
    lamp->m_level = 7;
    PropertyBag bag;
    writeStored(*lamp, levelOf(*lamp), bag);
    lamp->m_level = 1;
    readStored(*lamp, levelOf(*lamp), &bag);
    EXPECT_EQ(lamp->m_level, 7);
}

TEST(Design, WhatABagDoesNotHoldIsTheDefaultAndSoIsEverythingWithoutABag)
{
    const PropertyBag empty;
    for (const PropertyBag* bag : {&empty, static_cast<const PropertyBag*>(nullptr)}) {
        const auto lamp = make<Lamp>();
        lamp->m_level = 7;
        readStored(*lamp, levelOf(*lamp), bag);
        EXPECT_EQ(lamp->m_level, 3);
    }
}

TEST(Design, ADefaultIsLeftOutOfTheBag)
{
    const auto lamp = make<Lamp>();
    PropertyBag bag;
    writeStored(*lamp, levelOf(*lamp), bag);
    EXPECT_TRUE(bag.entries().empty());
}

TEST(Design, AValueThatThePropertyDoesNotAcceptCountsAsItsDefault)
{
    for (const Variant& wrong : {Variant(11), Variant(-1), Variant(QStringLiteral("x")), Variant::null()}) {
        const auto lamp = make<Lamp>();
        lamp->m_level = 7;
        PropertyBag bag;
        bag.WriteProperty(Name("Level"), wrong);
        readStored(*lamp, levelOf(*lamp), &bag);
        EXPECT_EQ(lamp->m_level, 3);
    }
}

} // namespace zan::binding
