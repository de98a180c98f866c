// The driver of a document conversion: passes that begin again with a larger size when one was too
// small, and the report of how it ended.
#include <cstdio>
#include <cstring>

#include "orvel.h"
#include "runtime.h"
#include "xmlconv/font_map.h"
#include "xmlconv/pass.h"
#include "xmlconv/report.h"
#include "xmlconv/styles.h"

constexpr char kCaption[] = "XML Font Substitution";
constexpr char kMeterLabel[] = "Convert XML document to Unicode";
enum { kUtf8PathSize = 4096 };

// Failures of the driver.
enum : DWORD { kNotStarted = 891, kNoPath = 920, kNoFontMap = 1003, kBusy = 1004 };

struct DriverState {
    bool isBusy;  // what hears percentages could call in again
};
static DriverState gDriver;

// Doubles what was too small, and notes it.
static void Enlarge(RestartReason reason)
{
    switch (reason) {
    case kTagBufferFull:
        gConversionSizes.tag *= 2;
        AddConversionNote("Restarted: tag buffer increased to %d", int(gConversionSizes.tag));
        break;
    case kStylesFull:
        gStyles.capacity *= 2;
        AddConversionNote("Restarted: styles buffer increased to %d styles", gStyles.capacity);
        break;
    case kTextBufferFull:
        gConversionSizes.text *= 2;
        AddConversionNote("Restarted: text buffer increased to %d", int(gConversionSizes.text));
        break;
    case kSound: break;
    }
}

static void RunPasses(DocumentJob *job)
{
    DWORD shownPercent = 0;
    do {
        RunPass(job, &shownPercent);
        Enlarge(gReport.restart);
    } while (gReport.restart);
}

static DWORD ShowReport()
{
    char text[64];
    DWORD error = DWORD(gReport.error);
    if (gReport.notes)
        OrvelMsg(GetActiveWindow(), gReport.notes, kCaption, MB_ICONEXCLAMATION);
    FreeConversionNotes();
    if (!error)
        return 0;
    snprintf(text, sizeof text, "Fatal conversion error at line %d", int(error));
    OrvelMsg(GetActiveWindow(), text, kCaption, MB_ICONSTOP);
    return error;
}

// A map that the job names must be there; else the built-in one serves where there is no file.
static bool HasFontMap(const DocumentJob *job)
{
    if (!job->fontMap) {
        LoadFontMap();
        return true;
    }
    return ReadFontMap(OpenDocument(job->fontMap)) > 0 || SetConversionError(false, kNoFontMap);
}

static void WorkWithMeter(DocumentJob *job)
{
    if (!job->showPercent)
        StartOrvelMeter(GetDesktopWindow(), kMeterLabel);
    RunPasses(job);
    if (!job->showPercent)
        CloseOrvelMeter();
}

static DWORD RunJob(DocumentJob *job)
{
    gReport.error = 0;
    if (HasFontMap(job))
        WorkWithMeter(job);
    FreeFontMap();
    return ShowReport();
}

DWORD WINAPI ConvertDocument(DocumentJob *job)
{
    if (gDriver.isBusy)
        return kBusy;
    if (!Initialize())
        return kNotStarted;
    if (!job || !job->source)
        return kNoPath;
    gDriver.isBusy = true;
    DWORD failure = RunJob(job);
    gDriver.isBusy = false;
    return failure;
}

DWORD WINAPI ConvertFile(const char *source, const char *destination)
{
    char sourcePath[kUtf8PathSize], destinationPath[kUtf8PathSize];
    DocumentJob job = {};
    if (!source || !destination)
        return ConvertDocument(&job);  // a job without a source
    // a path that can't be taken over is one that can't be opened
    if (!Utf8OfPath(source, sourcePath, sizeof sourcePath) ||
        !Utf8OfPath(destination, destinationPath, sizeof destinationPath))
        *sourcePath = *destinationPath = 0;
    job.source = sourcePath;
    job.destination = destinationPath;
    return ConvertDocument(&job);
}
