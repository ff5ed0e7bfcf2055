#include "MemberChecks.h"

#include "binding/Sample.h"

#include <gtest/gtest.h>

namespace zan::binding {

namespace {

/// An object that breaks the rules that the checks know.
class Broken : public Object
{
public:
    bool Forgetful() const { return false; }
    void setForgetful(bool) {}
    std::int16_t Refusing() const { return -1; }
    void setRefusing(std::int16_t) { values::raise(ErrorNumber::InvalidPropertyValue); }
    std::int32_t Counting() { return ++m_count; }
    std::int32_t Failing() const { values::raise(ErrorNumber::ObjectNotSet); }
    QString Hasty() const { return m_hasty; }
    void setHasty(const QString& text)
    {
        m_hasty = text;
        if (!text.isEmpty())
            values::raise(ErrorNumber::InvalidPropertyValue);
    }
    QString Sound() const { return m_sound; }
    void setSound(const QString& text) { m_sound = text; }

    const MemberTable& members() const override
    {
        static const MemberTable table(
            "Broken", nullptr,
            {property<&Broken::Forgetful, &Broken::setForgetful>("Forgetful"),
             property<&Broken::Refusing, &Broken::setRefusing>("Refusing"), readOnly<&Broken::Counting>("Counting"),
             readOnly<&Broken::Failing>("Failing"), field<&Broken::m_askew>("Askew", 1),
             property<&Broken::Hasty, &Broken::setHasty>("Hasty"), readOnly<&Broken::Sound>("No Name").asDefault(),
             mislabelled(), property<&Broken::Sound, &Broken::setSound>("Sound").asDefault()});
        return table;
    }

private:
    static Member mislabelled()
    {
        Member member = readOnly<&Broken::Sound>("Mislabelled");
        member.type = ValueType::Long;
        return member;
    }

    int m_count = 0;
    std::int16_t m_askew = 0;
    QString m_hasty;
    QString m_sound;
};

} // namespace

TEST(MemberChecks, FindNothingOnASoundClass)
{
    EXPECT_EQ(brokenRules(*make<Sample>()), Rules());
}

TEST(MemberChecks, LeaveTheObjectAsItWas)
{
    const auto object = make<Sample>();
    object->setCaption(QStringLiteral("c"));
    object->setLarge(7);
    object->setSmall(1);
    brokenRules(*object);
    EXPECT_EQ(object->Caption(), u"c");
    EXPECT_EQ(object->Large(), 7);
    EXPECT_EQ(object->Small(), 1);
}

TEST(MemberChecks, FindEveryRuleThatIsBroken)
{
    const Rules expected = {
        "table: has more than one default member",
        "Forgetful: does not keep what is written",
        "Refusing: refuses the value that it has",
        "Refusing: cannot be put back", // after each of the two values that are tried
        "Refusing: cannot be put back",
        "Counting: gives another value when it is read again",
        "Failing: cannot be read",
        "Askew: is not its default in a new object",
        "Hasty: changes although it refuses",
        "No Name: is not a name that a script can write",
        "Mislabelled: gives a value of another type than it says",
    };
    EXPECT_EQ(brokenRules(*make<Broken>()), expected);
}

TEST(MemberChecks, LeaveOutWhatIsExempt)
{
    MemberExemptions exemptions;
    exemptions.notRead = {"counting", "Failing", "Mislabelled"};
    exemptions.notWritten = {"Forgetful", "Refusing", "HASTY"};
    const Rules expected = {"table: has more than one default member", "Askew: is not its default in a new object",
                            "No Name: is not a name that a script can write"};
    EXPECT_EQ(brokenRules(*make<Broken>(), exemptions), expected);
}

} // namespace zan::binding
