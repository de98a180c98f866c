// Reading and writing of documents, block by block.
#include "documents/document_files.h"

#include "orvel.h"

bool GoOn(Document *document, uint64_t done, uint64_t all)
{
    DocumentJob *job = document->job;
    DWORD percent = all ? DWORD(done * 100 / all) : 0;
    if (job->shallStop && job->shallStop(job->context))
        return FailDocument(document, kFailStopped);
    if (percent <= document->shownPercent || percent > 100)
        return true;
    document->shownPercent = percent;
    if (job->showPercent)
        job->showPercent(job->context, percent);
    else
        UpdateOrvelMeter(percent);
    return true;
}

bool WriteReady(Document *document, Bytes *output, FILE *target, size_t least)
{
    if (output->length < least || output->length == 0)
        return true;
    bool done = !target || fwrite(output->data, 1, output->length, target) == output->length;
    output->length = 0;
    return done || FailDocument(document, kFailWrite);
}

size_t ReadInput(void *context, char *buffer, size_t size)
{
    FileReader *reader = static_cast<FileReader *>(context);
    if (!GoOn(reader->document, reader->done, reader->all))
        return 0;
    size_t count = fread(buffer, 1, size, reader->file);
    reader->done += count;
    return count;
}
