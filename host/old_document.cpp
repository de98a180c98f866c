// The directory is a chain of sectors. A table of such chains stands in sectors of its own, whose
// numbers the file's head has. All numbers are hostile: what leads nowhere ends the search, and the
// file then counts as the likeliest of its kind.
#include "old_document.h"

#include <string>

#include "orvel.h"

constexpr size_t kOldHeadSize = 512, kEntrySize = 128;
constexpr size_t kMostDirectory = 256;          // sectors that are looked at
constexpr size_t kTables = 109;                 // whose numbers stand in the head
constexpr unsigned long kMostSector = 1 << 22;  // numbers above are marks, or of a file above 2 GB

struct OldFile {
    FILE *file;
    std::string head;
    unsigned sectorShift;  // of its size: 9 or 12
};

static unsigned NumberAt(std::string_view bytes, size_t at, size_t size)
{
    unsigned number = 0;
    for (size_t i = size; i > 0; --i)
        number = number << 8 | uint8_t(bytes[at + i - 1]);
    return number;
}

// Empty for one that isn't there whole.
static std::string ReadSector(const OldFile &old, unsigned long number)
{
    std::string sector(size_t(1) << old.sectorShift, '\0');
    if (number >= kMostSector)
        return {};
    // the head has the place of a sector
    if (fseek(old.file, long((number + 1) << old.sectorShift), SEEK_SET) != 0)
        return {};
    sector.resize(fread(sector.data(), 1, sector.size(), old.file));
    return sector.size() == size_t(1) << old.sectorShift ? sector : std::string();
}

static unsigned long NextSector(const OldFile &old, unsigned long number)
{
    size_t perTable = (size_t(1) << old.sectorShift) / 4;
    if (number / perTable >= kTables)
        return kMostSector;
    std::string table = ReadSector(old, NumberAt(old.head, 76 + number / perTable * 4, 4));
    return table.empty() ? kMostSector : NumberAt(table, number % perTable * 4, 4);
}

static std::string ReadDirectory(const OldFile &old)
{
    std::string directory;
    unsigned long number = NumberAt(old.head, 48, 4);
    for (size_t i = 0; i < kMostDirectory; ++i) {
        std::string sector = ReadSector(old, number);
        if (sector.empty())
            break;
        directory += sector;
        number = NextSector(old, number);
    }
    return directory;
}

// Its characters beyond ASCII come out as "?": no name that is asked for has any.
static std::string NameOfEntry(std::string_view entry)
{
    std::string name;
    for (size_t at = 0; at < 64 && NumberAt(entry, at, 2); at += 2)
        name += NumberAt(entry, at, 2) < 128 ? entry[at] : '?';
    return name;
}

struct OldKind {
    std::string_view stream;  // that documents of this kind have
    const char *ending, *newEnding;
};

constexpr OldKind kOldKinds[] = {
    {"WordDocument", "doc", "docx"},
    {"Workbook", "xls", "xlsx"},
    {"Book", "xls", "xlsx"},
    {"PowerPoint Document", "ppt", "pptx"},
};

static KindRefusal RefuseOldKind(const OldKind &kind)
{
    std::string ending = kind.ending, newEnding = kind.newEnding;
    return {"is a document of an older kind (." + ending + "); save it as ." + newEnding +
                ", or all of a folder by: soffice --headless --convert-to " + newEnding +
                " --outdir FOLDER FOLDER/*." + ending,
            false};
}

// Documents may stand in a document, behind the streams of the outer one: the first name tells.
static KindRefusal LookAtDirectory(std::string_view directory)
{
    for (; directory.size() >= kEntrySize; directory.remove_prefix(kEntrySize)) {
        std::string name = NameOfEntry(directory);
        if (name == "EncryptedPackage")
            return {"is protected by a password; save it without one", false};
        for (const OldKind &kind : kOldKinds)
            if (name == kind.stream)
                return RefuseOldKind(kind);
    }
    return {"is a file of an older kind, and no document", true};
}

KindRefusal LookAtOldDocument(FILE *file)
{
    OldFile old = {file, std::string(kOldHeadSize, '\0'), 0};
    rewind(file);
    size_t length = fread(old.head.data(), 1, kOldHeadSize, file);
    old.sectorShift = NumberAt(old.head, 30, 2);
    bool isWhole = length == kOldHeadSize && (old.sectorShift == 9 || old.sectorShift == 12);
    std::string directory = isWhole ? ReadDirectory(old) : "";
    return directory.empty() ? RefuseOldKind(kOldKinds[0]) : LookAtDirectory(directory);
}
