#include "ProgramFixture.h"

#include "zanbench/OpenedSite.h"
#include "zanbench/PanelHost.h"
#include "zanbench/PanelLoader.h"

#include "document/XMLOps.h"
#include "script/ScriptControl.h"
#include "surface/forms/RecordingForms.h"
#include "surface/intrinsic/CommandButton.h"
#include "values/Convert.h"

#include <QRegularExpression>

using namespace zan;
using binding::Variant;
using values::Name;

namespace {

/// The examples of this kind in the chapter on scripts, as they stand.
QStringList examples(const QString& kind)
{
    QFile page(QStringLiteral(SCRIPTING_PAGE));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    const QRegularExpression block(QStringLiteral("```%1\n(.*?)```").arg(kind),
                                   QRegularExpression::DotMatchesEverythingOption);
    QStringList all;
    auto match = block.globalMatch(QString::fromUtf8(page.readAll()));
    while (match.hasNext())
        all << match.next().captured(1);
    return all;
}

const QString Logger = QStringLiteral("sim:?seed=7&period=20&connect=0&wave.299=const:1");

} // namespace

class DocumentedScripts : public ProgramFixture
{
protected:
    /// The value of a channel of the demo.
    static QString value(const host::OpenedSite& site, const QString& window, const QString& key)
    {
        return values::toText(site.scheme().Windows()->Item(Variant(window))->Item(Variant(key))->Value());
    }
};

TEST_F(DocumentedScripts, ThoseForPanelsRunBehindAButtonOfTheDemo)
{
    const QStringList texts = examples(QStringLiteral("vb panel"));
    ASSERT_GE(texts.size(), 4);
    auto opened = host::OpenedSite::open(DEMO_SCHEME, Logger);
    ASSERT_TRUE(opened.site) << opened.error.toStdString();
    const host::OpenedSite& site = *opened.site;
    surface::RecordingForms forms;
    QStringList errors;
    QStringList shown;
    const auto program = values::make<host::PanelHost>([&](const QString& key) { shown << key; });
    const auto panel = host::loadPanel(site, "Pumps", std::nullopt, [&](window::BenchWindow& fresh) {
        fresh.setForms(&forms);
        fresh.setHost(program);
        QObject::connect(&fresh, &window::BenchWindow::runtimeError, &fresh,
                         [&](int, const QString& text) { errors << text; });
    });
    opened.site->connectLink();
    ASSERT_TRUE(QTest::qWaitFor([&] { return value(site, "Pumps", "P1STATE") == "1"; }, DeadlineMilliseconds));

    // The button that stops all pumps has a script of its own, which the examples take the place of.
    const auto button = panel->Controls()->Control(Variant(QStringLiteral("@118")));
    const document::Node action = button->XMLNode().child(Name("ACTION"));
    auto& live = dynamic_cast<surface::CommandButton&>(*button->Control());
    QStringList captions;
    for (const QString& text : texts) {
        document::XMLOps::SetAttribute(action, Name("SCRIPT"), text, true);
        forms.clearBoxes();
        live.press();
        captions << values::toText(live.get(Name("Caption")));
        for (const auto& box : forms.boxes())
            EXPECT_EQ(box.text, "Stop pump 1?") << text.toStdString();
    }
    EXPECT_EQ(errors, QStringList());
    // What the examples say they do.
    EXPECT_EQ(captions.value(0), "Gate at 75 %");
    EXPECT_TRUE(QTest::qWaitFor([&] { return value(site, "Gates", "G1SET") == "75"; }, DeadlineMilliseconds));
    EXPECT_TRUE(QTest::qWaitFor([&] { return value(site, "Pumps", "P1STATE") == "0"; }, DeadlineMilliseconds));
    EXPECT_EQ(captions.value(3), "in order");
    EXPECT_EQ(shown, QStringList("Pumps"));
}

TEST_F(DocumentedScripts, ThoseForTheCommandLineRunOnTheDemo)
{
    const QStringList texts = examples(QStringLiteral("vb script"));
    ASSERT_GE(texts.size(), 1);
    for (const QString& text : texts) {
        const Outcome outcome = script(text.toUtf8(), {"--scheme", DEMO_SCHEME, "--logger", Logger});
        EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
        EXPECT_EQ(outcome.out, "asked: Set Channel\n");
        EXPECT_TRUE(QFile::exists(path("overview.png")));
    }
}

TEST_F(DocumentedScripts, ThoseForFormsFillThemInOnTheDemo)
{
    const QStringList texts = examples(QStringLiteral("vb form"));
    ASSERT_GE(texts.size(), 1);
    for (const QString& text : texts) {
        const QString checked = text + QStringLiteral("\nHost.Echo Window.UndoText\n");
        const Outcome outcome = script(checked.toUtf8(), {"--scheme", DEMO_SCHEME, "--window", "Gates"});
        EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
        EXPECT_EQ(outcome.out, "Check Box Setup\n"); // the form's OK is the step that Undo takes back
    }
}

TEST_F(DocumentedScripts, ThoseAboutTheLanguageCompileAndRun)
{
    const QStringList texts = examples(QStringLiteral("vb"));
    ASSERT_GE(texts.size(), 1);
    for (const QString& text : texts) {
        script::ScriptControl control;
        EXPECT_TRUE(control.AddCode(text)) << control.Error().Description().toStdString();
        EXPECT_EQ(values::toText(control.Eval("Average(Array(1, 2, 6))").value_or(Variant())), "3");
    }
}
