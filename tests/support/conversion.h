// Conversions for tests: of files through the export, in a folder of their own and with the sizes
// of a fresh process, and of texts in memory.
#pragma once

#include <cstring>

#include "support/started_library.h"
#include "support/temp_folder.h"
#include "xmlconv/convert.h"
#include "xmlconv/part.h"

static void WINAPI IgnorePercent(void *, DWORD) {}

class ConversionTest : public StartedLibrary
{
  protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        folder_ = FreshFolder();
        gConverter.sizes = kFirstSizes;
    }
    std::string Path(const char *name) const { return folder_ + "\\" + name; }
    // A job from one path to another. The meter stays away: its painting takes time.
    static DocumentJob JobOf(const std::string &source, const std::string &destination)
    {
        DocumentJob job = {};
        job.size = sizeof job;
        job.source = source.c_str();
        job.destination = destination.empty() ? nullptr : destination.c_str();
        job.showPercent = IgnorePercent;
        return job;
    }
    // The converted document, without the carriage returns of the target's text files; the
    // failure's number when there is one.
    std::string Convert(const std::string &document)
    {
        std::string source = Path("in.xml"), destination = Path("out.xml");
        EXPECT_TRUE(WriteWholeFile(source, document));
        DocumentJob job = JobOf(source, destination);
        DWORD failure = ConvertDocument(&job);
        if (failure)
            return std::to_string(failure);
        std::string converted = ReadWholeFile(destination);
        std::erase(converted, '\r');
        return converted;
    }
    std::string folder_;
};

// A conversion of parts in memory, with the built-in font map.
class MemoryConversion
{
  public:
    explicit MemoryConversion(const ConversionSizes &sizes = kFirstSizes)
    {
        LoadFontMap(&record.fonts);
        EXPECT_EQ(StartConversion(&record, &job_, sizes), 1);
    }
    ~MemoryConversion() { EndConversion(&record); }
    MemoryConversion(const MemoryConversion &) = delete;
    // The converted part, or the failure's number.
    std::string Convert(std::string_view part)
    {
        std::string converted;
        DocumentSink sink = {Append, &converted};
        bool done = ConvertPart(&record, {Read, &part, 0}, &sink);
        return done ? converted : std::to_string(record.report.error);
    }
    std::string Notes() const { return record.report.notes ? record.report.notes : ""; }
    Conversion record = {};

  private:
    static size_t Read(void *context, char *buffer, size_t size)
    {
        std::string_view *left = static_cast<std::string_view *>(context);
        size_t count = std::min(size, left->size());
        memcpy(buffer, left->data(), count);
        left->remove_prefix(count);
        return count;
    }
    static bool Append(void *context, const char *bytes, size_t length)
    {
        static_cast<std::string *>(context)->append(bytes, length);
        return true;
    }
    DocumentJob job_ = {};
};
