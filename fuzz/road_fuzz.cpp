// The road of the command: bytes of any kind come out as they came but for the marks, and marked
// text is marked the same again.
#include "start.h"
#include "utf8.h"

static std::string Mark(std::string_view source, DWORD flags)
{
    LaoText text;
    std::string output;
    Require(DivideLaoText(StartedTrace(), source, flags, &text), "every text can be divided");
    AppendMarked(text, std::string(kZeroWidthSpace), &output);
    return output;
}

static std::string Unmark(std::string_view text)
{
    LaoText lao;
    ReadLaoText(StartedTrace(), text, &lao);
    return lao.clean;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    std::string_view source(reinterpret_cast<const char *>(data) + 1, size - 1);
    DWORD flags = 1 | (data[0] & 12);
    std::string once = Mark(source, flags);
    Require(Unmark(once) == Unmark(source), "only marks are added");
    Require(Mark(once, flags) == once, "marked text is marked the same");
    return 0;
}
