// Standard error. A progress bar is taken away first: it is the last line of the terminal.
#include "messages.h"

#include <cstdio>

#include "progress.h"
#include "session.h"

InputPlace gPlace;

void TellHere(const std::string &text)
{
    HideProgress();
    const char *file = gPlace.file.empty() ? "orvel" : gPlace.file.c_str();
    if (gPlace.line)
        fprintf(stderr, "%s:%zu: %s\n", file, gPlace.line, text.c_str());
    else
        fprintf(stderr, "%s: %s\n", file, text.c_str());
}

size_t TellMessages()
{
    size_t count = 0;
    for (const std::string &text : TakeMessages()) {
        TellHere(text);
        ++count;
    }
    return count;
}

int Tell(const std::string &text, int status)
{
    HideProgress();
    fprintf(stderr, "orvel: %s\n", text.c_str());
    return status;
}

bool Start()
{
    std::string failure = StartLibrary();
    TellMessages();
    if (!failure.empty())
        Tell(failure, 0);
    return failure.empty();
}
