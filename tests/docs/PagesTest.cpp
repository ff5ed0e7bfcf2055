#include "halyard/LoggerFactory.h"
#include "keel/KeelText.h"
#include "trellis/SchemeFile.h"
#include "window/BenchWindow.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace zan;

namespace {

QString read(const QString& file)
{
    QFile page(file);
    return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

/// What stands in the page between ``` lines of this language.
QStringList blocks(const QString& page, const QString& language)
{
    const QRegularExpression fence(QStringLiteral("```%1\n(.*?)```").arg(language),
                                   QRegularExpression::DotMatchesEverythingOption);
    QStringList found;
    auto matches = fence.globalMatch(read(page));
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

} // namespace

TEST(Pages, TheProgramsForEmbeddersAreThoseThatAreBuilt)
{
    const QStringList shown = blocks(QStringLiteral("docs/embedding.md"), QStringLiteral("cpp"));
    for (const char* program : {"ownlogger", "ownscheme"}) {
        const QString source = read(QStringLiteral("examples/%1/main.cpp").arg(QString::fromLatin1(program)));
        EXPECT_FALSE(source.isEmpty()) << program;
        EXPECT_TRUE(shown.contains(source)) << program << ": docs/embedding.md shows another text";
    }
}

TEST(Pages, TheOlderWindowsThatAreDescribedCanBeRead)
{
    int windows = 0;
    for (const QString& text : blocks(QStringLiteral("docs/keel.md"), QStringLiteral("keel"))) {
        const keel::KeelText described = keel::parseKeel(text.toUtf8());
        ASSERT_FALSE(described.error) << described.error->text(QStringLiteral("docs/keel.md")).toStdString();
        EXPECT_GT(described.fields.size(), 1U);
        ++windows;
    }
    EXPECT_GT(windows, 0);
    QFile example(QStringLiteral("examples/weir.kel"));
    ASSERT_TRUE(example.open(QIODevice::ReadOnly));
    const keel::KeelText read = keel::parseKeel(example.readAll());
    ASSERT_FALSE(read.error) << read.error->text(example.fileName()).toStdString();
    EXPECT_EQ(read.fields.at(0).label, u"MILL CREEK WEIR");
    EXPECT_TRUE(read.fields.at(2).label.startsWith(u"╔═ RIVER ═"));
}

TEST(Pages, TheSchemeThatIsDescribedOpensAndShowsEveryControl)
{
    QStringList errors;
    int schemes = 0;
    for (const QString& text : blocks(QStringLiteral("docs/scheme.md"), QStringLiteral("xml"))) {
        if (!text.contains(QStringLiteral("<SCHEME>")))
            continue;
        ++schemes;
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("page.scheme")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        file.close();
        const trellis::OpenResult opened = trellis::SchemeFile::open(file.fileName());
        ASSERT_TRUE(opened) << opened.error.text().toStdString();
        const halyard::LoggerResult made = halyard::createLogger(opened.scheme->loggerUri(), opened.scheme);
        ASSERT_TRUE(made.logger) << made.error.toStdString();
        window::BenchWindow panel;
        QObject::connect(&panel, &window::BenchWindow::runtimeError,
                         [&](int, const QString& description) { errors << description; });
        panel.InitProperties();
        panel.setLogger(made.logger);
        panel.LoadWindow(QStringLiteral("Pump"));
        // The panel adds its site map, which no element stands for.
        EXPECT_EQ(panel.Controls()->Count() - 1, text.count(QStringLiteral("<CONTROL>")));
        EXPECT_GT(opened.scheme->Windows()->Item(binding::Variant(u"Pump"))->Count(), 0);
    }
    EXPECT_GT(schemes, 0);
    EXPECT_EQ(errors.join(u'\n').toStdString(), "");
}
