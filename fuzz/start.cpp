// The started library of the fuzz targets.
#include "start.h"

#include <cstdio>
#include <cstdlib>

static std::string StartForFont()
{
    const char *above = getenv("TMPDIR");
    std::string folder = std::string(above ? above : "/tmp") + "/orvel-fuzz-XXXXXX";
    Require(mkdtemp(folder.data()) != nullptr, "a temporary folder");
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
    Require(StartLibrary().empty(), "the library starts");
    SetOrvelOption("d", kMainDictionary | kOldDictionary | kUserDictionary, 0);
    return FindTextFont();
}

const std::string &StartedFont()
{
    static const std::string font = StartForFont();
    TakeMessages();
    return font;
}

void Require(bool holds, const char *promise)
{
    if (holds)
        return;
    fprintf(stderr, "broken: %s\n", promise);
    abort();
}
