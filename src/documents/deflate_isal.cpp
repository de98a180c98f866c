// Deflate by ISA-L, which has the wide instructions of the processor: it packs five times as
// quickly as zlib at its quickest level, and smaller, and unpacks four times as quickly.
#include "documents/deflate.h"

#include <cstdlib>

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

constexpr size_t kBlockSize = 64 * 1024;  // bytes
constexpr uint32_t kPackLevel = 1;

struct Packer {
    isal_zstream stream;
    DocumentSource plain;
    char block[kBlockSize];
    uint8_t work[ISAL_DEF_LVL1_DEFAULT];
};

struct Unpacker {
    inflate_state stream;
    DocumentSource packed;
    char block[kBlockSize];
};

static uint8_t *AsInput(char *bytes)
{
    return reinterpret_cast<uint8_t *>(bytes);
}

Packer *StartPacking(const DocumentSource &plain)
{
    Packer *packer = static_cast<Packer *>(malloc(sizeof(Packer)));
    if (!packer)
        return nullptr;
    isal_deflate_init(&packer->stream);
    packer->stream.avail_in = 0;  // the library leaves it
    packer->stream.level = kPackLevel;
    packer->stream.level_buf = packer->work;
    packer->stream.level_buf_size = sizeof packer->work;
    packer->plain = plain;
    return packer;
}

void StopPacking(Packer *packer)
{
    free(packer);
}

size_t ReadPacked(Packer *packer, char *buffer, size_t size)
{
    isal_zstream *stream = &packer->stream;
    stream->next_out = AsInput(buffer);
    stream->avail_out = uint32_t(size);
    while (stream->avail_out > 0 && stream->internal_state.state != ZSTATE_END) {
        if (stream->avail_in == 0 && !stream->end_of_stream) {
            const DocumentSource &plain = packer->plain;
            stream->avail_in = uint32_t(plain.read(plain.context, packer->block, kBlockSize));
            stream->next_in = AsInput(packer->block);
            stream->end_of_stream = stream->avail_in == 0;
        }
        isal_deflate(stream);
    }
    return size - stream->avail_out;
}

Unpacker *StartUnpacking(const DocumentSource &packed)
{
    Unpacker *unpacker = static_cast<Unpacker *>(malloc(sizeof(Unpacker)));
    if (!unpacker)
        return nullptr;
    isal_inflate_init(&unpacker->stream);
    unpacker->stream.avail_in = 0;
    unpacker->packed = packed;
    return unpacker;
}

void StopUnpacking(Unpacker *unpacker)
{
    free(unpacker);
}

size_t ReadUnpacked(Unpacker *unpacker, char *buffer, size_t size)
{
    inflate_state *stream = &unpacker->stream;
    stream->next_out = AsInput(buffer);
    stream->avail_out = uint32_t(size);
    while (stream->avail_out == size && stream->block_state != ISAL_BLOCK_FINISH) {
        bool hasMore = true;
        if (stream->avail_in == 0) {
            const DocumentSource &packed = unpacker->packed;
            stream->avail_in = uint32_t(packed.read(packed.context, unpacker->block, kBlockSize));
            stream->next_in = AsInput(unpacker->block);
            hasMore = stream->avail_in > 0;
        }
        if (isal_inflate(stream) != ISAL_DECOMP_OK)
            return kDamagedBytes;
        // What is held back inside has come out by now, or the end is missing.
        if (!hasMore && stream->avail_out == size && stream->block_state != ISAL_BLOCK_FINISH)
            return kDamagedBytes;
    }
    return size - stream->avail_out;
}

uint32_t AddToChecksum(uint32_t checksum, const char *bytes, size_t count)
{
    return crc32_gzip_refl(checksum, AsInput(const_cast<char *>(bytes)), count);
}
