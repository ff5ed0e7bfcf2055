#pragma once

// What Trellis2 gives to a program: schemes in files, and windows over a tree of its own.

#include "trellis/SchemeFile.h"
#include "trellis/StoredWindows.h"
