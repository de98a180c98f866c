// Processes are started from the file that this one runs, also where it was replaced meanwhile.
#include "child_process.h"

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

constexpr char kOwnProgram[] = "/proc/self/exe";
constexpr size_t kMostArguments = 8;

// A program that was started without standard streams has their numbers free, which the new process
// needs for its own.
static int AboveStandardStreams(int file)
{
    if (file < 0 || file > STDERR_FILENO)
        return file;
    int moved = fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    close(file);
    return moved;
}

static void CloseBoth(const int ends[2])
{
    for (int i = 0; i < 2; ++i)
        if (ends[i] >= 0)
            close(ends[i]);
}

static bool Move(int ends[2])
{
    for (int i = 0; i < 2; ++i)
        ends[i] = AboveStandardStreams(ends[i]);
    return ends[0] >= 0 && ends[1] >= 0;
}

// Signals that this process ignores stay ignored in the new one; nothing else is handed down.
static int Spawn(const char *const *arguments, int input, int output, pid_t *process)
{
    char *words[kMostArguments + 2] = {const_cast<char *>(program_invocation_name)};
    for (size_t i = 0; arguments[i] && i < kMostArguments; ++i)
        words[i + 1] = const_cast<char *>(arguments[i]);
    posix_spawn_file_actions_t actions;
    int failure = posix_spawn_file_actions_init(&actions);
    if (failure)
        return failure;
    failure = posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    if (!failure)
        failure = posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    if (!failure)
        failure = posix_spawn(process, kOwnProgram, &actions, nullptr, words, environ);
    posix_spawn_file_actions_destroy(&actions);
    return failure;
}

// The input is a socket: writing to one can be told to raise no signal when the reader has gone.
bool StartChild(const char *const *arguments, ChildProcess *child)
{
    int input[2] = {-1, -1}, output[2] = {-1, -1};
    pid_t process = 0;
    bool isOpen = socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, input) == 0 && Move(input) &&
                  pipe2(output, O_CLOEXEC) == 0 && Move(output);
    int failure = isOpen ? Spawn(arguments, input[1], output[1], &process) : errno;
    if (failure) {
        CloseBoth(input);
        CloseBoth(output);
        errno = failure;
        return false;
    }
    close(input[1]);
    close(output[1]);
    *child = {process, input[0], output[0]};
    return true;
}

bool SendToChild(const ChildProcess &child, const char *bytes, size_t size)
{
    for (ssize_t sent = 0; size > 0; bytes += sent, size -= size_t(sent)) {
        sent = send(child.input, bytes, size, MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR)
            return false;
        sent = sent < 0 ? 0 : sent;
    }
    return true;
}

void EndChild(ChildProcess *child)
{
    const int ends[] = {child->input, child->output};
    CloseBoth(ends);
    while (waitpid(pid_t(child->process), nullptr, 0) < 0 && errno == EINTR) {
    }
    *child = {0, -1, -1};
}
