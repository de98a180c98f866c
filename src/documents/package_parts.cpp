// What parts are is said by a part of its own, which has another form in each family of packages.
#include "documents/package_parts.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "documents/scanner.h"
#include "frame/strings.h"

constexpr zip_int64_t kMostParts = 65000;
constexpr zip_uint32_t kPackLevel = 6;                  // as packages are made everywhere
constexpr uint64_t kMostOfSmallPart = 4 * 1024 * 1024;  // bytes of those that are read whole
// A part that is so large and so much larger than its packed form is no document's: text becomes a
// tenth, tables of numbers a fiftieth.
constexpr uint64_t kBombSize = 256 * 1024 * 1024, kBombRatio = 200;

bool FailPackage(Package *package, ConversionFailure failure)
{
    return FailDocument(package->document, failure);
}

// What an error of the zip library means to a person.
ConversionFailure FailureOfZip(int error)
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

static bool IsBomb(const PackagePart &part, uint64_t size)
{
    return size > kBombSize && size / kBombRatio > part.entry.comp_size;
}

static void FailReading(PartReader *reader)
{
    zip_error_t *error = zip_file_get_error(reader->file);
    FailPackage(reader->package, FailureOfZip(zip_error_code_zip(error)));
}

// A source of packed bytes.
static size_t ReadFromArchive(void *context, char *buffer, size_t size)
{
    PartReader *reader = static_cast<PartReader *>(context);
    zip_int64_t count = zip_fread(reader->file, buffer, size);
    if (count < 0)
        FailReading(reader);
    return count < 0 ? 0 : size_t(count);
}

static size_t ReadPlainBytes(PartReader *reader, char *buffer, size_t size)
{
    if (!reader->unpacker)
        return ReadFromArchive(reader, buffer, size);
    size_t count = ReadUnpacked(reader->unpacker, buffer, size);
    if (count == kDamagedBytes)
        return FailPackage(reader->package, kFailPackage);
    reader->checksum = AddToChecksum(reader->checksum, buffer, count);
    return count;
}

// What the zip library unpacks it proves as well.
static bool IsAsListed(const PartReader &reader)
{
    const zip_stat_t &entry = reader.part->entry;
    return !reader.unpacker || (reader.position == entry.size && reader.checksum == entry.crc);
}

// The walk takes a failure for the end; the report tells them apart.
size_t ReadPart(void *context, char *buffer, size_t size)
{
    PartReader *reader = static_cast<PartReader *>(context);
    Package *package = reader->package;
    if (!GoOn(package->document, package->done + reader->position, package->all))
        return 0;
    size_t count = ReadPlainBytes(reader, buffer, size);
    reader->position += count;
    if (count == 0 && !IsAsListed(*reader))
        FailPackage(package, kFailPackage);
    if (!IsBomb(*reader->part, reader->position))
        return count;
    return FailPackage(package, kFailTooLarge);
}

bool OpenPart(Package *package, const PackagePart &part, PartReader *reader)
{
    bool isDeflated = part.entry.comp_method == ZIP_CM_DEFLATE;
    zip_flags_t flags = ZIP_FL_UNCHANGED | (isDeflated ? ZIP_FL_COMPRESSED : 0);
    zip_file_t *file = zip_fopen_index(package->archive, part.entry.index, flags);
    *reader = {package, &part, file, nullptr, 0, 0};
    if (!file)
        return FailPackage(package,
                           FailureOfZip(zip_error_code_zip(zip_get_error(package->archive))));
    if (isDeflated)
        reader->unpacker = StartUnpacking({ReadFromArchive, reader, 0});
    return !isDeflated || reader->unpacker || FailPackage(package, kFailMemory);
}

void ClosePart(PartReader *reader)
{
    StopUnpacking(reader->unpacker);
    reader->unpacker = nullptr;
    if (reader->file)
        zip_fclose(reader->file);
    reader->file = nullptr;
}

bool ReadSmallPart(Package *package, const PackagePart &part, Bytes *bytes)
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
        return FailPackage(package, kFailTooLarge);
    return done && !package->document->report.error &&
           (!bytes->failed || FailPackage(package, kFailMemory));
}

// ---- what the package is ----

static bool EndsWithNoCase(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && EqualNoCase(text.substr(text.size() - end.size()), end);
}

PackagePart *FindPart(Package *package, const char *name)
{
    zip_int64_t index = zip_name_locate(package->archive, name, ZIP_FL_NOCASE);
    return index < 0 ? nullptr : &package->parts[index];
}

static bool ListPart(Package *package, zip_uint64_t index, uint64_t *packed)
{
    PackagePart *part = &package->parts[index];
    constexpr zip_uint64_t kNeeded =
        ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC;
    if (zip_stat_index(package->archive, index, ZIP_FL_UNCHANGED, &part->entry) != 0 ||
        (part->entry.valid & kNeeded) != kNeeded)
        return FailPackage(package, kFailPackage);
    if ((part->entry.valid & ZIP_STAT_ENCRYPTION_METHOD) &&
        part->entry.encryption_method != ZIP_EM_NONE)
        return FailPackage(package, kFailEncrypted);
    std::string_view name = part->entry.name;
    part->isXml = EndsWithNoCase(name, ".xml") && name != "[Content_Types].xml" &&
                  !name.starts_with("META-INF/");
    *packed += part->entry.comp_size;
    package->all += part->isXml ? 2 * part->entry.size : 0;
    return true;
}

