#include "Parsed.h"

#include "binding/MemberTable.h"
#include "document/LoadByName.h"

#include <QStringList>

#include <functional>

using namespace zan::document;
using namespace zan::binding;

namespace {

/// An object that notes what is assigned to it and in which order.
class Target : public Object
{
public:
    QString Caption() const { return m_caption; }
    void setCaption(const QString& caption)
    {
        m_caption = caption;
        m_log << QStringLiteral("Caption=") + caption;
        if (m_onCaption)
            m_onCaption();
    }
    std::int16_t Max() const { return m_max; }
    void setMax(std::int16_t max)
    {
        if (max < 0)
            zan::values::raise(ErrorNumber::InvalidPropertyValue);
        m_max = max;
        m_log << QStringLiteral("Max=") + QString::number(max);
    }
    bool Flash() const { return m_flash; }
    void setFlash(bool flash)
    {
        m_flash = flash;
        m_log << (flash ? QStringLiteral("Flash") : QStringLiteral("no Flash"));
    }
    QString Key() const { return QStringLiteral("key"); }

    const MemberTable& members() const override
    {
        static const MemberTable table("Target", nullptr,
                                       {property<&Target::Caption, &Target::setCaption>("Caption"),
                                        property<&Target::Max, &Target::setMax>("Max"),
                                        property<&Target::Flash, &Target::setFlash>("Flash"),
                                        readOnly<&Target::Key>("Key")});
        return table;
    }

    QStringList m_log;
    std::function<void()> m_onCaption;

private:
    QString m_caption;
    std::int16_t m_max = 0;
    bool m_flash = false;
};

std::string logOf(const Target& target)
{
    return target.m_log.join(u", ").toStdString();
}

std::string loaded(const QByteArray& content)
{
    const Ref<Target> target = make<Target>();
    loadByName(parsed("<C>" + content + "</C>").documentElement(), *target);
    return logOf(*target);
}

} // namespace

TEST(LoadByName, AssignsInDocumentOrder)
{
    EXPECT_EQ(loaded("<MAX>3</MAX><CAPTION>a</CAPTION><MAX>4</MAX>"), "Max=3, Caption=a, Max=4");
}

TEST(LoadByName, IgnoresTheCaseOfNames)
{
    EXPECT_EQ(loaded("<CaPtIoN>a</CaPtIoN><max>1</max>"), "Caption=a, Max=1");
}

TEST(LoadByName, PassesOverWhatNamesNoPropertyOrIsRefused)
{
    EXPECT_EQ(loaded("<NOSUCH>1</NOSUCH><KEY>k</KEY><MAX>-1</MAX><MAX>99999</MAX><CAPTION>a</CAPTION>"),
              "Caption=a");
}

TEST(LoadByName, ReadsTextByTheFormOfTheProperty)
{
    EXPECT_EQ(loaded("<MAX>12abc</MAX><MAX>abc</MAX><FLASH>-1</FLASH><FLASH/><CAPTION> x </CAPTION>"),
              "Max=12, Max=0, Flash, no Flash, Caption= x ");
}

TEST(LoadByName, PassesOverTextCommentsAndInstructions)
{
    EXPECT_EQ(loaded("t<!--c--><?MAX 1?><CAPTION>a</CAPTION>"), "Caption=a");
}

TEST(LoadByName, LeavesAPrefixOut)
{
    EXPECT_EQ(loaded("<x:CAPTION>a</x:CAPTION>"), "Caption=a");
}

TEST(LoadByName, PicksOutSpecialChildrenWhateverTheirPrefixAndGivesTheLast)
{
    const Node root = parsed("<C><CAPTION>a</CAPTION><MAX>1</MAX><x:CAPTION>b</x:CAPTION><Caption>c</Caption></C>")
                          .documentElement();
    const Ref<Target> target = make<Target>();
    SpecialChild special[] = {{Name("CAPTION"), {}}, {Name("FONT"), {}}};
    loadByName(root, *target, special);
    EXPECT_EQ(logOf(*target), "Max=1, Caption=c") << "the names of special children are exact";
    EXPECT_EQ(special[0].node.text(), u"b");
    EXPECT_EQ(special[0].node, zan::document::specialChild(root, Name("CAPTION")));
    EXPECT_FALSE(special[1].node);
}

TEST(LoadByName, GivesTheLastSpecialChildOfAnEditedElementTooAndNoneWhereThereIsNone)
{
    const Node root = parsed("<C><FONT>1</FONT><FONT>2</FONT></C>").documentElement();
    root.appendChild(root.createElement(Name("FONT"), QStringLiteral("3")));
    const Ref<Target> target = make<Target>();
    SpecialChild special[] = {{Name("FONT"), root.firstChild()}, {Name("CAPTION"), root.firstChild()}};
    loadByName(root, *target, special);
    EXPECT_EQ(special[0].node.text(), u"3");
    EXPECT_FALSE(special[1].node) << "whatever it was before";
}

TEST(LoadByName, ASetterThatTakesChildrenOutEndsOnlyTheirPart)
{
    Node root = parsed("<C><CAPTION>a</CAPTION><MAX>1</MAX><FLASH>-1</FLASH></C>").documentElement();
    const Ref<Target> target = make<Target>();
    target->m_onCaption = [&] {
        root.removeChild(root.child(Name("CAPTION")));
        root.removeChild(root.child(Name("MAX")));
        root.appendChild(root.createElement(Name("CAPTION"), QStringLiteral("again")));
    };
    loadByName(root, *target);
    EXPECT_EQ(logOf(*target), "Caption=a, Flash");
}

TEST(LoadByName, ASetterMayLetTheWholeDocumentAndTheTargetGo)
{
    Node root = parsed("<C><CAPTION>a</CAPTION><MAX>1</MAX></C>").documentElement();
    Ref<Target> target = make<Target>();
    target->m_onCaption = [&] {
        root = Node();
        target = nullptr;
    };
    loadByName(root, *target);
    EXPECT_FALSE(target);
    EXPECT_FALSE(root);
}

TEST(LoadByName, ANullNodeAssignsNothing)
{
    const Ref<Target> target = make<Target>();
    loadByName(Node(), *target);
    EXPECT_EQ(logOf(*target), "");
}
