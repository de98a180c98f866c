// A source of the zip library: what it reads comes from the old file, what it writes goes to the
// new one.
#include "documents/zip_files.h"

#include <cstring>

// Places in files of more than 2 GB.
#ifdef _FILE_OFFSET_BITS
static_assert(sizeof(off_t) == 8);
#endif

static zip_int64_t FailWith(ZipFiles *files, int error)
{
    zip_error_set(&files->error, error, 0);
    return -1;
}

static zip_int64_t Seek(ZipFiles *files, FILE *file, void *data, zip_uint64_t size)
{
    auto *place = ZIP_SOURCE_GET_ARGS(zip_source_args_seek_t, data, size, &files->error);
    if (!place)
        return -1;
    return fseeko(file, off_t(place->offset), place->whence) == 0 ? 0
                                                                  : FailWith(files, ZIP_ER_SEEK);
}

static zip_int64_t Read(ZipFiles *files, void *data, zip_uint64_t size)
{
    size_t count = fread(data, 1, size, files->input);
    return ferror(files->input) ? FailWith(files, ZIP_ER_READ) : zip_int64_t(count);
}

static zip_int64_t Write(ZipFiles *files, const void *data, zip_uint64_t size)
{
    bool done = fwrite(data, 1, size, files->output) == size;
    return done ? zip_int64_t(size) : FailWith(files, ZIP_ER_WRITE);
}

static zip_int64_t TellSize(ZipFiles *files, void *data)
{
    zip_stat_t *status = static_cast<zip_stat_t *>(data);
    zip_stat_init(status);
    if (fseeko(files->input, 0, SEEK_END) != 0)
        return FailWith(files, ZIP_ER_SEEK);
    status->size = zip_uint64_t(ftello(files->input));
    status->valid = ZIP_STAT_SIZE;
    return sizeof *status;
}

static zip_int64_t TellCommands(const ZipFiles *files)
{
    return files->output ? ZIP_SOURCE_SUPPORTS_WRITABLE : ZIP_SOURCE_SUPPORTS_SEEKABLE;
}

static zip_int64_t HandleCommand(void *context, void *data, zip_uint64_t size,
                                 zip_source_cmd_t command)
{
    ZipFiles *files = static_cast<ZipFiles *>(context);
    switch (command) {
    case ZIP_SOURCE_SUPPORTS: return TellCommands(files);
    case ZIP_SOURCE_OPEN: rewind(files->input); return 0;
    case ZIP_SOURCE_READ: return Read(files, data, size);
    case ZIP_SOURCE_SEEK: return Seek(files, files->input, data, size);
    case ZIP_SOURCE_TELL: return ftello(files->input);
    case ZIP_SOURCE_STAT: return TellSize(files, data);
    case ZIP_SOURCE_WRITE: return Write(files, data, size);
    case ZIP_SOURCE_SEEK_WRITE: return Seek(files, files->output, data, size);
    case ZIP_SOURCE_TELL_WRITE: return ftello(files->output);
    case ZIP_SOURCE_ERROR: return zip_error_to_data(&files->error, data, size);
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE:
    case ZIP_SOURCE_BEGIN_WRITE:
    case ZIP_SOURCE_COMMIT_WRITE:
    case ZIP_SOURCE_ROLLBACK_WRITE: return 0;
    default: return FailWith(files, ZIP_ER_OPNOTSUPP);
    }
}

zip_t *OpenArchive(ZipFiles *files, int *error)
{
    zip_error_t failure;
    zip_error_init(&failure);
    zip_error_init(&files->error);
    zip_source_t *source = zip_source_function_create(HandleCommand, files, &failure);
    zip_t *archive =
        source ? zip_open_from_source(source, files->output ? 0 : ZIP_RDONLY, &failure) : nullptr;
    *error = zip_error_code_zip(&failure);
    if (!archive && source)
        zip_source_free(source);
    zip_error_fini(&failure);
    return archive;
}
