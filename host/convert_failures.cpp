// Failures in words: what a person can do something about. The numbers of tags and of memory are
// many, since each has one place in the library; a person needs to know no more than which of the
// two it is.
#include "convert_failures.h"

#include "document_list.h"
#include "runtime.h"

struct FailureMeaning {
    DWORD number;  // a ConversionFailure
    const char *words;
};

constexpr char kBadTag[] = "a tag of the document can't be read";
constexpr char kNoMemory[] = "there is not enough memory";

// clang-format off
constexpr FailureMeaning kMeanings[] = {
    {kFailTagMemory,       kNoMemory},
    {kFailTagName,         kBadTag},
    {kFailAttributes,      kBadTag},
    {kFailAttributeMemory, kNoMemory},
    {kFailAttributeName,   kBadTag},
    {kFailValueMemory,     kNoMemory},
    {kFailStyleMemory,     kNoMemory},
    {kFailStyleFonts,      kNoMemory},
    {kFailParagraphFonts,  kNoMemory},
    {kFailRunFonts,        kNoMemory},
    {kFailMemory,          kNoMemory},
    {kFailCutTag,          "the document ends too early: a part of it is missing"},
    {kFailText,            "a text of the document can't be converted"},
    {kFailWrite,           "the new document can't be written whole"},
    {kFailFormat,          "is no document of a kind that can be converted"},
    {kFailPackage,         "the document is damaged: its package can't be read"},
    {kFailEncrypted,       "is protected by a password; save it without one"},
    {kFailTooLarge,        "a part of the document is too large to be true"},
    {kFailDepth,           "the parts of the document stand in one another too deep"},
    {kFailEncoding,        "is in an encoding that can't be read; save it in UTF-8"},
};
// clang-format on

// The source could be opened a moment before.
static std::string ExplainOpening(const DocumentJob &job)
{
    if (!job.destination)
        return "it can't be opened any more";
    if (IsSameFile(job.source, job.destination))
        return "source and destination are one file";
    std::string path = job.destination, folder = path.substr(0, BaseStart(path));
    bool hasFolder = folder.empty() || IsFolder(folder);
    return path + (hasFolder ? " can't be written to" : " can't be made: its folder isn't there");
}

static std::string ExplainTextFont(const DocumentJob &job)
{
    if (!job.textFont)
        return "is plain text; say its font: --font NAME";
    return "is plain text, and \"" + std::string(job.textFont) + "\" is no font of the font map";
}

std::string ExplainFailure(DWORD failure, const DocumentJob &job)
{
    if (failure == kFailOpen)
        return ExplainOpening(job);
    if (failure == kFailFontMap)
        return "the font map " + std::string(job.fontMap) + " can't be read or has no row";
    if (failure == kFailTextFont)
        return ExplainTextFont(job);
    for (const FailureMeaning &row : kMeanings)
        if (failure == row.number)
            return row.words;
    return "the document can't be converted";
}

bool FailsForAll(DWORD failure)
{
    return failure == kFailFontMap;
}

bool IsOtherFile(DWORD failure, const DocumentJob &job)
{
    return failure == kFailFormat || (failure == kFailTextFont && !job.textFont);
}
