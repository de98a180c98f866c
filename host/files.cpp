// Files and standard streams of the command: bytes as they are, on every system. The commands hand
// a worker to ProcessParts or ProcessLines; here the files are opened, read in pieces, and what the
// worker makes of each piece is written at once, so that a pipe goes on while the input does.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "commands.h"
#include "messages.h"
#include "pieces.h"
#include "progress.h"
#include "runtime.h"
#include "session.h"

int WriteOutput(std::string_view text)
{
    fwrite(text.data(), 1, text.size(), stdout);
    if (fflush(stdout) == 0 && !ferror(stdout))
        return kDone;
    return Tell("the output could not be written: " + std::string(strerror(errno)), kNotDone);
}

std::string_view WithoutByteOrderMark(const TextPart &part)
{
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    bool isFirst = part.line == 1 && part.column == 1;
    return part.text.substr(isFirst && part.text.starts_with(kMark) ? kMark.size() : 0);
}

// A message is a failure, whatever the worker says: part of its line isn't as it should be.
static int WorkByLine(TextPart part, const PartWorker &work, std::string *output)
{
    int worst = kDone;
    for (std::string_view left = part.text; !left.empty(); left.remove_prefix(part.text.size())) {
        size_t end = left.find('\n');
        part.text = left.substr(0, end == left.npos ? end : end + 1);
        gPlace.line = part.line;
        worst = std::max(worst, work(part, output));
        if (TellMessages())
            worst = std::max<int>(worst, kNotDone);
        ++part.line;
        part.column = 1;
    }
    gPlace.line = 0;
    return worst;
}

// Many lines at once are faster, but a message about them could not name the line. So a part that
// brings one is done again line by line; the library gives the same for the same text.
static int WorkByPart(const TextPart &part, const PartWorker &work, std::string *output)
{
    int status = work(part, output);
    if (TakeMessages().empty())
        return status;
    output->clear();
    return WorkByLine(part, work, output);
}

static int ProcessPieces(PieceReader *reader, Progress *progress, const PartWorker &work)
{
    std::string output;
    int worst = kDone;
    for (std::string_view piece; !(piece = ReadPiece(reader)).empty();) {
        output.clear();
        worst = std::max(worst, work({piece, reader->line, reader->column}, &output));
        if (WriteOutput(output))
            return kNotDone;
        AddProgress(progress, piece.size());
    }
    return worst;
}

static int ProcessFile(int file, const std::string &name, const PartWorker &work)
{
    PieceReader reader = StartReading(file);
    Progress progress = StartProgress(file, name, true);
    gPlace.file = name;
    int worst = ProcessPieces(&reader, &progress, work);
    HideProgress();
    if (!reader.failure)
        return worst;
    return Tell(name + ": " + strerror(reader.failure), kNotDone);
}

static int OpenAndProcess(const std::string &name, const PartWorker &work)
{
    if (name == "-")
        return ProcessFile(STDIN_FILENO, name, work);
    int file = OpenUtf8Path(name.c_str());
    if (file < 0)
        return Tell(name + ": " + strerror(errno), kNotDone);
    int status = ProcessFile(file, name, work);
    close(file);
    return status;
}

static int ProcessFiles(const std::vector<std::string> &files, const PartWorker &work)
{
    if (files.empty())
        return OpenAndProcess("-", work);
    int worst = kDone;
    for (const std::string &name : files)
        worst = std::max(worst, OpenAndProcess(name, work));
    return worst;
}

int ProcessParts(const std::vector<std::string> &files, const PartWorker &work)
{
    return ProcessFiles(files, [&](const TextPart &part, std::string *output) {
        return WorkByPart(part, work, output);
    });
}

int ProcessLines(const std::vector<std::string> &files, const PartWorker &work)
{
    return ProcessFiles(files, [&](const TextPart &part, std::string *output) {
        return WorkByLine(part, work, output);
    });
}
