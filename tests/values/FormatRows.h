#pragma once

#include "values/Format.h"
#include "values/RuntimeError.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace zan::values {

/// A value, a format text and the text that they make.
struct FormatRow
{
    Variant value;
    const char16_t* formatText;
    const char16_t* expected;
};

/// Checks every row and names the one that fails.
inline void expectFormats(std::initializer_list<FormatRow> rows)
{
    int number = 0;
    for (const FormatRow& row : rows) {
        ++number;
        try {
            const QString made = format(row.value, QStringView(row.formatText));
            EXPECT_EQ(made.toStdString(), QString::fromUtf16(row.expected).toStdString())
                << "row " << number << ", format " << QString::fromUtf16(row.formatText).toStdString();
        } catch (const RuntimeError& error) {
            ADD_FAILURE() << "row " << number << ", format " << QString::fromUtf16(row.formatText).toStdString()
                          << " raised " << error.number();
        }
    }
}

/// Number of the error that formatting raises; 0 when it raises none.
inline int formatError(const Variant& value, const char16_t* formatText)
{
    try {
        static_cast<void>(format(value, QStringView(formatText)));
        return 0;
    } catch (const RuntimeError& error) {
        return error.number();
    }
}

} // namespace zan::values
