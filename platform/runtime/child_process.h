// Further processes of the program that runs, to which it gives work: one reads from its standard
// input what it is told and answers on its standard output, bytes both ways. Standard error and the
// current folder are the caller's. Starting is for one thread at a time, since on Windows a process
// that starts takes along whatever another start has just opened.
#ifndef ORVEL_PLATFORM_RUNTIME_CHILD_PROCESS_H
#define ORVEL_PLATFORM_RUNTIME_CHILD_PROCESS_H

#include <stddef.h>
#include <stdint.h>

#pragma GCC visibility push(default)

struct ChildProcess {
    intptr_t process;  // the system's own name of it
    int input;         // descriptor of what it is told; closing it tells it the end
    int output;        // descriptor of its answers; it ends when the process does
};

// Starts this program again with up to eight arguments, plain words without blanks; the list ends
// with null. False, with errno set, when it can't be started.
bool StartChild(const char *const *arguments, ChildProcess *child);

// Writes all bytes to its input. False when it isn't there to read them; nothing else happens then.
bool SendToChild(const ChildProcess &child, const char *bytes, size_t size);

// Closes both descriptors (below 0: closed already) and waits until the process has ended.
void EndChild(ChildProcess *child);

#pragma GCC visibility pop

#endif
