#pragma once

#include <unistd.h>

#include <utility>

namespace zan::trellis {

/// An open file of the system, closed at the end.
class FileDescriptor
{
public:
    explicit FileDescriptor(int number) noexcept
        : m_number(number)
    {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {}
    FileDescriptor& operator=(FileDescriptor other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~FileDescriptor() { close(); }

    explicit operator bool() const noexcept { return m_number >= 0; }
    int number() const noexcept { return m_number; }
    /// False when the system reports at the last moment that something was not written.
    bool close() noexcept { return m_number < 0 || ::close(std::exchange(m_number, -1)) == 0; }

private:
    int m_number;
};

} // namespace zan::trellis
