// Documents: any bytes are converted or refused with a number, a refused one leaves the old file,
// and a converted one converts again without a change when it has no legacy text. Block sizes, and
// with them the fast roads, make no difference.
#include <cstdio>
#include <cstdlib>

#include "start.h"
#include "xmlconv/pass.h"

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

// The number of a failure, and the document that stands there afterwards.
struct Converted {
    DWORD failure;
    std::string document;
};

static DWORD ConvertTo(const std::string &source, const std::string &destination)
{
    DocumentJob job = {};
    job.source = source.c_str();
    job.destination = destination.c_str();
    job.showPercent = [](DWORD) {};
    return ConvertDocument(&job);
}

static Converted ConvertInBlocks(size_t block, const std::string &source, const std::string &name)
{
    gConversionSizes = {1024, 128000, block};
    WriteFile(name, "old", 3);
    DWORD failure = ConvertTo(source, name);
    return {failure, ReadFile(name)};
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    StartedFont();
    std::string source = PathOf("in.xml"), converted = PathOf("out.xml"),
                again = PathOf("again.xml");
    WriteFile(source, reinterpret_cast<const char *>(data), size);
    Converted plain = ConvertInBlocks(1, source, again);
    Converted fast = ConvertInBlocks(256 * 1024, source, converted);
    Require(plain.failure == fast.failure && plain.document == fast.document,
            "blocks do not show in the result");
    if (fast.failure)
        Require(fast.document == "old", "a failure keeps the old file");
    else if (ConvertTo(converted, again) == 0)
        Require(ReadFile(again) == fast.document, "converted documents stay as they are");
    return 0;
}
