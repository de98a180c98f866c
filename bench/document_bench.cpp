// Documents: the conversion of a whole one beside XML libraries that read it and write it again as
// it was. Rates are bytes of the source in a second. Each result is held against the document that
// it has to be.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "corpus.h"
#include "expat_copy.h"
#include "libxml2_copy.h"
#include "orvel.h"
#include "session.h"
#include "documents/document.h"
#include "xml_output.h"

constexpr size_t kDocumentSize = 50'000'000;

// The documents are made at their first use and go with their folder.
static const char *const kDocumentNames[] = {"document", "plain_document"};
struct DocumentFiles {
    std::filesystem::path folder;
    size_t sizes[std::size(kDocumentNames)];  // 0: not made yet
};
static DocumentFiles gFiles;

static std::string PathOf(const std::string &name, const char *kind)
{
    return (gFiles.folder / (name + kind)).string();
}

// Bytes of the document's source, which is there then.
static size_t PrepareDocument(const std::string &name)
{
    bool isPlain = name == kDocumentNames[1];
    size_t *size = &gFiles.sizes[isPlain];
    if (*size)
        return *size;
    const char *home = getenv("XDG_DATA_HOME");
    if (gFiles.folder.empty())
        gFiles.folder = std::filesystem::path(home ? home : ".") / "documents";
    std::filesystem::create_directories(gFiles.folder);
    MadeDocument made = MakeDocument({1, kDocumentSize, ReadCorpusOnce("udhr"), isPlain, true});
    WriteWhole(PathOf(name, ".xml"), made.source);
    WriteWhole(PathOf(name, ".converted.xml"), made.converted);
    return *size = made.source.size();
}

void RemoveDocuments()
{
    std::error_code ignored;
    if (!gFiles.folder.empty())
        std::filesystem::remove_all(gFiles.folder, ignored);
}

static bool AreSame(const std::string &path, const std::string &wanted)
{
    static char blocks[2][1 << 16];
    FILE *files[] = {OpenOrExit(path.c_str(), "rb"), OpenOrExit(wanted.c_str(), "rb")};
    size_t got[2];
    bool same = true;
    do {
        for (int i = 0; i < 2; ++i)
            got[i] = fread(blocks[i], 1, sizeof blocks[i], files[i]);
        same = got[0] == got[1] && memcmp(blocks[0], blocks[1], got[0]) == 0;
    } while (same && got[0] > 0);
    for (FILE *file : files)
        fclose(file);
    return same;
}

typedef void (*Rewrite)(const char *source, const char *destination);

static void RunRewrite(benchmark::State &state, const std::string &name, Rewrite rewrite,
                       const char *wanted)
{
    size_t size = PrepareDocument(name);
    std::string source = PathOf(name, ".xml"), destination = PathOf(name, ".new.xml");
    for (auto _ : state)
        rewrite(source.c_str(), destination.c_str());
    SetRate(state, double(size));
    if (!AreSame(destination, PathOf(name, wanted)))
        state.SkipWithError("the result isn't the document that it has to be");
}

static void WINAPI IgnorePercent(void *, DWORD) {}

static void ConvertByOrvel(const char *source, const char *destination)
{
    DocumentJob job = {};
    job.size = sizeof job;
    job.source = source;
    job.destination = destination;
    job.showPercent = IgnorePercent;
    if (ConvertDocument(&job) != 0)
        exit(1);
}

static void OrvelDocument(benchmark::State &state, const std::string &name)
{
    TextFont();  // starts the library
    RunRewrite(state, name, ConvertByOrvel, ".converted.xml");
    TakeMessages();  // the note of each document
}

static void ExpatDocument(benchmark::State &state, const std::string &name)
{
    RunRewrite(state, name, CopyByExpat, ".xml");
}

static void Sax1Document(benchmark::State &state, const std::string &name)
{
    RunRewrite(
        state, name, [](const char *from, const char *to) { CopyByLibxml2(from, to, kSax1); },
        ".xml");
}

static void Sax2Document(benchmark::State &state, const std::string &name)
{
    RunRewrite(
        state, name, [](const char *from, const char *to) { CopyByLibxml2(from, to, kSax2); },
        ".xml");
}

void RegisterDocuments()
{
    for (const char *name : kDocumentNames) {
        AddBenchmark(std::string(name) + "/orvel", OrvelDocument, name);
        AddBenchmark(std::string(name) + "/libxml2", Sax1Document, name);
        AddBenchmark(std::string(name) + "/libxml2-sax2", Sax2Document, name);
        AddBenchmark(std::string(name) + "/expat", ExpatDocument, name);
    }
}
