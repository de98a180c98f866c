// The road of a package. First the parts that say what the document is and what its styles are,
// then each part of XML once to see whether it changes and what it holds, and then the new package:
// parts that change are made anew while the archive is written, all others are copied as they stand
// in it.
#include "documents/package.h"

#include <cassert>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "documents/zip_files.h"
#include "frame/strings.h"
#include "runtime.h"

using namespace std::literals;

constexpr zip_int64_t kMostParts = 100000;
constexpr zip_uint32_t kPackLevel = 6;                  // as packages are made everywhere
constexpr uint64_t kMostOfSmallPart = 4 * 1024 * 1024;  // bytes of those that are read whole
// A part that is so large and so much larger than its packed form is no document's: text becomes a
// tenth, tables of numbers a fiftieth.
constexpr uint64_t kBombSize = 256 * 1024 * 1024, kBombRatio = 200;

struct PackagePart {
    zip_stat_t entry;  // its name lives as long as the archive
    bool isXml;        // what a walk goes through
    bool hasStyles;    // which are read first
    bool hasChanged;
    uint64_t newSize;  // bytes of the new part
};

struct Package {
    Document *document;
    ZipFiles files;
    zip_t *archive;
    PackagePart *parts;  // owned
    size_t count;
    ElementIndex elements;
    Bytes types;         // the part that tells the types of all others; empty: OpenDocument
    uint64_t all, done;  // bytes of XML of all readings, and of those that are over
};

static bool Fail(Package *package, ConversionFailure failure)
{
    return FailDocument(package->document, failure);
}

// What an error of the zip library means to a person.
static ConversionFailure FailureOf(int error)
{
    switch (error) {
    case ZIP_ER_MEMORY: return kFailMemory;
    case ZIP_ER_WRITE: return kFailWrite;
    case ZIP_ER_ENCRNOTSUPP:
    case ZIP_ER_NOPASSWD:
    case ZIP_ER_WRONGPASSWD: return kFailEncrypted;
    default: return kFailPackage;
    }
}

// ---- reading one part ----

struct PartReader {
    Package *package;
    const PackagePart *part;
    zip_file_t *file;   // owned
    uint64_t position;  // bytes that were read
};

static bool IsBomb(const PackagePart &part, uint64_t size)
{
    return size > kBombSize && size / kBombRatio > part.entry.comp_size;
}

// The walk takes a failure for the end; the report tells them apart.
static size_t ReadPart(void *context, char *buffer, size_t size)
{
    PartReader *reader = static_cast<PartReader *>(context);
    Package *package = reader->package;
    if (!GoOn(package->document, package->done + reader->position, package->all))
        return 0;
    zip_int64_t count = zip_fread(reader->file, buffer, size);
    if (count < 0) {
        Fail(package, FailureOf(zip_error_code_zip(zip_file_get_error(reader->file))));
        return 0;
    }
    reader->position += uint64_t(count);
    if (IsBomb(*reader->part, reader->position)) {
        Fail(package, kFailTooLarge);
        return 0;
    }
    return size_t(count);
}

static bool OpenPart(Package *package, const PackagePart &part, PartReader *reader)
{
    *reader = {package, &part,
               zip_fopen_index(package->archive, part.entry.index, ZIP_FL_UNCHANGED), 0};
    return reader->file ||
           Fail(package, FailureOf(zip_error_code_zip(zip_get_error(package->archive))));
}

static void ClosePart(PartReader *reader)
{
    if (reader->file)
        zip_fclose(reader->file);
    reader->file = nullptr;
}

static bool ReadSmallPart(Package *package, const PackagePart &part, Bytes *bytes)
{
    PartReader reader;
    bool done = OpenPart(package, part, &reader);
    while (done && bytes->length <= kMostOfSmallPart) {
        char *place = MakeRoom(bytes, 64 * 1024);
        size_t count = place ? ReadPart(&reader, place, 64 * 1024) : 0;
        bytes->length += count;
        if (count == 0)
            break;
    }
    ClosePart(&reader);
    if (bytes->length > kMostOfSmallPart)
        return Fail(package, kFailTooLarge);
    return done && !package->document->report.error &&
           (!bytes->failed || Fail(package, kFailMemory));
}

// ---- what the package is ----

static bool EndsWithNoCase(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && EqualNoCase(text.substr(text.size() - end.size()), end);
}

