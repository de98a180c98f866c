// Documents: any bytes are converted or refused with a number, a refused one leaves the old file,
// and a converted one converts again without a change when it has no legacy text.
#include <cstdio>
#include <cstdlib>

#include "start.h"

static std::string PathOf(const char *name)
{
    return std::string(getenv("XDG_DATA_HOME")) + "/" + name;
}

static void WriteFile(const std::string &path, const char *bytes, size_t size)
{
    FILE *file = fopen(path.c_str(), "wb");
    Require(file != nullptr, "a file of the run");
    fwrite(bytes, 1, size, file);
    fclose(file);
}

static std::string ReadFile(const std::string &path)
{
    std::string text;
    char block[4096];
    FILE *file = fopen(path.c_str(), "rb");
    Require(file != nullptr, "the converted document is there");
    for (size_t got; (got = fread(block, 1, sizeof block, file)) > 0;)
        text.append(block, got);
    fclose(file);
    return text;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    StartedTrace();
    std::string source = PathOf("in.xml"), converted = PathOf("out.xml"),
                again = PathOf("again.xml");
    WriteFile(source, reinterpret_cast<const char *>(data), size);
    WriteFile(converted, "old", 3);
    if (ConvertFile(source.c_str(), converted.c_str())) {
        Require(ReadFile(converted) == "old", "a failure keeps the old file");
        return 0;
    }
    if (ConvertFile(converted.c_str(), again.c_str()) == 0)
        Require(ReadFile(again) == ReadFile(converted), "converted documents stay as they are");
    return 0;
}
