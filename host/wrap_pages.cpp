// The library reads a page twice and writes it to a file. So standard input is kept in a file of
// the temporary folder meanwhile, and what the library has made of a page is copied from there.
#include "wrap_pages.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <unistd.h>

#include "commands.h"
#include "messages.h"
#include "orvel.h"
#include "runtime.h"
#include "session.h"

namespace fs = std::filesystem;

// The folder of this process, which goes with the record.
struct WorkFolder {
    fs::path path;
    bool isMade;
    WorkFolder()
    {
        std::error_code failure;
        path = fs::temp_directory_path(failure) / ("orvel-wrap-" + std::to_string(getpid()));
        isMade = !failure && fs::create_directory(path, failure);
    }
    ~WorkFolder()
    {
        std::error_code ignored;
        if (isMade)
            fs::remove_all(path, ignored);
    }
    WorkFolder(const WorkFolder &) = delete;
    WorkFolder &operator=(const WorkFolder &) = delete;
    std::string File(const char *name) const
    {
        std::u8string text = (path / name).generic_u8string();
        return {text.begin(), text.end()};
    }
};

static int KeepInput(const std::string &path)
{
    FILE *file = BeginReplaceDocument(path.c_str());
    if (!file)
        return Tell("the temporary folder can't be written to", kNotDone);
    KeepLineEnds(file);
    int status = ProcessParts({"-"}, [&](const TextPart &part, std::string *) {
        bool done = fwrite(part.text.data(), 1, part.text.size(), file) == part.text.size();
        return int(done ? kDone : kNotDone);
    });
    if (EndReplaceFile(file, status == kDone))
        return kDone;
    return Tell("standard input can't be kept in the temporary folder", kNotDone);
}

static int CopyOut(const std::string &path)
{
    std::string block(64 * 1024, '\0');
    FILE *file = OpenDocument(path.c_str());
    int status = file ? kDone : kNotDone;
    while (status == kDone) {
        size_t count = fread(block.data(), 1, block.size(), file);
        if (count == 0)
            break;
        status = WriteOutput({block.data(), count});
    }
    if (file)
        fclose(file);
    return status;
}

static void WINAPI HearNothing(void *, DWORD) {}

static int WrapPage(const std::string &source, const std::string &made, bool usesWbr)
{
    DocumentJob job = {};
    job.size = sizeof job;
    job.source = source.c_str();
    job.destination = made.c_str();
    job.showPercent = HearNothing;
    job.format = kHtml;
    job.flags = DWORD(kAllFormats | kKeepFonts | kWriteBreaks | kBreaksByOption |
                      (usesWbr ? kWbrBreaks : 0));
    DWORD failure = ConvertDocument(&job);
    TakeMessages();  // its number says nothing here
    if (!failure)
        return CopyOut(made);
    if (failure == kFailOpen)
        return Tell(source + " can't be opened, or the temporary folder can't be written to",
                    kNotDone);
    return Tell(source + " can't be read as a page", kNotDone);
}

int WrapPages(const std::vector<std::string> &files, bool usesWbr)
{
    WorkFolder folder;
    int worst = kDone;
    if (!folder.isMade)
        return Tell("no folder can be made in the temporary folder", kNotDone);
    std::string input = folder.File("input.html"), made = folder.File("made.html");
    for (const std::string &file : files.empty() ? std::vector<std::string>{"-"} : files) {
        bool isInput = file == "-";
        int status = isInput ? KeepInput(input) : int(kDone);
        if (status == kDone)
            status = WrapPage(isInput ? input : file, made, usesWbr);
        worst = std::max(worst, status);
    }
    return worst;
}