static PackagePart *FindPart(Package *package, std::string_view name)
{
    for (size_t i = 0; i < package->count; ++i)
        if (EqualNoCase(package->parts[i].entry.name, name))
            return &package->parts[i];
    return nullptr;
}

static bool ListPart(Package *package, zip_uint64_t index, uint64_t *packed)
{
    PackagePart *part = &package->parts[index];
    constexpr zip_uint64_t kNeeded =
        ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD;
    if (zip_stat_index(package->archive, index, ZIP_FL_UNCHANGED, &part->entry) != 0 ||
        (part->entry.valid & kNeeded) != kNeeded)
        return Fail(package, kFailPackage);
    if ((part->entry.valid & ZIP_STAT_ENCRYPTION_METHOD) &&
        part->entry.encryption_method != ZIP_EM_NONE)
        return Fail(package, kFailEncrypted);
    std::string_view name = part->entry.name;
    part->isXml = EndsWithNoCase(name, ".xml") && name != "[Content_Types].xml" &&
                  !name.starts_with("META-INF/");
    *packed += part->entry.comp_size;
    package->all += part->isXml ? 2 * part->entry.size : 0;
    return true;
}

// Parts that lie in one another would be read many times over: no program writes them so.
static bool ListParts(Package *package, uint64_t length)
{
    zip_int64_t count = zip_get_num_entries(package->archive, ZIP_FL_UNCHANGED);
    uint64_t packed = 0;
    if (count > kMostParts)
        return Fail(package, kFailTooLarge);
    if (count <= 0)
        return Fail(package, kFailFormat);
    package->parts = static_cast<PackagePart *>(calloc(size_t(count), sizeof *package->parts));
    if (!package->parts)
        return Fail(package, kFailMemory);
    package->count = size_t(count);
    for (zip_uint64_t i = 0; i < zip_uint64_t(count); ++i)
        if (!ListPart(package, i, &packed))
            return false;
    return packed <= length || Fail(package, kFailTooLarge);
}

struct MainType {
    std::string_view type;  // in the types of the parts of Office packages
    DocumentFormat format;
};
constexpr MainType kMainTypes[] = {
    {"wordprocessingml.document.main+xml", kDocx},
    {"wordprocessingml.template.main+xml", kDocx},
    {"word.document.macroEnabled.main+xml", kDocx},
    {"word.template.macroEnabledTemplate.main+xml", kDocx},
    {"spreadsheetml.sheet.main+xml", kXlsx},
    {"spreadsheetml.template.main+xml", kXlsx},
    {"excel.sheet.macroEnabled.main+xml", kXlsx},
    {"excel.template.macroEnabled.main+xml", kXlsx},
    {"presentationml.presentation.main+xml", kPptx},
    {"presentationml.slideshow.main+xml", kPptx},
    {"presentationml.template.main+xml", kPptx},
    {"powerpoint.presentation.macroEnabled.main+xml", kPptx},
    {"powerpoint.slideshow.macroEnabled.main+xml", kPptx},
    {"powerpoint.template.macroEnabled.main+xml", kPptx},
};

static DocumentFormat FormatOfTypes(std::string_view types)
{
    for (const MainType &row : kMainTypes)
        if (types.find(row.type) != types.npos)
            return row.format;
    return kNoFormat;
}

static bool FindFormatOfPackage(Package *package)
{
    DocumentFormat format = kNoFormat;
    PackagePart *types = FindPart(package, "[Content_Types].xml");
    if (types) {
        if (!ReadSmallPart(package, *types, &package->types))
            return false;
        format = FormatOfTypes(TextOf(package->types));
    }
    package->document->job->format = format;
    return format != kNoFormat || Fail(package, kFailFormat);
}

// ---- parts with styles ----

// Types of parts that say how text elsewhere looks.
constexpr std::string_view kStyleTypes[] = {".styles+xml", ".theme+xml"};

// The type of a part of an Office package; empty where only its name's ending has one.
static std::string_view TypeOfPart(std::string_view types, std::string_view name)
{
    for (size_t at = types.find(name); at != types.npos; at = types.find(name, at + 1)) {
        size_t start = types.rfind('<', at), end = types.find('>', at);
        size_t behind = at + name.size();
        bool isName = at > 0 && types[at - 1] == '/' && behind < types.size() &&
                      (types[behind] == '"' || types[behind] == '\'');
        if (isName && start != types.npos && end != types.npos)
            return types.substr(start, end - start);
    }
    return {};
}

