// Processes over Windows: of all handles only the two ends that the new process is given may be
// inherited, and only while it starts, since an end that a third process holds is never closed.
#include "child_process.h"

#include <errno.h>
#include <fcntl.h>
#include <io.h>
#include <string.h>

#include "runtime.h"

constexpr size_t kMostPath = 32768, kMostArguments = 8, kMostWord = 64;
constexpr size_t kMostWords = kMostArguments * (kMostWord + 1) + 3;  // with quotation marks and end

// Of the start that runs; too large for the stack.
struct StartState {
    wchar_t program[kMostPath], line[kMostPath + kMostWords];
};
static StartState gStart;

// The program's path stands between quotation marks, which no path can contain.
static bool WriteCommandLine(const char *const *arguments, StartState *start)
{
    DWORD length = GetModuleFileNameW(nullptr, start->program, kMostPath);
    if (!length || length >= kMostPath)
        return false;
    start->line[0] = L'"';
    memcpy(start->line + 1, start->program, length * sizeof *start->line);
    wchar_t *end = start->line + 1 + length;
    *end++ = L'"';
    for (size_t i = 0; arguments[i] && i < kMostArguments; ++i) {
        *end++ = L' ';
        for (size_t at = 0; arguments[i][at] && at < kMostWord; ++at)
            *end++ = wchar_t(arguments[i][at]);
    }
    *end = L'\0';
    return true;
}

static bool Run(const char *const *arguments, HANDLE input, HANDLE output, HANDLE *process)
{
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input;
    startup.hStdOutput = output;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION started;
    if (!WriteCommandLine(arguments, &gStart))
        return false;
    SetHandleInformation(input, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    SetHandleInformation(output, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    if (!CreateProcessW(gStart.program, gStart.line, nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &startup, &started))
        return false;
    CloseHandle(started.hThread);
    *process = started.hProcess;
    return true;
}

// A descriptor that owns the handle; -1 when there is none, and the handle is closed.
static int DescriptorOf(HANDLE handle, int flags)
{
    int file = _open_osfhandle(reinterpret_cast<intptr_t>(handle), flags | _O_BINARY);
    if (file < 0)
        CloseHandle(handle);
    return file;
}

static bool StartWith(const char *const *arguments, HANDLE input, HANDLE output,
                      ChildProcess *child)
{
    HANDLE process = nullptr;
    bool isRunning = Run(arguments, input, output, &process);
    CloseHandle(input);
    CloseHandle(output);
    child->process = reinterpret_cast<intptr_t>(process);
    return isRunning;
}

bool StartChild(const char *const *arguments, ChildProcess *child)
{
    HANDLE theirInput, ourInput, ourOutput, theirOutput;
    errno = EAGAIN;  // whatever the system was short of
    if (!CreatePipe(&theirInput, &ourInput, nullptr, 0))
        return false;
    if (!CreatePipe(&ourOutput, &theirOutput, nullptr, 0)) {
        CloseHandle(theirInput);
        CloseHandle(ourInput);
        return false;
    }
    bool isRunning = StartWith(arguments, theirInput, theirOutput, child);
    child->input = DescriptorOf(ourInput, _O_WRONLY);
    child->output = DescriptorOf(ourOutput, _O_RDONLY);
    if (isRunning && child->input >= 0 && child->output >= 0)
        return true;
    EndChild(child);
    return false;
}

bool SendToChild(const ChildProcess &child, const char *bytes, size_t size)
{
    while (size > 0) {
        int sent = _write(child.input, bytes, unsigned(size));
        if (sent <= 0)
            return false;
        bytes += sent;
        size -= size_t(sent);
    }
    return true;
}

void EndChild(ChildProcess *child)
{
    const int ends[] = {child->input, child->output};
    for (int file : ends)
        if (file >= 0)
            _close(file);
    HANDLE process = reinterpret_cast<HANDLE>(child->process);
    if (process) {
        WaitForSingleObject(process, INFINITE);
        CloseHandle(process);
    }
    *child = {0, -1, -1};
}
