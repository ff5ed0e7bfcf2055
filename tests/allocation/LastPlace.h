#pragma once

#include <string>

namespace zan::test {

/// For a process that may die: when it is ended by a signal or by an exception that nobody may catch, it writes to
/// this file descriptor where that was, as "toolkit: ..." or "ours: ...", and exits with the status `Died`.
///
/// An exception that meets a function that lets none through is the toolkit's when the function is, or when it was the
/// toolkit that asked for the memory: much of it is made without exceptions in mind. A bad access counts for the library
/// whose instruction made it.
void reportLastPlace(int descriptor);

/// Ends the process in the same way when it has worked for ten seconds, or has waited for five minutes: a machine that is
/// busy with other things makes a process slow, and is no reason to call it endless.
void limitTime();

inline constexpr int Died = 77;

} // namespace zan::test