static void FindStyleParts(Package *package)
{
    for (size_t i = 0; i < package->count; ++i) {
        PackagePart *part = &package->parts[i];
        std::string_view type =
            part->isXml ? TypeOfPart(TextOf(package->types), part->entry.name) : std::string_view();
        for (std::string_view styles : kStyleTypes)
            part->hasStyles = part->hasStyles || type.find(styles) != type.npos;
    }
}

// ---- walks through parts ----

static bool WalkPart(Package *package, PackagePart *part)
{
    PartReader reader;
    Walk walk = {};
    bool done = OpenPart(package, *part, &reader) &&
                StartWalk(&walk, package->document, &package->elements, {ReadPart, &reader, 0}) &&
                WalkThrough(&walk, nullptr, &part->newSize);
    part->hasChanged = done && HasChanged(&walk);
    StopWalk(&walk);
    ClosePart(&reader);
    package->done += part->entry.size;
    return done;
}

static bool ReadStyles(Package *package)
{
    FindStyleParts(package);
    for (size_t i = 0; i < package->count; ++i)
        if (package->parts[i].hasStyles && !WalkPart(package, &package->parts[i]))
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
    bool isOpen;
};

static zip_int64_t OpenNewPart(NewPart *made)
{
    Package *package = made->package;
    made->isOpen =
        OpenPart(package, *made->part, &made->reader) &&
        StartWalk(&made->walk, package->document, &package->elements, {ReadPart, &made->reader, 0});
    return made->isOpen ? 0 : -1;
}

static zip_int64_t CloseNewPart(NewPart *made)
{
    StopWalk(&made->walk);
    ClosePart(&made->reader);
    made->isOpen = false;
    made->package->done += made->part->entry.size;
    return 0;
}

static zip_int64_t ReadNewPart(NewPart *made, char *buffer, zip_uint64_t size)
{
    Package *package = made->package;
    size_t count = ReadWalk(&made->walk, buffer, size_t(size));
    bool goesOn =
        !package->document->report.error &&
        GoOn(package->document, package->done + made->walk.scanner.position, package->all);
    return goesOn ? zip_int64_t(count) : -1;
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
        return Fail(package, kFailMemory);
    made->package = package;
    made->part = &part;
    zip_source_t *source = zip_source_function(archive, HandleNewPart, made);
    if (!source) {
        free(made);
        return Fail(package, kFailMemory);
    }
    if (zip_file_replace(archive, part.entry.index, source, ZIP_FL_ENC_GUESS) != 0) {
        zip_source_free(source);
        return Fail(package, kFailPackage);
    }
    return zip_set_file_compression(archive, part.entry.index, part.entry.comp_method,
                                    kPackLevel) == 0 ||
           Fail(package, kFailPackage);
}

// The failure of a part has been reported by its walk, and counts.
static bool CloseArchive(Package *package, zip_t *archive)
{
    if (zip_close(archive) == 0)
        return true;
    int error = zip_error_code_zip(zip_get_error(archive));
    zip_discard(archive);
    return Fail(package, FailureOf(error));
}

static bool WriteArchive(Package *package, FILE *input, FILE *output)
{
    ZipFiles files = {input, output, {}};
    int error = 0;
    zip_t *archive = OpenArchive(&files, &error);
    if (!archive)
        return Fail(package, FailureOf(error));
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
            return Fail(package, kFailWrite);
    return !ferror(input) || Fail(package, kFailPackage);
}

// Written through a second stream of the old file, since parts are read while others are copied.
static bool WritePackage(Package *package, const RewriteFiles &files)
{
    if (!package->document->changedParts)
        return CopyFile(package, files.input, files.output);
    FILE *input = OpenDocument(files.path);
    if (!input)
        return Fail(package, kFailOpen);
    bool done = WriteArchive(package, input, files.output);
    fclose(input);
    return done;
}

static bool RewriteParts(Package *package, const RewriteFiles &files)
{
    return ListParts(package, files.length) && FindFormatOfPackage(package) &&
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
        return FailDocument(document, FailureOf(error));
    bool done = RewriteParts(&package, files);
    zip_discard(package.archive);
    FreeElementIndex(&package.elements);
    FreeBytes(&package.types);
    free(package.parts);
    return done;
}
