#pragma once

#include "zanbench/HostApplication.h"

namespace zan::host {

/// An application without a display, even where there is one: the same picture and the same run everywhere. A
/// platform that the user has chosen by the environment stays.
class HeadlessApplication : public HostApplication
{
public:
    explicit HeadlessApplication(ProcessArguments process, double scale = 1)
        : HostApplication((prepare(scale), process))
    {}

private:
    static void prepare(double scale)
    {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    }
};

} // namespace zan::host
