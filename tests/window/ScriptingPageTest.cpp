#include "WindowFixture.h"

#include "binding/MemberTable.h"
#include "surface/intrinsic/CommandButton.h"

#include <QFile>
#include <QRegularExpression>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::Name;

namespace {

class ScriptingPage : public WindowTest
{};

/// A program that can show other windows.
class ShowingHost : public binding::Object
{
public:
    void Show(const QString& key) { shown << key; }
    const binding::MemberTable& members() const override
    {
        return binding::table([] {
            return binding::MemberTable("ShowingHost", nullptr, {binding::method<&ShowingHost::Show>("Show")});
        });
    }
    QStringList shown;
};

QStringList panelExamples()
{
    QFile page(QStringLiteral("docs/scripting.md"));
    if (!page.open(QIODevice::ReadOnly))
        return {};
    QStringList examples;
    static const QRegularExpression block(QStringLiteral("```vb panel\\n(.*?)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    auto match = block.globalMatch(QString::fromUtf8(page.readAll()));
    while (match.hasNext())
        examples << match.next().captured(1);
    return examples;
}

} // namespace

TEST_F(ScriptingPage, ItsExamplesForPanelsRunWithoutAnError)
{
    logger->link->state = site::LinkState::Connected;
    logger->channel(QStringLiteral("Gates"), QStringLiteral("G1SET"));
    logger->channel(QStringLiteral("Pumps"), QStringLiteral("P1STATE"));
    logger->live->memory[299] = 1;
    const auto host = values::make<ShowingHost>();
    const QStringList examples = panelExamples();
    ASSERT_GE(examples.size(), 4) << "the tests run in the folder of the project";
    for (const QString& example : examples) {
        fill("A", "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>SCRIPT</TYPE></ACTION></CONTROL>"
                  "<CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
        BenchWindow window;
        window.setForms(&forms);
        window.InitProperties();
        window.setLogger(logger);
        window.setHost(host);
        window.LoadWindow(QStringLiteral("A"));
        const auto button = window.Controls()->Control(Variant(1));
        document::XMLOps::SetAttribute(button->XMLNode().child(Name("ACTION")), Name("SCRIPT"), example, true);
        forms.clearBoxes();
        static_cast<surface::CommandButton&>(*button->Control()).press();
        for (const auto& box : forms.boxes())
            EXPECT_FALSE(box.text.startsWith(u"Scripting error")) << qPrintable(box.text + example);
        window.Clear();
    }
    EXPECT_EQ(host->shown, QStringList{QStringLiteral("Pumps")});
    EXPECT_EQ(logger->live->writes.size(), 2u) << "the first two examples write";
}
