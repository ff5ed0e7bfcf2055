#include "binding/MemberTable.h"
#include "support/ErrorOf.h"
#include "support/FakeHistory.h"
#include "support/FakeSite.h"

#include <gtest/gtest.h>

namespace zan::site {

using test::errorOf;

using binding::Member;
using binding::Object;
using fake::FakeLogger;
using values::ErrorNumber;
using values::make;
using values::Name;

namespace {

Variant text(const char16_t* characters)
{
    return Variant(QString::fromUtf16(characters));
}

/// A site with windows SCHEME (one channel) and RTD (three).
Ref<FakeLogger> makeSite()
{
    auto logger = make<FakeLogger>();
    logger->setValue(QStringLiteral("SCHEME"), QStringLiteral("Rain"), Variant(1.5));
    for (const char16_t* key : {u"Stage", u"Flow", u"Battery"})
        logger->setValue(QStringLiteral("RTD"), QString::fromUtf16(key), text(key));
    return logger;
}

struct ContractRow
{
    const char* className;
    Ref<Object> object;
    const char* defaultMember; ///< empty for none
    std::vector<const char*> members;
};

std::vector<ContractRow> contracts()
{
    const auto logger = makeSite();
    const auto buffers = logger->live->buffers;
    return {
        {"Logger",
         logger,
         "",
         {"Link", "Scheme", "Live", "Actions", "AddAction", "RemoveActions", "CreateChannel"}},
        {"Link", logger->link, "State", {"State", "Connect", "Disconnect"}},
        {"Live", logger->live, "", {"Buffers", "History", "ReadMemory", "WriteChannel"}},
        {"History", make<fake::FakeHistory>(), "", {"State"}},
        {"LogBuffers", buffers, "Item", {"Count", "Item"}},
        {"LogBuffer", buffers->buffers[0], "", {"RecordCount", "Records"}},
        {"LogRecords",
         buffers->buffers[0]->records,
         "Cell",
         {"RowCount", "ColumnCount", "ColumnLabel", "ColumnUnits", "Cell"}},
        {"Scheme", logger->scheme, "Name", {"Name", "Windows", "Save"}},
        {"SchemeWindows",
         logger->scheme->windows,
         "Item",
         {"Count", "Item", "Add", "Remove", "CreateWindow", "CreateChannel"}},
        {"SchemeWindow", logger->scheme->windows->windows[0], "Item", {"Key", "XML", "Count", "Item", "Add"}},
        {"Channel",
         logger->channel(QStringLiteral("RTD"), QStringLiteral("Flow")),
         "Value",
         {"BaseAddress", "CDT", "DataType", "Bytes", "Multiplier", "Offset", "Formula", "Label", "Format", "Units",
          "Visible", "Value", "Key", "UseCount", "XMLNode"}},
    };
}

} // namespace

TEST(Contracts, EveryClassHasTheMembersOfItsContractAndNoOthers)
{
    for (const ContractRow& row : contracts()) {
        EXPECT_EQ(row.object->typeName().toStdString(), row.className);
        EXPECT_EQ(row.object->members().members().size(), row.members.size()) << row.className;
        for (const char* name : row.members)
            EXPECT_NE(row.object->members().find(Name(name)), nullptr) << row.className << '.' << name;
    }
}

TEST(Contracts, TheDefaultMemberStandsForTheObject)
{
    for (const ContractRow& row : contracts()) {
        const Member* member = row.object->members().defaultMember();
        EXPECT_EQ(member ? member->name.text().toStdString() : "", row.defaultMember) << row.className;
    }
}

TEST(Contracts, ValueAndKeyOfAChannelCannotBeWrittenByName)
{
    const auto channel = make<fake::FakeChannel>();
    EXPECT_EQ(errorOf([&] { channel->put(Name("Value"), Variant(1)); }), int(ErrorNumber::ReadOnlyProperty));
    EXPECT_EQ(errorOf([&] { channel->put(Name("Key"), text(u"K")); }), int(ErrorNumber::ReadOnlyProperty));
}

TEST(Contracts, AScriptReachesAChannelThroughDefaultMembers)
{
    // Logger.Scheme.Windows("rtd")("STAGE")
    const auto logger = makeSite();
    const Variant scheme = logger->get(Name("Scheme"));
    const Variant key = text(u"rtd");
    const Variant window = binding::objectOf(scheme).get(Name("Windows"), {&key, 1});
    EXPECT_EQ(binding::objectOf(window).typeName().toStdString(), "SchemeWindow");
    const Variant channelKey = text(u"STAGE");
    const Variant channel = binding::objectOf(window).get(Name(), {&channelKey, 1});
    EXPECT_EQ(binding::objectOf(channel).defaultValue().text().toStdString(), "Stage");
}

TEST(Contracts, LiveBuffersTakesAnIndexAndGivesTheRecordCount)
{
    const auto logger = makeSite();
    logger->live->buffers->buffers[0]->records->rows.resize(7);
    const Variant live = logger->get(Name("Live"));
    const Variant one(1);
    const Variant buffer = binding::objectOf(live).get(Name("Buffers"), {&one, 1});
    EXPECT_EQ(binding::objectOf(buffer).get(Name("RecordCount")).integer(), 7);
    const Variant two(2);
    EXPECT_EQ(errorOf([&] {
                  binding::objectOf(live).get(Name("Buffers"), {&two, 1});
              }),
              int(ErrorNumber::SubscriptOutOfRange));
}

TEST(Contracts, AnUnknownKeyIsNothingAndAnIndexOutsideIsAnError)
{
    const auto window = makeSite()->scheme->window(QStringLiteral("RTD"));
    const Variant unknown = text(u"Nobody");
    const Variant found = window->get(Name("Item"), {&unknown, 1});
    EXPECT_TRUE(found.isObject());
    EXPECT_EQ(found.object(), nullptr);
    for (const int index : {0, 4, -1}) {
        const Variant argument(index);
        EXPECT_EQ(errorOf([&] {
                      window->get(Name("Item"), {&argument, 1});
                  }),
                  int(ErrorNumber::SubscriptOutOfRange))
            << index;
    }
}

TEST(Contracts, ForEachWalksCollectionsInOrder)
{
    const auto logger = makeSite();
    QStringList keys;
    const auto channels = logger->scheme->window(QStringLiteral("RTD"))->enumerate();
    ASSERT_TRUE(channels);
    while (const auto item = channels->next())
        keys << values::toText(binding::objectOf(*item).get(Name("Key")));
    EXPECT_EQ(keys.join(u',').toStdString(), "Stage,Flow,Battery");

    keys.clear();
    const auto windows = logger->scheme->windows->enumerate();
    while (const auto item = windows->next())
        keys << values::toText(binding::objectOf(*item).get(Name("Key")));
    EXPECT_EQ(keys.join(u',').toStdString(), "SCHEME,RTD");

    int buffers = 0;
    for (const auto walk = logger->live->buffers->enumerate(); walk->next();)
        ++buffers;
    EXPECT_EQ(buffers, 1);
    EXPECT_FALSE(logger->enumerate());
}

TEST(Contracts, ForEachEndsEarlyWhenTheCollectionShrinksAndOutlivesTheLastReference)
{
    auto logger = makeSite();
    auto window = logger->scheme->window(QStringLiteral("RTD"));
    const auto walk = window->enumerate();
    EXPECT_TRUE(walk->next());
    window->channels.resize(1);
    EXPECT_FALSE(walk->next());
    const auto again = window->enumerate();
    window = nullptr;
    logger = nullptr;
    EXPECT_TRUE(again->next());
}

TEST(Contracts, AddByNameTakesTheKeyOrLeavesItOut)
{
    const auto window = makeSite()->scheme->window(QStringLiteral("RTD"));
    const Variant withKey[] = {Variant(make<fake::FakeChannel>()), text(u"New")};
    window->get(Name("Add"), withKey);
    EXPECT_TRUE(window->Item(text(u"new")));
    const Variant without[] = {Variant(make<fake::FakeChannel>())};
    const Variant added = window->get(Name("Add"), without);
    EXPECT_EQ(values::toText(binding::objectOf(added).get(Name("Key"))).toStdString(), "CH5");
    EXPECT_EQ(window->Count(), 5);
    EXPECT_EQ(errorOf([&] { window->get(Name("Add"), withKey); }), int(ErrorNumber::DuplicateKey));
}

TEST(Contracts, AddByNameRefusesWhatIsNoChannel)
{
    const auto logger = makeSite();
    const auto window = logger->scheme->window(QStringLiteral("RTD"));
    const Variant number[] = {Variant(5)};
    EXPECT_EQ(errorOf([&] { window->get(Name("Add"), number); }), int(ErrorNumber::ObjectRequired));
    const Variant other[] = {Variant(logger)};
    EXPECT_EQ(errorOf([&] { window->get(Name("Add"), other); }), int(ErrorNumber::TypeMismatch));
    EXPECT_EQ(errorOf([&] { window->get(Name("Add")); }), int(ErrorNumber::WrongArgumentCount));
}

TEST(Contracts, LinkStateIsALongAndItsChangesAreAnnounced)
{
    const auto link = make<fake::FakeLink>();
    std::vector<int> seen;
    QObject::connect(link.get(), &Link::StateChange, link.get(), [&](int state) { seen.push_back(state); });
    link->enter(LinkState::Connecting);
    link->enter(LinkState::Broken);
    EXPECT_EQ(seen, (std::vector<int>{1, 4}));
    const Variant state = link->get(Name("State"));
    EXPECT_EQ(state.kind(), values::Kind::Long);
    EXPECT_EQ(state.longInteger(), 4);
    link->get(Name("Connect"));
    link->get(Name("Disconnect"));
    EXPECT_EQ(link->connects, 1);
    EXPECT_EQ(link->disconnects, 1);
}

TEST(Contracts, ActionsAreABitSet)
{
    const auto logger = make<FakeLogger>();
    const Variant live{std::int32_t{LiveAction}};
    const Variant program{std::int32_t{ProgramAction}};
    logger->get(Name("AddAction"), {&live, 1});
    logger->get(Name("AddAction"), {&program, 1});
    EXPECT_EQ(logger->get(Name("Actions")).longInteger(), 9);
    logger->get(Name("RemoveActions"), {&live, 1});
    EXPECT_EQ(logger->Actions(), 1);
}

TEST(Contracts, AWriteByNameKeepsChannelAndValueAsGiven)
{
    const auto logger = makeSite();
    const auto channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("Flow"));
    const Variant arguments[] = {Variant(channel), text(u"12.5")};
    logger->live->get(Name("WriteChannel"), arguments);
    ASSERT_EQ(logger->live->writes.size(), 1U);
    EXPECT_EQ(logger->live->writes[0].channel.get(), channel.get());
    EXPECT_EQ(logger->live->writes[0].value.text().toStdString(), "12.5");
}

TEST(Contracts, ReadingMemoryThatTheLoggerDoesNotHaveRaisesFive)
{
    const auto live = make<fake::FakeLive>();
    live->memory[100] = 258;
    const Variant known[] = {Variant(100), Variant(2)};
    EXPECT_EQ(live->get(Name("ReadMemory"), known).real(), 258);
    const Variant unknown[] = {Variant(101), Variant(2)};
    EXPECT_EQ(errorOf([&] { live->get(Name("ReadMemory"), unknown); }), int(ErrorNumber::InvalidCall));
}

TEST(DataTypes, TheNineNamesStandInIndexOrder)
{
    const char* names[] = {"Unsigned Byte", "Signed Byte", "Unsigned Word",  "Signed Word",   "Unsigned Long",
                           "Signed Long",   "String",      "Single Prec FP", "Double Prec FP"};
    for (int type = 0; type < DataTypeCount; ++type)
        EXPECT_EQ(dataTypeName(type).toStdString(), names[type]);
    EXPECT_TRUE(dataTypeName(-1).isEmpty());
    EXPECT_TRUE(dataTypeName(9).isEmpty());
}

} // namespace zan::site
