// Arguments, paths and streams are bytes here already.
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
