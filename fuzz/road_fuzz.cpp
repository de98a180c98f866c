// The roads of the command: bytes of any kind come out as they came but for the marks, marked text
// is marked the same again, and a text that nobody calls Lao goes through the key operations whole.
#include "key_text.h"
#include "lao_text.h"
#include "start.h"
#include "utf8.h"

static std::string Mark(std::string_view source, DWORD flags, std::string_view mark)
{
    LaoText text;
    std::string output;
    Require(DivideLaoText(source, flags, &text), "every text can be divided");
    AppendMarked(text, mark, &output);
    return output;
}

static int KeepText(const char *text, char *output, DWORD size)
{
    return Romanize(text, output, size, "a font that nobody registered");
}

static bool IsLaoOrBreak(std::string_view text)
{
    return IsLaoAt(text.data(), text.size()) || text.starts_with(kZeroWidthSpace);
}

// Lao would come back as the bytes of its code, and break marks as hyphens. A blank takes their
// place, so that what stood around them doesn't grow together.
static std::string WithoutLao(std::string_view text)
{
    std::string other;
    for (; !text.empty(); text.remove_prefix(CharacterSize(text)))
        other += IsLaoOrBreak(text) ? " " : text.substr(0, CharacterSize(text));
    return other;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    StartedFont();
    std::string_view source(reinterpret_cast<const char *>(data) + 1, size - 1);
    DWORD flags = kInsertBreaks | (data[0] & kBothBreaks);
    std::string once = Mark(source, flags, kZeroWidthSpace);
    Require(Mark(once, flags, "") == Mark(source, flags, ""), "only marks are added");
    Require(Mark(once, flags, kZeroWidthSpace) == once, "marked text is marked the same");

    static const CodeTable codes = ReadCodeTable();
    std::string other = WithoutLao(source), kept;
    Require(ConvertKeyText(codes, KeyForm::kText, KeepText, other, false, &kept), "it fits");
    Require(kept == other, "what isn't Lao stays");
    return 0;
}
