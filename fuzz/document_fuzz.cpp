// Documents: any bytes are converted or refused with a number, what is refused once is refused
// again, and a converted one converts again without a change when it has no legacy text. Sizes of
// buffers and blocks, and with them the fast roads, make no difference.
#include <algorithm>
#include <cstring>
#include <string_view>

#include "start.h"
#include "xmlconv/part.h"

static size_t ReadText(void *context, char *buffer, size_t size)
{
    std::string_view *left = static_cast<std::string_view *>(context);
    size_t count = std::min(size, left->size());
    memcpy(buffer, left->data(), count);
    left->remove_prefix(count);
    return count;
}

static bool AppendText(void *context, const char *bytes, size_t length)
{
    static_cast<std::string *>(context)->append(bytes, length);
    return true;
}

// The number of a failure, 0 without one, and the document.
struct Converted {
    int failure;
    std::string document;
};

static Converted Convert(std::string_view document, const ConversionSizes &sizes)
{
    Conversion conversion = {};
    DocumentJob job = {};
    Converted result = {};
    DocumentSink sink = {AppendText, &result.document};
    LoadFontMap(&conversion.fonts);
    Require(StartConversion(&conversion, &job, sizes), "there is memory");
    bool done = ConvertPart(&conversion, {ReadText, &document, 0}, &sink);
    result.failure = conversion.report.error;
    Require(done == !result.failure, "a failure has a number");
    EndConversion(&conversion);
    return result;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    StartedFont();
    std::string_view document(reinterpret_cast<const char *>(data), size);
    Converted plain = Convert(document, {.tag = 17, .text = 17, .styles = 1, .block = 1});
    Converted fast = Convert(document, kFirstSizes);
    Require(plain.failure == fast.failure && plain.document == fast.document,
            "sizes do not show in the result");
    if (fast.failure)
        return 0;
    Converted again = Convert(fast.document, kFirstSizes);
    Require(again.failure || again.document == fast.document,
            "converted documents stay as they are");
    return 0;
}
