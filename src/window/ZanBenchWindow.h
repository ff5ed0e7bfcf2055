#pragma once

// What ZanBenchWindow gives to a program: the panel, the controls that draw for themselves, and what a host of them
// may bring along: its own forms, its own types of control.

#include "display/SiteMap.h"
#include "display/StatusLight.h"
#include "display/ValueBar.h"
#include "surface/forms/RecordingForms.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"
#include "window/ControlTypes.h"
#include "wrappers/BenchControl.h"
