#include "Sample.h"

#include <gtest/gtest.h>

namespace zan::binding {

namespace {

Variant text(const char16_t* units)
{
    return Variant(QString::fromUtf16(units));
}

/// Tells its end.
class Mortal : public Sample
{
public:
    explicit Mortal(bool& isGone)
        : m_isGone(isGone)
    {}
    ~Mortal() override { m_isGone = true; }

private:
    bool& m_isGone;
};

} // namespace

TEST(Object, ReadsAndWritesPropertiesByName)
{
    const auto object = make<Sample>();
    object->put(Name("CAPTION"), text(u"abc"));
    EXPECT_EQ(object->get(Name("caption")).text(), u"abc");
    object->put(Name("Small"), text(u"12"));
    EXPECT_EQ(object->Small(), 12) << "values are converted to the property's type";
}

TEST(Object, RaisesTheErrorOfEveryAccessThatIsNotAllowed)
{
    const auto object = make<Sample>();
    const Variant one(1);
    EXPECT_EQ(errorOf([&] { object->get(Name("NoSuch")); }), 438);
    EXPECT_EQ(errorOf([&] { object->put(Name("NoSuch"), one); }), 438);
    EXPECT_EQ(errorOf([&] { object->put(Name("Key"), one); }), 383);
    EXPECT_EQ(errorOf([&] { object->get(Name("Secret")); }), 394);
    EXPECT_EQ(errorOf([&] { object->put(Name("Clear"), one); }), 438);
    EXPECT_EQ(errorOf([&] { object->get(Name("Item")); }), 450);
    EXPECT_EQ(errorOf([&] { object->put(Name("Item"), one); }), 450);
    EXPECT_EQ(errorOf([&] { object->invoke(Name("Caption"), Access::Put, {}); }), 450);
    EXPECT_EQ(errorOf([&] { object->get(Name("Clear"), {&one, 1}); }), 450);
    EXPECT_EQ(errorOf([&] { object->put(Name("Small"), text(u"abc")); }), 13);
    EXPECT_EQ(errorOf([&] { object->put(Name("Small"), Variant(99999)); }), 6);
    EXPECT_EQ(errorOf([&] { object->put(Name("Small"), Variant::null()); }), 94);
    EXPECT_EQ(errorOf([&] { object->put(Name("Level"), Variant(11)); }), 380) << "what the member raises itself";
}

TEST(Object, TakesIndicesBeforeTheValue)
{
    const auto object = make<Sample>();
    const Variant arguments[] = {Variant(1), text(u"uno")};
    object->invoke(Name("Item"), Access::Put, arguments);
    EXPECT_EQ(object->get(Name("Item"), {arguments, 1}).text(), u"uno");
    const Variant outside(5);
    EXPECT_EQ(errorOf([&] { object->get(Name("Item"), {&outside, 1}); }), 9);
}

TEST(Object, ArgumentsOfAMethodMayBeLeftOutWhereItSaysSo)
{
    const auto object = make<Sample>();
    const Variant arguments[] = {Variant(1), Variant(2), Variant(3)};
    const Variant omitted[] = {Variant(1), Variant::missing()};
    EXPECT_EQ(values::toLong(object->get(Name("Add"), {arguments, 2})), 3);
    EXPECT_EQ(values::toLong(object->get(Name("Add"), {arguments, 1})), 101);
    EXPECT_EQ(values::toLong(object->get(Name("Add"), omitted)), 101);
    EXPECT_EQ(errorOf([&] { object->get(Name("Add")); }), 450);
    EXPECT_EQ(errorOf([&] { object->get(Name("Add"), arguments); }), 450);
}

TEST(Object, ArgumentsOfAPropertyThatTakesNoneGoToTheDefaultMemberOfItsValue)
{
    const auto object = make<Sample>();
    const auto next = make<Sample>();
    next->setCaption(QStringLiteral("x"));
    object->setNext(next);
    const Variant one(1);
    EXPECT_EQ(errorOf([&] { object->get(Name("Caption"), {&one, 1}); }), 424) << "a text has no members";
    EXPECT_EQ(errorOf([&] {
                  object->get(Name("Next"), {&one, 1});
              }),
              424)
        << "the default of the next one is a text";
    object->setNext(nullptr);
    EXPECT_EQ(errorOf([&] { object->get(Name("Next"), {&one, 1}); }), 91);
}

TEST(Object, TheEmptyNameIsTheDefaultMember)
{
    const auto object = make<Sample>();
    object->put(Name(), text(u"d"));
    EXPECT_EQ(object->Caption(), u"d");
    EXPECT_EQ(object->get(Name()).text(), u"d");
}

TEST(Object, AMemberMayLetTheLastReferenceGo)
{
    bool isGone = false;
    auto owner = make<Mortal>(isGone);
    Object& object = *owner;
    owner->m_owner = owner;
    owner = nullptr;
    EXPECT_FALSE(isGone);
    object.get(Name("Drop"));
    EXPECT_TRUE(isGone) << "after the call, not in it";
}

TEST(Object, TheReportingWayTellsWhatTheRaisingOneRaises)
{
    const auto object = make<Sample>();
    Variant value = text(u"untouched");
    EXPECT_EQ(object->tryGet(Name("NoSuch"), value), AccessStatus::UnknownName);
    EXPECT_EQ(object->tryGet(Name("Secret"), value), AccessStatus::WriteOnly);
    EXPECT_EQ(object->tryGet(Name("Item"), value), AccessStatus::Refused);
    EXPECT_EQ(value.text(), u"untouched");
    EXPECT_EQ(object->tryGet(Name("Key"), value), AccessStatus::Ok);
    EXPECT_EQ(value.text(), u"key");
    EXPECT_EQ(object->tryPut(Name("NoSuch"), value), AccessStatus::UnknownName);
    EXPECT_EQ(object->tryPut(Name("Key"), value), AccessStatus::ReadOnly);
    EXPECT_EQ(object->tryPut(Name("Clear"), value), AccessStatus::ReadOnly);
    EXPECT_EQ(object->tryPut(Name("Item"), value), AccessStatus::Refused);
    EXPECT_EQ(object->tryPut(Name("Level"), Variant(11)), AccessStatus::Refused);
    EXPECT_EQ(object->tryPut(Name("Level"), text(u"abc")), AccessStatus::Refused);
    EXPECT_EQ(object->tryPut(Name("Level"), Variant(10)), AccessStatus::Ok);
    EXPECT_EQ(object->Level(), 10);
}

TEST(Object, AnObjectBehindAValueHasToBeThere)
{
    EXPECT_EQ(errorOf([] { objectOf(Variant(1)); }), 424);
    EXPECT_EQ(errorOf([] { objectOf(Variant()); }), 424);
    EXPECT_EQ(errorOf([] { objectOf(Variant::nothing()); }), 91);
    const auto object = make<Sample>();
    EXPECT_EQ(&objectOf(Variant(object)), object.get());
}

TEST(Object, AnObjectThatIsNoCollectionHasNoItems)
{
    EXPECT_EQ(make<Sample>()->enumerate(), nullptr);
}

struct TextRow
{
    const char* property;
    const char16_t* written;
    AccessStatus status;
    const char16_t* read; ///< as text, what the property is afterwards
};

TEST(Object, TextOfADocumentIsReadByTheFormOfTheProperty)
{
    constexpr AccessStatus Ok = AccessStatus::Ok;
    constexpr AccessStatus Refused = AccessStatus::Refused;
    const TextRow rows[] = {
        // Boolean: a leading number other than zero.
        {"Flag", u"-1", Ok, u"True"},
        {"Flag", u"0", Ok, u"False"},
        {"Flag", u"0.4", Ok, u"True"},
        {"Flag", u"", Ok, u"False"},
        {"Flag", u"True", Ok, u"False"},
        {"Flag", u"2 apples", Ok, u"True"},
        // Whole numbers: the leading number, rounded half to even; outside the range refused.
        {"Octet", u"255", Ok, u"255"},
        {"Octet", u"256", Refused, u"0"},
        {"Octet", u"-1", Refused, u"0"},
        {"Small", u"2.5", Ok, u"2"},
        {"Small", u"3.5", Ok, u"4"},
        {"Small", u"abc", Ok, u"0"},
        {"Small", u"12abc", Ok, u"12"},
        {"Small", u" 1 2", Ok, u"12"},
        {"Small", u"32767", Ok, u"32767"},
        {"Small", u"32768", Refused, u"0"},
        {"Small", u"-32768", Ok, u"-32768"},
        {"Small", u"-32769", Refused, u"0"},
        {"Large", u"-2147483648", Ok, u"-2147483648"},
        {"Large", u"2147483648", Refused, u"0"},
        {"Large", u"1E999", Refused, u"0"},
        {"Way", u"2", Ok, u"2"},
        // Colours: signed decimal, a system colour being negative.
        {"BackColour", u"-2147483633", Ok, u"-2147483633"},
        {"BackColour", u"255", Ok, u"255"},
        {"BackColour", u"4294967295", Refused, u"0"},
        // Reals.
        {"Left", u"1.5", Ok, u"1.5"},
        {"Left", u"1,5", Ok, u"1"},
        {"Left", u"1E300", Refused, u"0"},
        {"Max", u"-1.25e2 x", Ok, u"-125"},
        {"Max", u"", Ok, u"0"},
        {"Max", u"-999999999999999", Ok, u"-999999999999999"},
        {"Large", u"-", Ok, u"0"},
        {"Large", u"-007", Ok, u"-7"},
        {"Max", u"1E999", Refused, u"0"},
        {"Size", u"8.25", Ok, u"8.25"},
        {"Size", u"1E30", Refused, u"0"},
        // Text: verbatim.
        {"Caption", u" a\tb ", Ok, u" a\tb "},
        {"Caption", u"", Ok, u""},
        {"Value", u"007", Ok, u"007"},
        // The property decides about its range, and what cannot be assigned says so.
        {"Level", u"11", Refused, u"0"},
        {"Level", u"10", Ok, u"10"},
        {"Key", u"x", AccessStatus::ReadOnly, u"key"},
        {"Clear", u"x", AccessStatus::ReadOnly, nullptr},
        {"Next", u"x", Refused, nullptr},
        {"Item", u"x", Refused, nullptr},
        {"NoSuch", u"x", AccessStatus::UnknownName, nullptr},
    };
    for (const TextRow& row : rows) {
        const auto object = make<Sample>();
        const QString written = QString::fromUtf16(row.written);
        EXPECT_EQ(object->tryPutText(Name(row.property), written), row.status)
            << row.property << " = " << written.toStdString();
        if (row.read) {
            EXPECT_EQ(values::toText(object->get(Name(row.property))), QString::fromUtf16(row.read))
                << row.property << " = " << written.toStdString();
        }
    }
}

TEST(Object, TextForAPropertyThatCanOnlyBeWrittenArrives)
{
    const auto object = make<Sample>();
    EXPECT_EQ(object->tryPutText(Name("SECRET"), QStringLiteral("s")), AccessStatus::Ok);
    EXPECT_EQ(object->m_secret, u"s");
}

} // namespace zan::binding
