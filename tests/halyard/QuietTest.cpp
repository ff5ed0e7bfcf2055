#include "Quiet.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <atomic>
#include <semaphore>
#include <thread>

namespace zan::halyard {

TEST(Quiet, ComesAfterWhatAThreadHandsOverHoweverLongItWorks)
{
    QObject receiver;
    std::binary_semaphore begin{0};
    std::binary_semaphore end{0};
    std::atomic<std::uint64_t> work = 0;
    bool isHandedOver = false;
    std::thread worker([&] {
        begin.acquire();
        while (work < 20'000'000) // longer than a few turns of an event loop
            ++work;
        QMetaObject::invokeMethod(
            &receiver, [&isHandedOver] { isHandedOver = true; }, Qt::QueuedConnection);
        end.acquire();
    });
    EXPECT_TRUE(waitForQuiet()) << "a thread that waits is quiet";
    EXPECT_FALSE(isHandedOver);
    begin.release();
    EXPECT_TRUE(waitForQuiet());
    EXPECT_TRUE(isHandedOver);
    end.release();
    worker.join();
}

} // namespace zan::halyard
