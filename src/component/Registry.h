#pragma once

#include <QString>

namespace zan::component::Registry {

// The classes that programs of this user can find: a JSON file in the user's configuration folder, with an entry for
// each class that says which library has it. Other programs have entries of their own in it, and keep them.

/// Full path of the file.
QString file();
/// Enters every class of this library. Raises when the file cannot be written. A file that holds no registry is kept
/// beside as "components.json.unreadable" and a new one begun.
void enter();
/// Takes out the classes that this very library has entered; the file goes with the last entry.
void remove();

} // namespace zan::component::Registry
