// Output of a whole job. The report is written line by line, so that a job which is stopped has
// told all that it did.
#include "convert_output.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

#include "commands.h"
#include "document_list.h"
#include "messages.h"
#include "progress.h"
#include "runtime.h"

constexpr std::string_view kReportHead = "{\"file\":";

// A document that is named as the report by mistake stays.
static bool MayHoldReport(const std::string &path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(Utf8Path(path), ignored))
        return true;
    FILE *file = OpenDocument(path.c_str());
    if (!file)
        return false;
    char head[kReportHead.size()];
    size_t length = fread(head, 1, sizeof head, file);
    fclose(file);
    return length == 0 || std::string_view(head, length) == kReportHead;
}

constexpr char kUnwritten[] = "can't be written: ";

static std::string LastError()
{
    return std::generic_category().message(errno);
}

static bool TellReport(const std::string &path, const std::string &why)
{
    Tell("the report " + path + " " + why, kNotDone);
    return false;
}

bool StartOutput(const ConvertSettings &settings, ConvertOutput *output)
{
    output->reportPath = settings.report;
    output->isVerbose = settings.isVerbose;
    output->isDryRun = settings.isDryRun;
    output->hasBar = isatty(STDERR_FILENO) && !(!Writes(settings) && isatty(STDOUT_FILENO));
    if (!settings.hasReport)
        return true;
    if (!MayHoldReport(settings.report))
        return TellReport(settings.report, "would take the place of a file that is none");
    errno = 0;
    output->report.open(Utf8Path(settings.report), std::ios::binary);
    return output->report.is_open() || TellReport(settings.report, kUnwritten + LastError());
}

// The documents are what matters: without a place for the report the job goes on.
static void WriteReport(ConvertOutput *output, const std::string &line)
{
    if (!output->report.is_open() || line.empty() || output->report << line << std::flush)
        return;
    TellReport(output->reportPath, kUnwritten + LastError());
    output->status = std::max<int>(output->status, kNotDone);
    output->report.close();
}

bool WriteOutcome(ConvertOutput *output, const ConvertOutcome &outcome)
{
    if (!outcome.told.empty())
        HideProgress();
    fwrite(outcome.told.data(), 1, outcome.told.size(), stderr);
    WriteReport(output, outcome.report);
    ++output->done;
    output->skipped += outcome.status == DocumentStatus::kSkipped;
    output->doneBefore += outcome.status == DocumentStatus::kDoneBefore;
    if (outcome.status == DocumentStatus::kFailed)
        output->status = std::max<int>(output->status, kNotDone);
    if (!outcome.output.empty() && WriteOutput(outcome.output)) {
        output->status = std::max<int>(output->status, kNotDone);
        return false;
    }
    if (output->hasBar && output->total > 1)
        ShowCount(output->done, output->total);
    return true;
}

int EndOutput(ConvertOutput *output)
{
    HideProgress();
    if (output->doneBefore && !output->isDryRun)
        Tell("done before: " + std::to_string(output->doneBefore) + " (--again does all anew)", 0);
    if (output->skipped && !output->isDryRun && !output->isVerbose)
        Tell("skipped, no document: " + std::to_string(output->skipped) + " (--verbose names each)",
             0);
    return output->status;
}
