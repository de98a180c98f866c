// The command line as UTF-8: the C runtime gives it in the system's code page, which has no Lao.
// The shells of Windows leave * and ? to the program, whose runtime puts the files' names in their
// place where they aren't quoted.
#include <fcntl.h>
#include <io.h>
#include <iterator>
#include <stdlib.h>

#include "runtime.h"

// The runtime's own, which no header declares: nonzero when it fails. The last record says what a
// failing allocation does; it is 0 for every program.
extern "C" int __wgetmainargs(int *count, wchar_t ***arguments, wchar_t ***environment,
                              int takesWildcards, int *startup);

static char *Utf8Copy(const wchar_t *text)
{
    int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    char *copy = static_cast<char *>(malloc(size_t(size)));
    if (copy)
        WideCharToMultiByte(CP_UTF8, 0, text, -1, copy, size, nullptr, nullptr);
    return copy;
}

char **Utf8Arguments(int *count, char **given)
{
    int wideCount, startup = 0;
    wchar_t **wide, **environment;
    if (__wgetmainargs(&wideCount, &wide, &environment, 1, &startup) < 0)
        return given;
    char **arguments = static_cast<char **>(calloc(size_t(wideCount) + 1, sizeof *arguments));
    if (!arguments)
        return given;
    for (int i = 0; i < wideCount; ++i)
        arguments[i] = Utf8Copy(wide[i]);
    *count = wideCount;
    return arguments;
}

int OpenUtf8Path(const char *path)
{
    wchar_t wide[32768];  // no path is longer
    if (!MultiByteToWideChar(CP_UTF8, 0, path, -1, wide, int(std::size(wide))))
        return _open(path, _O_RDONLY | _O_BINARY);
    return _wopen(wide, _O_RDONLY | _O_BINARY);
}

void UseByteStreams()
{
    _setmode(0, _O_BINARY);
    _setmode(1, _O_BINARY);
}
