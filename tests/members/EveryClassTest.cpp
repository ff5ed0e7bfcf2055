#include "MemberChecks.h"
#include "Specimens.h"

#include "binding/MemberTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace zan::test {

using binding::brokenRules;
using binding::MemberExemptions;
using binding::MemberTable;
using binding::Object;
using binding::Ref;
using binding::Rules;

namespace {

enum class Left { Unread, Unwritten };

/// A member that the walk leaves alone, and why.
struct Exemption
{
    const char* className;
    const char* member;
    Left left;
    const char* reason;
};

const char* const NodesAreHandles = "a node of a document is a handle that is made anew at each read";

const Exemption Exemptions[] = {
    {"TextBox", "PasswordChar", Left::Unwritten, "keeps the first character of what is written"},
    {"TextBox", "SelStart", Left::Unwritten, "ends at the end of the text"},
    {"TextBox", "SelLength", Left::Unwritten, "ends at the end of the text"},
    {"TextBox", "SelText", Left::Unwritten, "goes into the text, and nothing is marked afterwards"},
    {"CommandButton", "Value", Left::Unwritten, "writing True presses the button, which never stays down"},
    {"SiteMap", "MapFile", Left::Unwritten, "forgets the name of a map that cannot be loaded"},
    {"SchemeWindow", "XML", Left::Unread, NodesAreHandles},
    {"Channel", "XMLNode", Left::Unread, NodesAreHandles},
    {"BenchControl", "XMLNode", Left::Unread, NodesAreHandles},
    {"BenchControl", "XMLNode", Left::Unwritten, NodesAreHandles},
    {"BenchControl", "Updated", Left::Unwritten, "stays True once it is"},
    {"ZanGraphControl", "XMLNode", Left::Unread, NodesAreHandles},
    {"ZanGraphControl", "XMLNode", Left::Unwritten, NodesAreHandles},
    {"ZanGraphControl", "Updated", Left::Unwritten, "stays True once it is"},
    {"BenchControls", "XMLNode", Left::Unread, NodesAreHandles},
    {"BenchControls", "XMLNode", Left::Unwritten, "a write makes all controls anew"},
    {"XMLNode", "parentNode", Left::Unread, NodesAreHandles},
    {"XMLNode", "ownerDocument", Left::Unread, NodesAreHandles},
    {"XMLNode", "childNodes", Left::Unread, "lists the children as they are at that moment"},
    {"iBenchControl", nullptr, Left::Unwritten, "abstract: there is nothing behind it that could keep a value"},
};

MemberExemptions exemptionsOf(const QString& className)
{
    MemberExemptions result;
    for (const Exemption& row : Exemptions) {
        if (className != QLatin1String(row.className))
            continue;
        if (!row.member)
            result.keepsNothing = true;
        else
            (row.left == Left::Unread ? result.notRead : result.notWritten).push_back(row.member);
    }
    return result;
}

} // namespace

TEST(EveryClass, KeepsTheRulesOfItsMembers)
{
    const Specimens specimens;
    for (const Ref<Object>& object : specimens.objects()) {
        const QString name = object->members().className();
        EXPECT_EQ(brokenRules(*object, exemptionsOf(name)), Rules()) << qPrintable(name);
    }
}

TEST(EveryClass, HasASpecimenInTheWalk)
{
    std::set<const MemberTable*> walked;
    const Specimens specimens;
    for (const Ref<Object>& object : specimens.objects())
        for (const MemberTable* table = &object->members(); table; table = table->base())
            walked.insert(table);
    for (const MemberTable* table : MemberTable::all())
        EXPECT_EQ(walked.count(table), 1U) << qPrintable(table->className());
    EXPECT_GE(MemberTable::all().size(), 30U);
}

TEST(EveryClass, NeedsEachExemptionThatItHas)
{
    const Specimens specimens;
    std::set<std::string> complaints;
    for (const Ref<Object>& object : specimens.objects())
        for (const std::string& complaint : brokenRules(*object))
            complaints.insert(object->members().className().toStdString() + '.' +
                              complaint.substr(0, complaint.find(':')));
    for (const Exemption& row : Exemptions) {
        const std::string wanted = std::string(row.className) + '.' + (row.member ? row.member : "");
        EXPECT_TRUE(std::any_of(complaints.begin(), complaints.end(),
                                [&](const std::string& name) { return name.rfind(wanted, 0) == 0; }))
            << wanted << ": " << row.reason;
    }
}

} // namespace zan::test
