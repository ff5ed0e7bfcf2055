#pragma once

#include "document/Node.h"
#include "document/XmlText.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>

#include <string>

/// The document of a text that has to be readable.
inline zan::document::Node parsed(const QByteArray& xml)
{
    const zan::document::ParseResult result = zan::document::parseXml(xml);
    EXPECT_TRUE(result) << result.error.message.toStdString() << " at " << result.error.line << ":"
                        << result.error.column << " of " << xml.toStdString();
    return result.document;
}

/// The node in one line, for comparison with a literal.
inline std::string textOf(const zan::document::Node& node)
{
    return node.xml().toStdString();
}

inline zan::document::Name name(const char* text)
{
    return zan::document::Name(text);
}
