// kill_at_call N PROGRAM ARGUMENT…: runs a program and kills it as it is about to make its N-th
// call that can change a file. Between two such calls nothing on the disk changes, so all N
// together are every moment at which the program can die. Exit status 0 when it was killed, 3 when
// it ended before.
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include <csignal>
#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

enum { kKilled = 0, kFailed = 1, kEndedBefore = 3 };

constexpr long kChangingCalls[] = {
    SYS_write,     SYS_pwrite64, SYS_writev,   SYS_ftruncate, SYS_fsync,
    SYS_fdatasync, SYS_mkdirat,  SYS_unlinkat, SYS_renameat2, SYS_linkat,
#ifdef SYS_rename  // machines of older design have the short forms too
    SYS_rename,    SYS_unlink,   SYS_mkdir,    SYS_link,      SYS_truncate,
#endif
};

static bool ChangesFiles(const __ptrace_syscall_info &info)
{
    if (info.op != PTRACE_SYSCALL_INFO_ENTRY)
        return false;
    if (info.entry.nr == SYS_openat)
        return info.entry.args[2] & (O_CREAT | O_TRUNC);
    for (long call : kChangingCalls)
        if (long(info.entry.nr) == call)
            return true;
    return false;
}

static int RunUntil(pid_t child, int left)
{
    for (int status;;) {
        if (ptrace(PTRACE_SYSCALL, child, 0, 0) < 0 || waitpid(child, &status, 0) < 0)
            return kFailed;
        if (WIFEXITED(status) || WIFSIGNALED(status))
            return kEndedBefore;
        __ptrace_syscall_info info = {};
        ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info);
        if (!ChangesFiles(info) || --left > 0)
            continue;
        kill(child, SIGKILL);
        waitpid(child, &status, 0);
        return kKilled;
    }
}

int main(int argc, char **argv)
{
    if (argc < 3)
        return kFailed;
    pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, 0, 0);
        execv(argv[2], argv + 2);
        _exit(127);
    }
    int status;
    waitpid(child, &status, 0);  // stops at its start
    if (!WIFSTOPPED(status) ||
        ptrace(PTRACE_SETOPTIONS, child, 0, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) < 0) {
        fprintf(stderr, "the program can't be traced\n");
        return kFailed;
    }
    return RunUntil(child, atoi(argv[1]));
}
