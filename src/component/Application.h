#pragma once

#include "component/ZanBenchComponent.h"

#include <cstdint>

namespace zan::component::Application {

// The application object of a process whose program has none, and the event loop of a program that has none.

void start(std::int32_t how);
/// Raises when objects are alive or nothing was started.
void end();
void processEvents(std::int32_t milliseconds);
void stopEvents();

} // namespace zan::component::Application
