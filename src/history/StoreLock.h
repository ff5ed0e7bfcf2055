#pragma once

#include "history/Database.h"

namespace zan::history {

/// The right to write a store, which one program has at a time. It ends with the program, however that ends.
class StoreLock
{
public:
    /// Tries to get the right; isHeld() tells. `database` is asked when the store lies on a server, and keeps the right
    /// as long as it is connected. Throws StoreFailure when nobody can have it, as in a folder that cannot be written.
    StoreLock(const HistoryPlace& place, Database* database);
    ~StoreLock();
    StoreLock(const StoreLock&) = delete;
    StoreLock& operator=(const StoreLock&) = delete;

    bool isHeld() const noexcept { return m_isHeld; }

private:
    int m_file = -1;
    bool m_isHeld = false;
};

} // namespace zan::history
