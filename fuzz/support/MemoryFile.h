#pragma once

#include "fuzz/support/Require.h"

#include <QString>

#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

namespace zan::fuzz {

/// A file that lies in memory only; its path leads through the process's own list of open files.
class MemoryFile
{
public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : m_number(memfd_create("fuzz", MFD_CLOEXEC))
    {
        require(m_number >= 0 && ::write(m_number, data, size) == ssize_t(size), "the fuzzer has its file");
    }
    ~MemoryFile() { close(m_number); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_number); }

private:
    int m_number;
};

} // namespace zan::fuzz
