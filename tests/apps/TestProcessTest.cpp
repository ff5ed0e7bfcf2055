#include "zanbench/headless/TestProcess.h"

#include <gtest/gtest.h>

using namespace zan::host;

namespace {

TestOutcome shell(const char* command, std::chrono::seconds timeout = std::chrono::seconds(60))
{
    return runTestProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromLatin1(command)}, timeout);
}

} // namespace

TEST(TestProcess, EndsWithSuccessOnlyForCodeZero)
{
    EXPECT_TRUE(shell("exit 0").passed);
    const TestOutcome failed = shell("exit 1");
    EXPECT_FALSE(failed.passed);
    EXPECT_EQ(failed.reason, "") << "the run has said what is wrong";
    EXPECT_FALSE(shell("exit 3").passed);
    EXPECT_EQ(shell("exit 3").reason, "code 3");
}

TEST(TestProcess, ACrashCostsOneTestAndIsNamed)
{
    const TestOutcome outcome = shell("kill -SEGV $$");
    EXPECT_FALSE(outcome.passed);
    EXPECT_EQ(outcome.reason, "crashed, signal 11");
}

TEST(TestProcess, WhatDoesNotEndIsEnded)
{
    const TestOutcome outcome = shell("exec sleep 1000", std::chrono::seconds(0));
    EXPECT_FALSE(outcome.passed);
    EXPECT_EQ(outcome.reason, "no end after 0 s");
}

TEST(TestProcess, ReadsNothingFromAPerson)
{
    EXPECT_TRUE(shell("if read line; then exit 1; else exit 0; fi").passed);
}

TEST(TestProcess, AProgramThatIsNotThereIsAFailure)
{
    const TestOutcome outcome = runTestProcess(QStringLiteral("/nowhere/zanbench"), {}, std::chrono::seconds(60));
    EXPECT_FALSE(outcome.passed);
    EXPECT_TRUE(outcome.reason.startsWith("did not start")) << outcome.reason.toStdString();
}
