// The started library of the fuzz targets.
#include "start.h"

#include <cstdio>
#include <cstdlib>

static CodeTrace MakeTrace()
{
    const char *above = getenv("TMPDIR");
    std::string folder = std::string(above ? above : "/tmp") + "/orvel-fuzz-XXXXXX";
    CodeTrace trace;
    Require(mkdtemp(folder.data()) != nullptr, "a temporary folder");
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
    Require(StartLibrary() && PrepareTrace(&trace), "the library starts");
    SetOrvelOption("d", 7, 0);
    gMessages.heldBack = true;
    return trace;
}

const CodeTrace &StartedTrace()
{
    static const CodeTrace trace = MakeTrace();
    return trace;
}

void Require(bool holds, const char *promise)
{
    if (holds)
        return;
    fprintf(stderr, "broken: %s\n", promise);
    abort();
}
