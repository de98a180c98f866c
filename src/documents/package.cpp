// The road of a package. First the parts that say what the document is and what its styles are,
// then each part of XML once to see whether it changes and what it holds, and then the new package:
// parts that change are made anew while the archive is written, all others are copied as they stand
// in it.
#include "documents/package.h"

#include <cstdlib>
#include <cstring>

#include "documents/packed_part.h"
#include "documents/relations.h"
#include "runtime.h"

// ---- walks through parts ----

// With `onlyWhether` the walk ends at the first change: what the part holds is counted when it is
// written.
static bool WalkPart(Package *package, PackagePart *part, bool onlyWhether)
{
    PartReader reader;
    Walk walk = {};
    bool done = StartPart(package, *part, &reader, &walk);
    walk.stopsAtChange = onlyWhether;
    done = done && WalkThrough(&walk, nullptr);
    part->hasChanged = done && HasChanged(&walk);
    StopWalk(&walk);
    ClosePart(&reader);
    EndReading(package->document, !(onlyWhether && part->hasChanged));
    package->done += part->entry.size;
    return done;
}

static bool ReadStyles(Package *package)
{
    for (int round = 1; round <= kStyleRounds; ++round)
        for (size_t i = 0; i < package->count; ++i)
            if (package->parts[i].isXml && package->parts[i].round == round &&
                !WalkPart(package, &package->parts[i], false))
                return false;
    return true;
}

// Parts with text come first, since what styles have to say depends on whether any of it is legacy.
// Where nothing is written, or notes are wanted, which are told once, each part is read to its end.
static bool LookThroughParts(Package *package, bool writes)
{
    Document *document = package->document;
    bool onlyWhether = writes && !(document->job->flags & kDetectText);
    document->isRewriting = true;
    for (int round : {0, 1, 2, 3}) {
        for (size_t i = 0; i < package->count; ++i) {
            PackagePart *part = &package->parts[i];
            if (part->round != round || !part->isXml)
                continue;
            if (!WalkPart(package, part, onlyWhether))
                return false;
            document->changedParts += part->hasChanged;
        }
    }
    document->isRepeating = !onlyWhether;
    return true;
}

// ---- the new package ----

// The failure of a part has been reported by its walk, and counts.
static bool CloseArchive(Package *package, zip_t *archive)
{
    if (zip_close(archive) == 0)
        return true;
    int error = zip_error_code_zip(zip_get_error(archive));
    zip_discard(archive);
    return FailPackage(package, FailureOfZip(error));
}

static bool WriteArchive(Package *package, FILE *input, FILE *output)
{
    ZipFiles files = {input, output, {}};
    int error = 0;
    zip_t *archive = OpenArchive(&files, &error);
    if (!archive)
        return FailPackage(package, FailureOfZip(error));
    for (size_t i = 0; i < package->count; ++i) {
        const PackagePart &part = package->parts[i];
        if (part.hasChanged && !ReplacePart(package, archive, part)) {
            zip_discard(archive);
            return false;
        }
    }
    return CloseArchive(package, archive);
}

static bool CopyFile(Package *package, FILE *input, FILE *output)
{
    char buffer[64 * 1024];
    rewind(input);
    while (size_t count = fread(buffer, 1, sizeof buffer, input))
        if (fwrite(buffer, 1, count, output) != count)
            return FailPackage(package, kFailWrite);
    return !ferror(input) || FailPackage(package, kFailPackage);
}

// Written through a second stream of the old file, since parts are read while others are copied.
static bool WritePackage(Package *package, const DocumentFiles &files)
{
    if (!package->document->changedParts)
        return CopyFile(package, files.input, files.output);
    FILE *input = OpenDocument(files.path);
    if (!input)
        return FailPackage(package, kFailOpen);
    bool done = WriteArchive(package, input, files.output);
    fclose(input);
    return done;
}

static bool RewriteParts(Package *package, const DocumentFiles &files)
{
    return ListParts(package, files.length) && FindPartsAbove(package) &&
           MakeElementsOf(package->document, DocumentFormat(package->document->job->format),
                          &package->elements) &&
           ReadStyles(package) && LookThroughParts(package, files.output != nullptr) &&
           (!files.output || WritePackage(package, files));
}

bool RewritePackage(Document *document, const DocumentFiles &files)
{
    Package package = {};
    int error = 0;
    package.document = document;
    package.files = {files.input, nullptr, {}};
    package.archive = OpenArchive(&package.files, &error);
    if (!package.archive)
        return FailDocument(document, FailureOfZip(error));
    bool done = RewriteParts(&package, files);
    zip_discard(package.archive);
    FreeElementIndex(&package.elements);
    FreeBytes(&package.types);
    free(package.parts);
    free(package.above);
    document->partsAbove = nullptr;
    document->partCount = 0;
    return done;
}
