// Deflate by zlib, which every system has. It packs at its quickest level: the packing takes longer
// than all the rest of a conversion.
#include "documents/deflate.h"

#include <cstdlib>

#include <zlib.h>

constexpr size_t kBlockSize = 64 * 1024;  // bytes
constexpr int kPackLevel = 1, kMemoryLevel = 9;
constexpr int kRawWindow = -15;  // the largest window, without a head: archives have their own

struct Packer {
    z_stream stream;
    DocumentSource plain;
    bool hasEnded;
    char block[kBlockSize];
};

struct Unpacker {
    z_stream stream;
    DocumentSource packed;
    bool hasEnded;
    char block[kBlockSize];
};

static Bytef *AsInput(char *bytes)
{
    return reinterpret_cast<Bytef *>(bytes);
}

static void Refill(z_stream *stream, const DocumentSource &source, char *block)
{
    if (stream->avail_in > 0)
        return;
    stream->avail_in = uInt(source.read(source.context, block, kBlockSize));
    stream->next_in = AsInput(block);
}

Packer *StartPacking(const DocumentSource &plain)
{
    Packer *packer = static_cast<Packer *>(calloc(1, sizeof(Packer)));
    if (packer && deflateInit2(&packer->stream, kPackLevel, Z_DEFLATED, kRawWindow, kMemoryLevel,
                               Z_DEFAULT_STRATEGY) != Z_OK) {
        free(packer);
        return nullptr;
    }
    if (packer)
        packer->plain = plain;
    return packer;
}

void StopPacking(Packer *packer)
{
    if (packer)
        deflateEnd(&packer->stream);
    free(packer);
}

size_t ReadPacked(Packer *packer, char *buffer, size_t size)
{
    z_stream *stream = &packer->stream;
    stream->next_out = AsInput(buffer);
    stream->avail_out = uInt(size);
    while (stream->avail_out > 0 && !packer->hasEnded) {
        Refill(stream, packer->plain, packer->block);
        bool isLast = stream->avail_in == 0;
        packer->hasEnded = deflate(stream, isLast ? Z_FINISH : Z_NO_FLUSH) == Z_STREAM_END;
    }
    return size - stream->avail_out;
}

Unpacker *StartUnpacking(const DocumentSource &packed)
{
    Unpacker *unpacker = static_cast<Unpacker *>(calloc(1, sizeof(Unpacker)));
    if (unpacker && inflateInit2(&unpacker->stream, kRawWindow) != Z_OK) {
        free(unpacker);
        return nullptr;
    }
    if (unpacker)
        unpacker->packed = packed;
    return unpacker;
}

void StopUnpacking(Unpacker *unpacker)
{
    if (unpacker)
        inflateEnd(&unpacker->stream);
    free(unpacker);
}

size_t ReadUnpacked(Unpacker *unpacker, char *buffer, size_t size)
{
    z_stream *stream = &unpacker->stream;
    stream->next_out = AsInput(buffer);
    stream->avail_out = uInt(size);
    while (stream->avail_out == size && !unpacker->hasEnded) {
        Refill(stream, unpacker->packed, unpacker->block);
        int result = inflate(stream, Z_NO_FLUSH);
        unpacker->hasEnded = result == Z_STREAM_END;
        if (result != Z_OK && !unpacker->hasEnded)
            return kDamagedBytes;
    }
    return size - stream->avail_out;
}

uint32_t AddToChecksum(uint32_t checksum, const char *bytes, size_t count)
{
    return uint32_t(crc32(checksum, reinterpret_cast<const Bytef *>(bytes), uInt(count)));
}
