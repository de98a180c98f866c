// A message is its length in four bytes, and its fields with a 0 behind each.
#include "convert_pipe.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <unistd.h>

constexpr uint32_t kMostBytes = 256 << 20;  // more than any document has notes

std::string PackMessage(const PipeFields &fields)
{
    std::string bytes(sizeof(uint32_t), '\0');
    for (const std::string &field : fields)
        bytes.append(field.c_str()).append(1, '\0');
    uint32_t length = uint32_t(bytes.size() - sizeof length);
    memcpy(bytes.data(), &length, sizeof length);
    return bytes;
}

static bool ReadBytes(int file, char *bytes, size_t size)
{
    for (ssize_t got = 0; size > 0; bytes += got, size -= size_t(got)) {
        got = read(file, bytes, unsigned(size));
        if (got == 0 || (got < 0 && errno != EINTR))
            return false;
        got = got < 0 ? 0 : got;
    }
    return true;
}

bool ReadMessage(int file, PipeFields *fields)
{
    uint32_t length;
    if (!ReadBytes(file, reinterpret_cast<char *>(&length), sizeof length) || length > kMostBytes)
        return false;
    std::string bytes(length, '\0');
    if (!ReadBytes(file, bytes.data(), length))
        return false;
    fields->clear();
    for (size_t at = 0; at < length; at += fields->back().size() + 1)
        fields->push_back(bytes.c_str() + at);
    return true;
}

// ---- records ----

// Yes and no, in the order in which TakeSettings has them.
static std::string Flags(std::initializer_list<bool> flags)
{
    std::string text;
    for (bool flag : flags)
        text += flag ? 'y' : 'n';
    return text;
}

PipeFields FieldsOfSettings(const ConvertSettings &settings)
{
    return {
        settings.folder, settings.map, settings.font, std::to_string(settings.flags),
        Flags({settings.hasFolder, settings.hasMap, settings.hasReport, settings.hasFont,
               settings.listsFonts, settings.isDryRun, settings.doesAgain, settings.isVerbose})};
}

bool TakeSettings(const PipeFields &fields, ConvertSettings *settings)
{
    if (fields.size() != 5 || fields[4].size() != 8)
        return false;
    settings->folder = fields[0];
    settings->map = fields[1];
    settings->font = fields[2];
    settings->flags = DWORD(strtoul(fields[3].c_str(), nullptr, 10));
    bool *flags[] = {&settings->hasFolder, &settings->hasMap,     &settings->hasReport,
                     &settings->hasFont,   &settings->listsFonts, &settings->isDryRun,
                     &settings->doesAgain, &settings->isVerbose};
    for (size_t i = 0; i < 8; ++i)
        *flags[i] = fields[4][i] == 'y';
    return true;
}

PipeFields FieldsOfTask(const ConvertTask &task)
{
    return {task.source, task.destination, task.why, Flags({task.isFromFolder, task.isOther})};
}

bool TakeTask(const PipeFields &fields, ConvertTask *task)
{
    if (fields.size() != 4 || fields[3].size() != 2)
        return false;
    *task = {fields[0], fields[1], fields[2], fields[3][0] == 'y', fields[3][1] == 'y'};
    return true;
}

PipeFields FieldsOfOutcome(const ConvertOutcome &outcome)
{
    return {std::to_string(unsigned(outcome.status)), Flags({outcome.endsAll}), outcome.told,
            outcome.output, outcome.report};
}

bool TakeOutcome(const PipeFields &fields, ConvertOutcome *outcome)
{
    if (fields.size() != 5)
        return false;
    unsigned long status = strtoul(fields[0].c_str(), nullptr, 10);
    if (status > unsigned(DocumentStatus::kStopped))
        return false;
    *outcome = {DocumentStatus(status), fields[1] == "y", fields[2], fields[3], fields[4]};
    return true;
}
