#pragma once

// What Halyard2 gives to a program: loggers by URI, and drivers of its own.

#include "halyard/Driver.h"
#include "halyard/HalyardLogger.h"
#include "halyard/LoggerFactory.h"
