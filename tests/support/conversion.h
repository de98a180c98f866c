// A fixture that converts documents in a folder of its own, with the sizes of a fresh process.
#pragma once

#include "support/started_library.h"
#include "support/temp_folder.h"
#include "xmlconv/pass.h"
#include "xmlconv/styles.h"

static void WINAPI IgnorePercent(DWORD) {}

class ConversionTest : public StartedLibrary
{
  protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        folder_ = FreshFolder();
        gConversionSizes = {1024, 128000, 256 * 1024};
        gStyles.capacity = 256;
    }
    std::string Path(const char *name) const { return folder_ + "\\" + name; }
    // The converted document, without the carriage returns of the target's text files; the
    // failure's number when there is one. The meter stays away: its painting takes time.
    std::string Convert(const std::string &document)
    {
        std::string source = Path("in.xml"), destination = Path("out.xml");
        EXPECT_TRUE(WriteWholeFile(source, document));
        DocumentJob job = {};
        job.source = source.c_str();
        job.destination = destination.c_str();
        job.showPercent = IgnorePercent;
        DWORD failure = ConvertDocument(&job);
        if (failure)
            return std::to_string(failure);
        std::string converted = ReadWholeFile(destination);
        std::erase(converted, '\r');
        return converted;
    }
    std::string folder_;
};