// Parts that lie in one another would be read many times over: no program writes them so.
static bool ListAll(Package *package, uint64_t length)
{
    zip_int64_t count = zip_get_num_entries(package->archive, ZIP_FL_UNCHANGED);
    uint64_t packed = 0;
    if (count > kMostParts)
        return FailPackage(package, kFailTooLarge);
    if (count <= 0)
        return FailPackage(package, kFailFormat);
    package->parts = static_cast<PackagePart *>(calloc(size_t(count), sizeof *package->parts));
    if (!package->parts)
        return FailPackage(package, kFailMemory);
    package->count = size_t(count);
    for (zip_uint64_t i = 0; i < zip_uint64_t(count); ++i)
        if (!ListPart(package, i, &packed))
            return false;
    return packed <= length || FailPackage(package, kFailTooLarge);
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

static DocumentFormat FormatOfMimeType(std::string_view type)
{
    return type.starts_with("application/vnd.oasis.opendocument.") ? kOpenDocument : kNoFormat;
}

// Parts that are protected by a password are listed with how they are.
static bool IsProtected(std::string_view manifest)
{
    return manifest.find("encryption-data") != manifest.npos;
}

// The part that says what the package is, in each family of packages.
static bool FindFormatOfPackage(Package *package)
{
    DWORD *format = &package->document->job->format;
    PackagePart *types = FindPart(package, "[Content_Types].xml");
    PackagePart *mimeType = types ? nullptr : FindPart(package, "mimetype");
    PackagePart *manifest = mimeType ? FindPart(package, "META-INF/manifest.xml") : nullptr;
    Bytes bytes = {};
    if (types && !ReadSmallPart(package, *types, &package->types))
        return false;
    bool done = !mimeType || ReadSmallPart(package, *mimeType, &bytes);
    *format = types ? FormatOfTypes(TextOf(package->types)) : FormatOfMimeType(TextOf(bytes));
    bytes.length = 0;
    done = done && (!manifest || ReadSmallPart(package, *manifest, &bytes));
    if (done && IsProtected(TextOf(bytes)))
        done = FailPackage(package, kFailEncrypted);
    FreeBytes(&bytes);
    return done && (*format != kNoFormat || FailPackage(package, kFailFormat));
}

// ---- parts with styles ----

// Parts that say how text elsewhere looks, in the order in which they are read: by the end of their
// type, or of their name in OpenDocument. Cells say in which fonts the shared strings are shown.
struct StylePart {
    std::string_view end;
    int round;  // from 1
};
constexpr StylePart kOfficeStyles[] = {
    {".styles+xml", 1},       {".fontTable+xml", 1},        {".table+xml", 1},
    {".theme+xml", 1},        {"presentation.main+xml", 1}, {".slideMaster+xml", 2},
    {".notesMaster+xml", 2},  {".slideLayout+xml", 3},      {".worksheet+xml", 2},
    {".sharedStrings+xml", 3}};
constexpr StylePart kOpenDocumentStyles[] = {{"styles.xml", 1}, {"content.xml", 2}};

static int RoundOf(const StylePart *rows, size_t count, std::string_view text)
{
    for (size_t i = 0; i < count; ++i)
        if (EndsWithNoCase(text, rows[i].end))
            return rows[i].round;
    return 0;
}

static void TakeTypeOfPart(Package *package, std::string_view name, std::string_view type)
{
    char path[kPartNameSize];
    if (name.empty() || name.size() > sizeof path)
        return;
    snprintf(path, sizeof path, "%.*s", int(name.size() - 1),
             name.data() + 1);  // without its slash
    if (PackagePart *part = FindPart(package, path))
        part->round = RoundOf(kOfficeStyles, std::size(kOfficeStyles), type);
}

// The list of types has a tag for each part that isn't told by the ending of its name.
static void ReadTypesOfParts(Package *package)
{
    std::string_view types = TextOf(package->types);
    for (size_t start = types.find('<'); start != types.npos; start = types.find('<', start + 1)) {
        size_t end = types.find('>', start);
        std::string_view name, type;
        Attribute attribute;
        if (end == types.npos)
            break;
        std::string_view tag = types.substr(start, end + 1 - start);
        for (size_t place = 0; tag.size() > 2 && NextAttribute(tag, &place, &attribute);) {
            if (attribute.name == "PartName")
                name = attribute.value;
            if (attribute.name == "ContentType")
                type = attribute.value;
        }
        TakeTypeOfPart(package, name, type);
    }
}

// Parts of one folder have one number. That two folders had one too would do no harm but where they
// have styles of one name.
static int NumberOfFolder(std::string_view name)
{
    uint32_t hash = 2166136261u;
    for (char c : name.substr(0, name.rfind('/') + 1))
        hash = (hash ^ uint8_t(c)) * 16777619u;
    return int(hash % 0x1000000);
}

static void FindStyleParts(Package *package)
{
    if (package->document->job->format != kOpenDocument) {
        ReadTypesOfParts(package);
        return;
    }
    for (size_t i = 0; i < package->count; ++i) {
        PackagePart *part = &package->parts[i];
        part->round =
            RoundOf(kOpenDocumentStyles, std::size(kOpenDocumentStyles), part->entry.name);
        part->folder = NumberOfFolder(part->entry.name);
    }
}

bool ListParts(Package *package, uint64_t length)
{
    if (!ListAll(package, length) || !FindFormatOfPackage(package))
        return false;
    FindStyleParts(package);
    return true;
}
