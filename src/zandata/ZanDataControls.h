#pragma once

namespace zan::zandata {

/// Gives this process the controls of the library, the graph and the table of a log buffer, for every panel that is
/// made from now on. A program calls it once, before its first panel; calling it again does nothing more.
void provideControls();

} // namespace zan::zandata
