// Buffered output of the peers that rewrite XML.
#include "xml_output.h"

#include <cstdlib>
#include <cstring>

FILE *OpenOrExit(const char *path, const char *mode)
{
    FILE *file = fopen(path, mode);
    if (file)
        return file;
    perror(path);
    exit(1);
}

void OpenOutput(XmlOutput *output, const char *path)
{
    output->file = OpenOrExit(path, "wb");
    output->isTagOpen = false;
    output->used = 0;
}

static void Flush(XmlOutput *output)
{
    fwrite(output->block, 1, output->used, output->file);
    output->used = 0;
}

void CloseOutput(XmlOutput *output)
{
    Flush(output);
    fclose(output->file);
}

void PutBytes(XmlOutput *output, const char *text, size_t length)
{
    if (length > sizeof output->block - output->used)
        Flush(output);
    if (length > sizeof output->block) {
        fwrite(text, 1, length, output->file);
        return;
    }
    memcpy(output->block + output->used, text, length);
    output->used += length;
}

void PutString(XmlOutput *output, const char *text)
{
    PutBytes(output, text, strlen(text));
}

static const char *EntityOf(char c, bool isValue)
{
    switch (c) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '"': return isValue ? "&quot;" : nullptr;
    }
    return nullptr;
}

static void PutEscaped(XmlOutput *output, const char *text, size_t length, bool isValue)
{
    const char *start = text, *end = text + length;
    for (; text < end; ++text) {
        const char *entity = EntityOf(*text, isValue);
        if (!entity)
            continue;
        PutBytes(output, start, size_t(text - start));
        PutString(output, entity);
        start = text + 1;
    }
    PutBytes(output, start, size_t(end - start));
}

void PutValue(XmlOutput *output, const char *text, size_t length)
{
    PutBytes(output, "=\"", 2);
    PutEscaped(output, text, length, true);
    PutBytes(output, "\"", 1);
}

void PutText(XmlOutput *output, const char *text, size_t length)
{
    EndStartTag(output);
    PutEscaped(output, text, length, false);
}

void EndStartTag(XmlOutput *output)
{
    if (output->isTagOpen)
        PutBytes(output, ">", 1);
    output->isTagOpen = false;
}
