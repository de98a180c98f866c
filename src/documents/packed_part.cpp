// The zip library could pack parts too, but only in its slowest way. What is given to it is packed
// here, in the quickest way.
#include "documents/packed_part.h"

#include <cstdlib>

constexpr size_t kMostAtOnce = 64 * 1024;  // bytes
// A letter may become two of three bytes. Where a part may so come to 4 GB, its entry has room for
// it.
constexpr uint64_t kMostGrowth = 6;

bool StartPart(Package *package, const PackagePart &part, PartReader *reader, Walk *walk)
{
    if (!OpenPart(package, part, reader) ||
        !StartWalk(walk, package->document, &package->elements, {ReadPart, reader, 0}))
        return false;
    walk->part = int(part.entry.index);
    walk->folder = part.folder;
    return true;
}

// A source of the new part's plain bytes.
static size_t ReadPlain(void *context, char *buffer, size_t size)
{
    PackedPart *made = static_cast<PackedPart *>(context);
    size_t count = ReadWalk(&made->walk, buffer, size);
    made->size += count;
    made->checksum = AddToChecksum(made->checksum, buffer, count);
    made->hasEnded = count == 0;
    return count;
}

static zip_int64_t OpenPacked(PackedPart *made)
{
    made->size = 0;
    made->checksum = 0;
    made->hasEnded = false;
    if (made->isPacked && !(made->packer = StartPacking({ReadPlain, made, 0}))) {
        FailPackage(made->package, kFailMemory);
        return -1;
    }
    return StartPart(made->package, *made->part, &made->reader, &made->walk) ? 0 : -1;
}

static zip_int64_t ClosePacked(PackedPart *made)
{
    StopWalk(&made->walk);
    ClosePart(&made->reader);
    EndReading(made->package->document, !made->package->document->isRepeating);
    StopPacking(made->packer);
    made->packer = nullptr;
    made->package->done += made->part->entry.size;
    return 0;
}

static zip_int64_t ReadMade(PackedPart *made, char *buffer, zip_uint64_t size)
{
    size_t most = size < kMostAtOnce ? size_t(size) : kMostAtOnce;
    size_t count =
        made->isPacked ? ReadPacked(made->packer, buffer, most) : ReadPlain(made, buffer, most);
    return made->package->document->report.error ? -1 : zip_int64_t(count);
}

// Asked before the part is read, when its size is not known but bounded, and again afterwards.
static zip_int64_t TellPacked(const PackedPart *made, void *data)
{
    const zip_stat_t &entry = made->part->entry;
    zip_stat_t *status = static_cast<zip_stat_t *>(data);
    zip_stat_init(status);
    status->size = made->hasEnded ? made->size : entry.size * kMostGrowth;
    status->mtime = entry.mtime;
    status->valid = ZIP_STAT_SIZE | ZIP_STAT_MTIME;
    if (!made->isPacked)
        return sizeof *status;  // the library takes care of what it gets unpacked
    status->comp_method = ZIP_CM_DEFLATE;
    status->crc = made->checksum;
    status->valid |= ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC;
    return sizeof *status;
}

static zip_int64_t HandlePacked(void *context, void *data, zip_uint64_t size,
                                zip_source_cmd_t command)
{
    PackedPart *made = static_cast<PackedPart *>(context);
    switch (command) {
    case ZIP_SOURCE_OPEN: return OpenPacked(made);
    case ZIP_SOURCE_READ: return ReadMade(made, static_cast<char *>(data), size);
    case ZIP_SOURCE_CLOSE: return ClosePacked(made);
    case ZIP_SOURCE_STAT: return TellPacked(made, data);
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

bool ReplacePart(Package *package, zip_t *archive, const PackagePart &part)
{
    PackedPart *made = static_cast<PackedPart *>(calloc(1, sizeof(PackedPart)));
    if (!made)
        return FailPackage(package, kFailMemory);
    made->package = package;
    made->part = &part;
    made->isPacked = part.entry.comp_method != ZIP_CM_STORE;
    zip_source_t *source = zip_source_function(archive, HandlePacked, made);
    if (!source) {
        free(made);
        return FailPackage(package, kFailMemory);
    }
    if (zip_file_replace(archive, part.entry.index, source, ZIP_FL_ENC_GUESS) != 0) {
        zip_source_free(source);
        return FailPackage(package, kFailPackage);
    }
    zip_int32_t method = made->isPacked ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
    return zip_set_file_compression(archive, part.entry.index, method, 0) == 0 ||
           FailPackage(package, kFailPackage);
}
