#pragma once

// What ZanScript gives to a program: the script engine.

#include "script/ScriptControl.h"
