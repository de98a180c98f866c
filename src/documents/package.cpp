// The road of a package. First the parts that say what the document is and what its styles are,
// then each part of XML once to see whether it changes and what it holds, and then the new package:
// parts that change are made anew while the archive is written, all others are copied as they stand
// in it.
#include "documents/package.h"

#include <cstdlib>
#include <cstring>

#include "documents/package_parts.h"
#include "runtime.h"

constexpr zip_uint32_t kPackLevel = 6;  // as packages are made everywhere

// ---- walks through parts ----

static bool StartPart(Package *package, const PackagePart &part, PartReader *reader, Walk *walk)
{
    if (!OpenPart(package, part, reader) ||
        !StartWalk(walk, package->document, &package->elements, {ReadPart, reader, 0}))
        return false;
    walk->part = int(part.entry.index);
    walk->folder = part.folder;
    return true;
}

static bool WalkPart(Package *package, PackagePart *part)
{
    PartReader reader;
    Walk walk = {};
    bool done =
        StartPart(package, *part, &reader, &walk) && WalkThrough(&walk, nullptr, &part->newSize);
    part->hasChanged = done && HasChanged(&walk);
    StopWalk(&walk);
    ClosePart(&reader);
    package->done += part->entry.size;
    return done;
}

static bool ReadStyles(Package *package)
{
    for (int round = 1; round <= kStyleRounds; ++round)
        for (size_t i = 0; i < package->count; ++i)
            if (package->parts[i].isXml && package->parts[i].round == round &&
                !WalkPart(package, &package->parts[i]))
                return false;
    return true;
}

// Afterwards all is known of the new package but its bytes.
static bool LookThroughParts(Package *package)
{
    Document *document = package->document;
    document->isRewriting = true;
    for (size_t i = 0; i < package->count; ++i) {
        PackagePart *part = &package->parts[i];
        if (part->isXml && !WalkPart(package, part))
            return false;
        document->changedParts += part->hasChanged;
    }
    document->isRepeating = true;
    return true;
}

// ---- the new package ----

// A part that is made anew while the archive is written.
struct NewPart {
    Package *package;
    const PackagePart *part;
    PartReader reader;
    Walk walk;
};

static zip_int64_t OpenNewPart(NewPart *made)
{
    return StartPart(made->package, *made->part, &made->reader, &made->walk) ? 0 : -1;
}

static zip_int64_t CloseNewPart(NewPart *made)
{
    StopWalk(&made->walk);
    ClosePart(&made->reader);
    made->package->done += made->part->entry.size;
    return 0;
}

static zip_int64_t ReadNewPart(NewPart *made, char *buffer, zip_uint64_t size)
{
    Package *package = made->package;
    size_t count = ReadWalk(&made->walk, buffer, size_t(size));
    return package->document->report.error ? -1 : zip_int64_t(count);
}

static zip_int64_t TellNewPart(const NewPart *made, void *data)
{
    zip_stat_t *status = static_cast<zip_stat_t *>(data);
    zip_stat_init(status);
    status->size = made->part->newSize;
    status->mtime = made->part->entry.mtime;
    status->valid = ZIP_STAT_SIZE | ZIP_STAT_MTIME;
    return sizeof *status;
}

static zip_int64_t HandleNewPart(void *context, void *data, zip_uint64_t size,
                                 zip_source_cmd_t command)
{
    NewPart *made = static_cast<NewPart *>(context);
    switch (command) {
    case ZIP_SOURCE_OPEN: return OpenNewPart(made);
    case ZIP_SOURCE_READ: return ReadNewPart(made, static_cast<char *>(data), size);
    case ZIP_SOURCE_CLOSE: return CloseNewPart(made);
    case ZIP_SOURCE_STAT: return TellNewPart(made, data);
    case ZIP_SOURCE_SUPPORTS: return ZIP_SOURCE_SUPPORTS_READABLE;
    case ZIP_SOURCE_FREE: free(made); return 0;
    case ZIP_SOURCE_ERROR: {
        zip_error_t error;
        zip_error_init_with_code(&error, ZIP_ER_INTERNAL);  // the report has the real one
        return zip_error_to_data(&error, data, size);
    }
    default: return -1;
    }
}

// In the old one's place, with its time and its way of packing.
static bool ReplacePart(Package *package, zip_t *archive, const PackagePart &part)
{
    NewPart *made = static_cast<NewPart *>(calloc(1, sizeof(NewPart)));
    if (!made)
        return FailPackage(package, kFailMemory);
    made->package = package;
    made->part = &part;
    zip_source_t *source = zip_source_function(archive, HandleNewPart, made);
    if (!source) {
        free(made);
        return FailPackage(package, kFailMemory);
    }
    if (zip_file_replace(archive, part.entry.index, source, ZIP_FL_ENC_GUESS) != 0) {
        zip_source_free(source);
        return FailPackage(package, kFailPackage);
    }
    return zip_set_file_compression(archive, part.entry.index, part.entry.comp_method,
                                    kPackLevel) == 0 ||
           FailPackage(package, kFailPackage);
}

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
static bool WritePackage(Package *package, const RewriteFiles &files)
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

static bool RewriteParts(Package *package, const RewriteFiles &files)
{
    return ListParts(package, files.length) &&
           MakeElementsOf(package->document, DocumentFormat(package->document->job->format),
                          &package->elements) &&
           ReadStyles(package) && LookThroughParts(package) &&
           (!files.output || WritePackage(package, files));
}

bool RewritePackage(Document *document, const RewriteFiles &files)
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
