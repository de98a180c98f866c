// For tests of how the native layer keeps things: the machine's own view of a path, a disk that is
// full, a process that has fewer rights.
#ifndef ORVEL_TESTS_PLATFORM_NATIVE_SUPPORT_H
#define ORVEL_TESTS_PLATFORM_NATIVE_SUPPORT_H

#include <csignal>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/temp_folder.h"

// As long as it lives no file of this process grows beyond `size` bytes: writing fails as on a full
// disk.
struct FullDisk {
    explicit FullDisk(rlim_t size)
    {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit limit = {size, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }
    rlimit before;
};

// Runs the work in a child process without the rights of root. The exit status; -1 when it was
// killed.
template <typename Work>
int RunUnprivileged(Work work)
{
    pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(99);
        _exit(work());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

#endif
