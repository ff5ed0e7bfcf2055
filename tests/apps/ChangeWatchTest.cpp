#include "HostFixture.h"

#include "zanbench/ChangeWatch.h"

#include "document/XMLOps.h"
#include "trellis/SchemeFile.h"

using namespace zan;
using document::Node;
using document::XMLOps::SetAttribute;
using values::Name;

namespace {

class Changes : public HostTest
{
protected:
    Changes()
    {
        QFile file(path("w.scheme"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<SCHEME><WINDOW><KEY>A</KEY><CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE></CONTROL>"
                   "<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE><BINDTO>A|B</BINDTO></CONTROL>"
                   "<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE></CONTROL></WINDOW></SCHEME>");
        file.close();
        scheme = trellis::SchemeFile::open(path("w.scheme")).scheme;
        watch = std::make_unique<host::ChangeWatch>(scheme);
        controls = scheme->document().documentElement().child(Name("WINDOW")).children(Name("CONTROL"));
    }
    values::Ref<trellis::SchemeFile> scheme;
    std::unique_ptr<host::ChangeWatch> watch;
    std::vector<Node> controls;
};

} // namespace

TEST_F(Changes, WhatReadsAndScansStoreIsNoChange)
{
    SetAttribute(controls[0], Name("PROGRAM"), QStringLiteral("CONNECTIONSTATUS"));
    SetAttribute(controls[0], Name("COMPARISON"), QStringLiteral("="));
    SetAttribute(controls[1], Name("TOOLTIPTEXT"), QStringLiteral("Level 2.5 (m) "));
    SetAttribute(controls[1], Name("IGNORESCAN"), QStringLiteral("-1"));
    EXPECT_TRUE(scheme->isChanged());
    EXPECT_FALSE(watch->isChanged());
    EXPECT_FALSE(scheme->isChanged()) << "the mark is taken away again";
}

TEST_F(Changes, EditsOfTheSameElementsAreChanges)
{
    SetAttribute(controls[0], Name("PROGRAM"), QStringLiteral("DATASTATUS"));
    EXPECT_TRUE(watch->isChanged());
    watch->settle();
    SetAttribute(controls[2], Name("TOOLTIPTEXT"), QStringLiteral("mine"));
    EXPECT_TRUE(watch->isChanged()) << "a bar without a channel has the tip that somebody gave it";
}
