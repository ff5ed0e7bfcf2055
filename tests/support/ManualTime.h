#pragma once

#include "ecan/NetworkSource.h"

namespace zan::test {

/// A clock that stands still until a test moves it.
struct ManualTime
{
    std::chrono::milliseconds elapsed{1'000'000};
    QDateTime now{QDate(2024, 2, 3), QTime(4, 5, 6)};

    ecan::NetworkSource::Clock clock()
    {
        return {[this] { return elapsed; }, [this] { return now; }};
    }
};

} // namespace zan::test
