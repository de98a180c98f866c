// Documents of today's formats: any bytes are converted or refused with a number, and a converted
// document converts again without a change. One program for each format, whose name it is built
// with; of packages, whose bytes would hardly ever fit together, the input is the list of parts: a
// line with a name, the part, a zero byte, and so on.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <unistd.h>

#include <zip.h>

#include "start.h"

static std::string FolderOfRun()
{
    static const std::string kFolder = [] {
        std::filesystem::path folder =
            std::filesystem::temp_directory_path() / ("orvel-formats-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder);
        return folder.string();
    }();
    return kFolder;
}

static std::string ReadWhole(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

static void WriteWhole(const std::string &path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
}

// The parts in the input as a package, unpacked.
static void WritePackage(const std::string &path, std::string_view parts)
{
    zip_t *archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    Require(archive, "a package can be made");
    while (!parts.empty()) {
        std::string_view part = parts.substr(0, parts.find('\0'));
        size_t line = part.find('\n');
        std::string name(part.substr(0, line));
        std::string_view text = line == part.npos ? std::string_view() : part.substr(line + 1);
        zip_source_t *source = zip_source_buffer(archive, text.data(), text.size(), 0);
        zip_int64_t index = name.empty() ? -1
                                         : zip_file_add(archive, name.c_str(), source,
                                                        ZIP_FL_OVERWRITE | ZIP_FL_ENC_RAW);
        if (index < 0)
            zip_source_free(source);
        else
            zip_set_file_compression(archive, zip_uint64_t(index), ZIP_CM_STORE, 0);
        parts.remove_prefix(part.size() < parts.size() ? part.size() + 1 : parts.size());
    }
    if (zip_close(archive) != 0)
        zip_discard(archive);
}

static DWORD Convert(const std::string &source, const std::string &destination, unsigned flags)
{
    DocumentJob job = {};
    job.size = sizeof job;
    job.source = source.c_str();
    job.destination = destination.c_str();
    job.flags = kAllFormats | flags;
    job.format = std::string_view(FORMAT) == "text" ? kPlainText : kNoFormat;
    job.textFont = std::string_view(FORMAT) == "text" ? "alice_0" : nullptr;
    job.showPercent = [](void *, DWORD) {};
    job.hearNote = [](void *, const char *) {};
    return ConvertDocument(&job);
}

// The first byte says what is to be done beside the fonts.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    StartedFont();
    if (size == 0)
        return 0;
    constexpr unsigned kWork[] = {0, kWriteBreaks, kTakeBreaks, kDetectText | kApplyDetected};
    unsigned flags = kWork[data[0] % 4];
    std::string_view bytes(reinterpret_cast<const char *>(data) + 1, size - 1);
    std::string source = FolderOfRun() + "/in." + FORMAT, made = FolderOfRun() + "/out." + FORMAT;
    std::string again = FolderOfRun() + "/again." + FORMAT;
    if (std::string_view(FORMAT) == "package")
        WritePackage(source, bytes);
    else
        WriteWhole(source, bytes);
    DWORD failure = Convert(source, made, flags);
    Require(failure == Convert(source, again, flags), "a document is refused as it was");
    if (failure)
        return 0;
    Require(ReadWhole(made) == ReadWhole(again), "a document becomes what it became");
    return 0;
}
