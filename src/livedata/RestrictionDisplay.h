#pragma once

#include "wrappers/BenchControls.h"
#include "wrappers/iBenchControl.h"

namespace zan::ecan {
class Source;
}

namespace zan::livedata {

// Labels without a channel whose bind text names a source of irrigation restrictions. What they show is fetched beside
// the user interface: while a fetch is under way a label stays as it is, and a label that has once been served is never
// fetched for again. Nothing is raised from here; a bind text with too few fields asks nobody anything.

/// Shows what the web service says of a site and a band, bound as "ECANSVC|site|band".
void UpdateECANService(wrappers::iBenchControl& control, ecan::Source& source);
/// Shows what a web page says of a site, bound as "ECANSCRAPE|site|address".
void UpdateECANScrape(wrappers::iBenchControl& control, ecan::Source& source);

/// The one of the two that the bind text asks for; a control with any other bind text stays as it is.
void UpdateRestrictions(wrappers::iBenchControl& control, const wrappers::BenchControls& controls);
/// Whether a control is bound to such a source and has not been served yet.
bool WaitsForRestrictions(const wrappers::iBenchControl& control);

} // namespace zan::livedata
