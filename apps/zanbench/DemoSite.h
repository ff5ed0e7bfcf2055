#pragma once

#include <QString>

namespace zan::host {

struct DemoResult
{
    QString file;  ///< the scheme; empty when it could not be put there
    QString error; ///< why, in plain words
};

/// The user's own copy of the demo in this folder, put there when it is first asked for: it may be edited and saved
/// like any other scheme, and what somebody has made of it stays.
[[nodiscard]] DemoResult demoIn(const QString& folder);

/// The folder for the user's copy of the demo.
QString demoFolder();

} // namespace zan::host
