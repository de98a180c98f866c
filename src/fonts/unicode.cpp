// Internal code to 16-bit Unicode and back, for hosts whose text is Unicode. Both ways work on
// parallel arrays, the host's characters and the library's bytes: a position without a mapping
// keeps what the other array holds there, so that text that isn't Lao passes through.
#include "fonts/unicode.h"

#include <array>
#include <cstring>
#include <span>

#include "fonts/font_table.h"
#include "fonts/unicode_tables.h"
#include "frame/messages.h"
#include "frame/strings.h"
#include "orvel.h"
#include "text/lao_code.h"

constexpr WCHAR kZeroWidthSpace = 0x200B;
constexpr DWORD kPrivateMode = 0x81, kPrivateMask = 0x8F;  // current font code 1 and bit 7

// What a byte becomes: 0 keeps the host's character, a second of 0 is none.
struct Mapping {
    WCHAR first, second;
};
typedef std::array<Mapping, 256> MappingTable;

// Overwrites one member of the mappings of whole ranges.
constexpr void SetRanges(MappingTable *table, std::span<const CharacterRange> ranges,
                         WCHAR Mapping::*to)
{
    for (const CharacterRange &range : ranges)
        for (int byte = range.low; byte <= range.high; ++byte)
            (*table)[byte].*to = WCHAR(range.first + range.step * (byte - range.low));
}

// First characters only; each of the two tables adds what it has beside them.
constexpr MappingTable BuildPlainTable()
{
    MappingTable table = {};
    for (int byte = 0; byte < 128; ++byte)
        table[byte + 128].first = WCHAR(kLaoUnicodeTable[byte]);
    table[kBreakMark].first = kZeroWidthSpace;
    return table;
}

constexpr MappingTable BuildMappings()
{
    MappingTable table = BuildPlainTable();
    SetRanges(&table, kLaoSecondChars, &Mapping::second);
    return table;
}

constexpr MappingTable BuildExtendedMappings()
{
    MappingTable table = BuildPlainTable();
    SetRanges(&table, kLaoExtendedChars, &Mapping::first);
    return table;
}

static constexpr MappingTable kMappings = BuildMappings();
static constexpr MappingTable kExtendedMappings = BuildExtendedMappings();

// Whether the font draws signs from the private-use characters.
static bool IsExtendedFont(int font)
{
    const FontRecord *record = FontAt(font);
    return record && record->extended;
}

static const MappingTable &ChooseMappings(int font)
{
    bool isPrivate = IsExtendedFont(font) && (LaoMode(0, 0) & kPrivateMask) == kPrivateMode;
    return isPrivate ? kExtendedMappings : kMappings;
}

// The number of characters, or -1 when they don't fit.
static int WriteCharacters(const uint8_t *text, const WCHAR *kept, WCHAR *characters,
                           DWORD capacity, const MappingTable &mappings)
{
    DWORD written = 0;
    for (size_t i = 0; text[i]; ++i) {
        const Mapping &mapping = mappings[text[i]];
        if (written == capacity)
            return -1;
        characters[written++] = mapping.first ? mapping.first : kept[i];
        if (!mapping.second)
            continue;
        if (written == capacity)
            return -1;
        characters[written++] = mapping.second;
    }
    return int(written);
}

// One byte can yield two characters, so that the output can overtake the input in the host's array:
// what is kept comes from a copy.
int WINAPI LaoToUnicode(const char *text, WCHAR *characters, DWORD capacity, int font)
{
    if (!text || !characters)
        return -1;
    size_t length = strlen(text);
    if (length == 0)
        return 0;
    WCHAR *kept = static_cast<WCHAR *>(CheckedGlobalAlloc(0, length * sizeof(WCHAR)));
    if (!kept)
        return -1;
    memcpy(kept, characters, length * sizeof(WCHAR));
    int written = WriteCharacters(AsBytes(text), kept, characters, capacity, ChooseMappings(font));
    GlobalFree(kept);
    return written;
}

// A row of the way back: characters from first on, their bytes; 0 in the table gives "?".
struct CharacterBlock {
    WCHAR first, last;
    const uint8_t *bytes;
};

constexpr CharacterBlock kBlocks[] = {
    {0x0E80, 0x0EDF, kUnicodeLaoTable},
    {0x2013, 0x2022, kUnicodePunctuationTable},
    {0xE000, 0xE01F, kUnicodePrivateTable},  // the last: extended fonts only
};

static_assert(std::size(kUnicodeLaoTable) == 0x0EDF - 0x0E80 + 1 &&
              std::size(kUnicodePunctuationTable) == 0x2022 - 0x2013 + 1 &&
              std::size(kUnicodePrivateTable) == 0xE01F - 0xE000 + 1);
static_assert(kBlocks[std::size(kBlocks) - 1].bytes == kUnicodePrivateTable);

uint8_t ByteOfCharacter(WCHAR character, uint8_t kept, bool extended)
{
    if (character == '-')
        return kRealHyphen;
    if (character < 0x80)
        return uint8_t(character);
    if (character == kZeroWidthSpace)
        return kBreakMark;
    size_t blocks = std::size(kBlocks) - (extended ? 0 : 1);
    for (size_t i = 0; i < blocks; ++i)
        if (character >= kBlocks[i].first && character <= kBlocks[i].last)
            return kBlocks[i].bytes[character - kBlocks[i].first];
    return kept;
}

int WINAPI UnicodeToLao(const WCHAR *characters, char *text, DWORD capacity, int font)
{
    if (!characters || !text)
        return -1;
    size_t length = strlen(text);
    if (length >= capacity)
        return -1;
    bool extended = IsExtendedFont(font);
    uint8_t *bytes = AsBytes(text);
    for (size_t i = 0; i < length; ++i) {
        uint8_t byte = ByteOfCharacter(characters[i], bytes[i], extended);
        bytes[i] = byte ? byte : '?';
    }
    PackLao(text);
    return int(strlen(text));
}
