// What programs that take UTF-8 need of the system: nothing, since arguments, paths and streams are
// bytes here already. Called by the programs' main functions.
#include <fcntl.h>

#include "runtime.h"

char **Utf8Arguments(int *, char **given)
{
    return given;
}

int OpenUtf8Path(const char *path)
{
    return open(path, O_RDONLY | O_CLOEXEC);
}

void UseByteStreams() {}
