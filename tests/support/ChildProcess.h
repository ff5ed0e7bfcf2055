#pragma once

#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace zan::test {

/// Runs the function in a process of its own, without the rights of the superuser when asked; gives back what it
/// returns (0 to 255), or a negative number when it died.
inline int inChild(const std::function<int()>& function, bool unprivileged = false)
{
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t Nobody = 65534;
        if (unprivileged && geteuid() == 0 && (setgid(Nobody) != 0 || setuid(Nobody) != 0))
            _exit(255);
        _exit(function());
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

} // namespace zan::test
