#pragma once

// What ZanData100 gives to a program: graphs and log-buffer tables for its panels.

#include "zandata/ZanDataControls.h"
