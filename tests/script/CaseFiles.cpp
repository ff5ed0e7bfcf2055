// Every .vbs file below the folder `cases` is a test of its own; drop one in and it runs. A file holds one rule or one
// small family of rules, and says what it expects with Ok condition, text / Same actual, expected, text /
// Fails number, statements / Gives expression, type, text.

#include "CaseChecks.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

using script_test::CaseChecks;
using zan::script::ScriptControl;

namespace {

const QString Folder = QStringLiteral("tests/script/cases");

QString textOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

class CaseFile : public testing::TestWithParam<QString>
{};

/// Paths below the folder.
std::vector<QString> caseNames()
{
    std::vector<QString> names;
    QDirIterator files(Folder, {QStringLiteral("*.vbs")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        names.push_back(files.next().mid(Folder.size() + 1));
    std::sort(names.begin(), names.end());
    return names;
}

std::string nameOfCase(const testing::TestParamInfo<QString>& info)
{
    QString name = info.param.chopped(4);
    for (QChar& c : name) {
        if (!c.isLetterOrNumber())
            c = QLatin1Char('_');
    }
    return name.toStdString();
}

/// Lines, from 1, with a statement that is a check. Under On Error Resume Next a check whose condition fails is passed over in
/// silence: every one of them must have been made.
std::vector<int> linesWithChecks(const QString& text)
{
    static const QRegularExpression check(QStringLiteral("(^|:)\\s*(Ok|Same|Fails|Gives)\\s"),
                                          QRegularExpression::CaseInsensitiveOption);
    std::vector<int> lines;
    int number = 0;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        ++number;
        if (check.match(line).hasMatch())
            lines.push_back(number);
    }
    return lines;
}

int totalAssertions = 0;

class AssertionCount : public testing::Environment
{
public:
    void TearDown() override { printf("%d assertions in case files\n", totalAssertions); }
};
const testing::Environment* const counter = testing::AddGlobalTestEnvironment(new AssertionCount);

} // namespace

TEST_P(CaseFile, HoldsThroughout)
{
    const QString path = Folder + QLatin1Char('/') + GetParam();
    const std::string file = path.toStdString();
    const QString text = textOf(path);
    ScriptControl control;
    const auto checks = zan::values::make<CaseChecks>(control, path);
    ASSERT_TRUE(control.AddObject(QStringLiteral("Checks"), checks, true));
    ASSERT_TRUE(control.AddCode(textOf(QStringLiteral("tests/script/prelude.vbs"))))
        << control.Error().Line() << qPrintable(control.Error().Description());
    if (!control.AddCode(text)) {
        const auto& error = control.Error();
        ADD_FAILURE_AT(file.c_str(), error.Line()) << "column " << error.Column() << ": error " << error.Number()
                                                   << " " << qPrintable(error.Description());
        return;
    }
    EXPECT_GT(checks->count(), 0) << "a case that checks nothing";
    for (const int line : linesWithChecks(text)) {
        if (!checks->lines().contains(line))
            ADD_FAILURE_AT(file.c_str(), line) << "this check was never made";
    }
    totalAssertions += checks->count();
}

INSTANTIATE_TEST_SUITE_P(Language, CaseFile, testing::ValuesIn(caseNames()), nameOfCase);

TEST(CaseFiles, AreFoundFromTheProjectsFolder)
{
    EXPECT_FALSE(caseNames().empty());
}
