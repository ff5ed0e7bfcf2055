#include "zanbench/hostitem/HostItem.h"

#include "support/ErrorOf.h"

#include "surface/forms/RecordingForms.h"
#include "values/Convert.h"

#include <gtest/gtest.h>

#include <set>

using namespace zan;
using namespace zan::host;
using values::Name;

namespace {

/// A run without a panel that writes down what it is asked.
class FakeRun : public HostRun
{
public:
    window::BenchWindow* panel() const override { return nullptr; }
    surface::RecordingForms& forms() override { return recorded; }
    void call(const QString&, const values::Ref<binding::Object>&) override {}
    void failHere(const QString& message) override { failures << message; }
    std::int32_t takeRefusedWrites() override { return 3; }
    void wait(int milliseconds) override { waited += milliseconds; }
    void quit(int code) override { quitCode = code; }
    QString filePath(const QString& name) const override { return name; }

    surface::RecordingForms recorded;
    QStringList failures;
    int waited = 0;
    int quitCode = -1;
};

/// Number of the error that a read of the member raises; 0 when it raises none.
int errorOf(binding::Object& object, const char* member, std::initializer_list<binding::Variant> arguments = {})
{
    return test::errorOf(
        [&] { object.get(Name(member), binding::Arguments(arguments.begin(), arguments.size())); });
}

} // namespace

TEST(HostItem, NoTwoFamiliesHaveAMemberOfTheSameName)
{
    FakeRun run;
    const auto item = values::make<HostItem>(run);
    std::set<QString> names;
    for (const auto& family : item->families()) {
        EXPECT_FALSE(family->members().members().empty()) << family->typeName().toStdString();
        for (const binding::Member& member : family->members().members())
            EXPECT_TRUE(names.insert(member.name.text().toLower()).second) << member.name.text().toStdString();
    }
    EXPECT_GE(names.size(), 15u);
}

TEST(HostItem, EveryMemberOfEveryFamilyIsReachedThroughTheItemWhateverItsCase)
{
    FakeRun run;
    const auto item = values::make<HostItem>(run);
    for (const auto& family : item->families())
        for (const binding::Member& member : family->members().members()) {
            const QByteArray name = member.name.text().toUpper().toLatin1();
            EXPECT_NE(errorOf(*item, name.constData()), 438) << name.constData();
        }
    EXPECT_EQ(errorOf(*item, "Nonsense"), 438);
    EXPECT_EQ(item->typeName(), "Host");
}

TEST(HostItem, MembersReachTheRun)
{
    FakeRun run;
    const auto item = values::make<HostItem>(run);
    EXPECT_EQ(errorOf(*item, "Wait", {binding::Variant(5)}), 0);
    EXPECT_EQ(run.waited, 5);
    EXPECT_EQ(errorOf(*item, "Assert", {binding::Variant(false), binding::Variant(QStringLiteral("x"))}), 0);
    EXPECT_EQ(errorOf(*item, "Assert", {binding::Variant(true), binding::Variant(QStringLiteral("y"))}), 0);
    EXPECT_EQ(run.failures, QStringList("not so: x"));
    EXPECT_EQ(values::toLong(item->get(Name("TakeRefusedWrites"))), 3);
    EXPECT_EQ(errorOf(*item, "Quit", {binding::Variant(4)}), 5) << "nothing after it runs";
    EXPECT_EQ(run.quitCode, 4);
    EXPECT_EQ(errorOf(*item, "Click", {binding::Variant(1)}), 91) << "there is no panel";
}

TEST(HostItem, AfterTheRunMembersRaise91)
{
    FakeRun run;
    const auto item = values::make<HostItem>(run);
    item->detach();
    EXPECT_EQ(errorOf(*item, "Boxes"), 91);
    EXPECT_EQ(errorOf(*item, "Wait", {binding::Variant(5)}), 91);
    EXPECT_EQ(errorOf(*item, "Click", {binding::Variant(1)}), 91);
    EXPECT_EQ(run.waited, 0);
}

TEST(HostItem, FormatTakesTheFirstDayOfTheWeekAndTheFirstWeekOfTheYear)
{
    FakeRun run;
    const auto item = values::make<HostItem>(run);
    const auto format = [&](std::initializer_list<binding::Variant> arguments) {
        return values::toText(item->get(Name("Format"), binding::Arguments(arguments.begin(), arguments.size())));
    };
    // 3 January 2021 was a Sunday.
    const binding::Variant day = values::toDate(binding::Variant(QStringLiteral("2021-01-03")));
    const binding::Variant weekday(QStringLiteral("w"));
    EXPECT_EQ(format({day, weekday}), "1");
    EXPECT_EQ(format({day, weekday, binding::Variant(2)}), "7");
    EXPECT_EQ(format({day, binding::Variant(QStringLiteral("ww")), binding::Variant(2), binding::Variant(2)}),
              "53");
    EXPECT_EQ(format({day, weekday, binding::Variant(0), binding::Variant(0)}), "1") << "0 is the default";
    EXPECT_EQ(errorOf(*item, "Format", {day, weekday, binding::Variant(8)}), 5);
    EXPECT_EQ(errorOf(*item, "Format", {day, weekday, binding::Variant(1), binding::Variant(4)}), 5);
}
