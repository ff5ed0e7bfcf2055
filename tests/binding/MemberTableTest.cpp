#include "Sample.h"

#include <gtest/gtest.h>

#include <string>

namespace zan::binding {

namespace {

/// Takes the place of two members of Sample and adds one.
class Derived : public Sample
{
public:
    std::int32_t Caption() const { return 7; }
    QString Title() const { return QStringLiteral("title"); }
    const MemberTable& members() const override
    {
        static const MemberTable table(
            "Derived", &Sample::members(),
            {readOnly<&Derived::Caption>("CAPTION"), readOnly<&Derived::Title>("Title").asDefault()});
        return table;
    }
};

} // namespace

TEST(MemberTable, FindsMembersWithoutRegardToCase)
{
    const auto object = make<Sample>();
    const MemberTable& table = object->members();
    for (const char* spelling : {"BackColour", "BACKCOLOUR", "backcolour", "bACKcOLOUR"}) {
        const Member* member = table.find(Name(spelling));
        ASSERT_NE(member, nullptr) << spelling;
        EXPECT_EQ(member->name.text(), u"BackColour");
    }
    EXPECT_EQ(table.find(Name("BackColor")), nullptr);
    EXPECT_EQ(table.find(Name()), nullptr);
}

TEST(MemberTable, ListsMembersInTheOrderOfDeclaration)
{
    const auto object = make<Sample>();
    const std::vector<Member>& all = object->members().members();
    EXPECT_EQ(all.front().name.text(), u"Flag");
    EXPECT_EQ(all.back().name.text(), u"Drop");
}

TEST(MemberTable, AMemberTakesThePlaceOfOneOfTheBase)
{
    const auto object = make<Derived>();
    const MemberTable& table = object->members();
    const auto base = make<Sample>();
    EXPECT_EQ(table.members().size(), base->members().members().size() + 1);
    EXPECT_EQ(table.members()[8].name.text(), u"CAPTION") << "it stands where the other stood";
    EXPECT_EQ(table.find(Name("Caption"))->type, ValueType::Long);
    EXPECT_EQ(values::toLong(object->get(Name("Caption"))), 7);
    EXPECT_EQ(values::toText(object->get(Name("Key"))), u"key") << "the others stay";
}

TEST(MemberTable, AnAbsentMemberOfTheBaseIsNoMember)
{
    const auto base = make<Sample>();
    const MemberTable table("Less", &base->members(), {absent("caption"), absent("NoSuch")});
    EXPECT_EQ(table.find(Name("Caption")), nullptr);
    EXPECT_EQ(table.find(Name("NoSuch")), nullptr);
    EXPECT_EQ(table.members().size(), base->members().members().size() - 1);
    EXPECT_EQ(table.base(), &base->members());
}

TEST(MemberTable, TheDefaultMemberOfTheDerivedClassCounts)
{
    EXPECT_EQ(values::toText(make<Derived>()->defaultValue()), u"title");
    const auto base = make<Sample>();
    base->setCaption(QStringLiteral("c"));
    EXPECT_EQ(values::toText(base->defaultValue()), u"c");
}

TEST(MemberTable, AnObjectIsCalledByTheNameOfItsTable)
{
    EXPECT_EQ(make<Sample>()->typeName(), u"Sample");
    EXPECT_EQ(make<Derived>()->typeName(), u"Derived");
}

TEST(MemberTable, PublishesTypeKindAndArguments)
{
    const auto object = make<Sample>();
    struct Row
    {
        const char* name;
        Member::Kind kind;
        ValueType type;
        int required;
        int allowed;
        bool readable;
        bool writable;
    };
    using Kind = Member::Kind;
    const Row rows[] = {
        {"Flag", Kind::Property, ValueType::Boolean, 0, 0, true, true},
        {"Octet", Kind::Property, ValueType::Byte, 0, 0, true, true},
        {"Small", Kind::Property, ValueType::Integer, 0, 0, true, true},
        {"Large", Kind::Property, ValueType::Long, 0, 0, true, true},
        {"Left", Kind::Property, ValueType::Single, 0, 0, true, true},
        {"Max", Kind::Property, ValueType::Double, 0, 0, true, true},
        {"Size", Kind::Property, ValueType::Currency, 0, 0, true, true},
        {"When", Kind::Property, ValueType::Date, 0, 0, true, true},
        {"Caption", Kind::Property, ValueType::String, 0, 0, true, true},
        {"BackColour", Kind::Property, ValueType::Colour, 0, 0, true, true},
        {"Value", Kind::Property, ValueType::Variant, 0, 0, true, true},
        {"Way", Kind::Property, ValueType::Long, 0, 0, true, true},
        {"Next", Kind::Property, ValueType::Object, 0, 0, true, true},
        {"Key", Kind::Property, ValueType::String, 0, 0, true, false},
        {"Secret", Kind::Property, ValueType::String, 0, 0, false, true},
        {"Item", Kind::Property, ValueType::String, 1, 1, true, true},
        {"Add", Kind::Method, ValueType::Long, 1, 2, true, false},
        {"Clear", Kind::Method, ValueType::None, 0, 0, true, false},
    };
    for (const Row& row : rows) {
        const Member* member = object->members().find(Name(row.name));
        ASSERT_NE(member, nullptr) << row.name;
        EXPECT_EQ(member->kind, row.kind) << row.name;
        EXPECT_EQ(member->type, row.type) << row.name;
        EXPECT_EQ(member->requiredArguments, row.required) << row.name;
        EXPECT_EQ(member->allowedArguments, row.allowed) << row.name;
        EXPECT_EQ(member->get != nullptr, row.readable) << row.name;
        EXPECT_EQ(member->put != nullptr, row.writable) << row.name;
    }
}

TEST(MemberTable, ATableOfManyMembersFindsEachOfThem)
{
    std::vector<std::string> names;
    for (int i = 0; i < 200; ++i)
        names.push_back("Member" + std::to_string(i));
    const Member pattern = readOnly<&Sample::Key>("Pattern");
    const MemberTable* table = nullptr;
    std::vector<std::unique_ptr<MemberTable>> chain;
    for (const std::string& name : names) {
        Member member = pattern;
        member.name = Name(name.c_str());
        chain.push_back(std::make_unique<MemberTable>("Chain", table, std::initializer_list<Member>{member}));
        table = chain.back().get();
    }
    for (const std::string& name : names)
        EXPECT_NE(table->find(Name(name.c_str())), nullptr) << name;
    EXPECT_EQ(table->find(Name("Member200")), nullptr);
}

} // namespace zan::binding
