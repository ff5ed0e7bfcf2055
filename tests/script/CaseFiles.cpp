// Every .vbs file in the folder `cases` is a test of its own; drop one in and it runs. A file says what it expects
// with Ok(condition, text), Same(actual, expected, text) and Fails(number, statement).

#include "script/ScriptControl.h"

#include "binding/MemberTable.h"
#include "values/Convert.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

using zan::script::ScriptControl;
using zan::values::Ref;
using zan::values::Variant;

namespace {

const QString Folder = QStringLiteral("tests/script/cases");

/// Counts what a case says, and complains where it is wrong.
class Checks : public zan::binding::Object
{
public:
    const zan::binding::MemberTable& members() const override
    {
        static const zan::binding::MemberTable table("Checks", nullptr,
                                                     {zan::binding::method<&Checks::note>("Note")});
        return table;
    }
    void note(bool holds, const QString& text)
    {
        ++m_count;
        EXPECT_TRUE(holds) << qPrintable(text);
    }
    int count() const { return m_count; }

private:
    int m_count = 0;
};

QString textOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

class CaseFile : public testing::TestWithParam<QString>
{};

std::vector<QString> caseNames()
{
    std::vector<QString> names;
    for (const QString& name : QDir(Folder).entryList({QStringLiteral("*.vbs")}, QDir::Files, QDir::Name))
        names.push_back(name);
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
    const auto checks = zan::values::make<Checks>();
    ScriptControl control;
    control.AddObject(QStringLiteral("Checks"), checks);
    ASSERT_TRUE(control.AddCode(textOf(QStringLiteral("tests/script/prelude.vbs"))))
        << control.Error().Line() << qPrintable(control.Error().Description());
    const bool ran = control.AddCode(textOf(QDir(Folder).filePath(GetParam())));
    EXPECT_TRUE(ran) << "line " << control.Error().Line() << ", column " << control.Error().Column() << ": "
                     << control.Error().Number() << " " << qPrintable(control.Error().Description()) << " "
                     << qPrintable(control.Error().Text());
    EXPECT_GT(checks->count(), 0) << "a case that checks nothing";
    totalAssertions += checks->count();
}

INSTANTIATE_TEST_SUITE_P(Language, CaseFile, testing::ValuesIn(caseNames()), nameOfCase);

TEST(CaseFiles, AreFoundFromTheProjectsFolder)
{
    EXPECT_FALSE(caseNames().empty());
}
