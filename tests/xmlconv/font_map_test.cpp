// The font map and its file, and text of each kind of legacy font through the pipeline.
#include "xmlconv/font_map.h"

#include "support/conversion.h"
#include "support/guarded.h"
#include "xmlconv/translate.h"

class ConverterFonts : public StartedLibrary
{
  protected:
    void TearDown() override
    {
        RemoveDataFile("FontList.ini");
        FreeFontMap(&map_);
        StartedLibrary::TearDown();
    }
    std::string Find(const char *name)
    {
        const FontMapEntry *entry = FindFontMapEntry(&map_, name);
        return entry ? std::to_string(entry->conversionType) + " " + entry->unicodeName : "none";
    }
    FontMap map_ = {};
};

struct MapRow {
    std::string file;
    int count;
    std::string name, found;
};

static const std::string k70(70, 'n'), k63(63, 'n');
static const MapRow kMapRows[] = {
    {"My Font,3,My Unicode\n", 1, "my font", "3 My Unicode"},
    {"My Font,3,My Unicode", 1, "Saysettha Lao", "none"},
    {" My Font ,, 3 ,My Unicode\t, rest\r\n", 1, "My Font", "3 My Unicode"},
    {",A,x,B\n", 1, "A", "0 B"},
    {"\xEF\xBB\xBF"
     "A,3,B\n",
     1, "A", "3 B"},
    {"A,1,B\nA,2,C\n", 2, "a", "1 B"},
    {"; a comment\n\nA,1\n", 38, "SAYSETTHA LAO", "0 Saysettha OT"},
    {"", 38, "Saysettha Lao", "0 Saysettha OT"},
    {k70 + ",1," + k70 + "\n", 1, k63, "1 " + k63},
    {"A,1,B\x1F\nA,1,\xE9\nA,2,C\n", 1, "A", "2 C"},  // what no document can hold
    {"A,1," + std::string(62, 'n') + "ກ\n", 1, "A", "1 " + std::string(62, 'n')},
    {"A,99999999999,B\n", 1, "A", std::to_string(int(strtol("99999999999", nullptr, 10))) + " B"},
};

TEST_F(ConverterFonts, LinesOfTheFile)
{
    for (const MapRow &row : kMapRows) {
        WriteDataFile("FontList.ini", row.file);
        EXPECT_EQ(LoadFontMap(&map_), row.count) << row.file;
        EXPECT_EQ(Find(row.name.c_str()), row.found) << row.file;
    }
}

TEST_F(ConverterFonts, HostileFilesGiveAMapAllTheSame)
{
    std::string many;
    for (int i = 0; i < 5000; ++i)
        many += "Font " + std::to_string(i) + ",1,Unicode\n";
    for (const std::string &content :
         {std::string(1 << 20, ','), std::string(1 << 20, 'x'), std::string(5000, '\0'), many}) {
        WriteDataFile("FontList.ini", content);
        EXPECT_GE(LoadFontMap(&map_), 38);
    }
    EXPECT_EQ(Find("Font 4999"), "1 Unicode");
}

struct RenameRow {
    std::string source, written;  // empty: as the source
};

static const RenameRow kRenameRows[] = {
    {"<w:rFonts w:fareast=\"A\"/>", "<w:rFonts w:fareast=\"B&quot;&lt;&amp;'&gt;&lt;&amp;amp\"/>"},
    {"<W:RFONTS W:CS=\"alice_0\"/>", "<W:RFONTS W:CS=\"Alice0 Unicode\"/>"},
    {"<wx:font wx:val=\"alice_0\"/>", "<wx:font wx:val=\"Alice0 Unicode\"/>"},
    {"<w:font w:name=\"ALICE_0\">", "<w:font w:name=\"Alice0 Unicode\">"},
    {"<w:font w:name=\"Arial\"/>", ""},
    {"<w:font w:other=\"alice_0\" w:name/>", ""},
    {"<w:t w:name=\"alice_0\"/>", ""},
};

// Whatever a map says, what is written can be read again.
TEST_F(ConverterFonts, NamesAreReplacedWhereTheyNameFonts)
{
    WriteDataFile("FontList.ini", "A,0,B\"<&'>&lt;&amp;amp\nalice_0,3,Alice0 Unicode\n");
    for (const RenameRow &row : kRenameRows)
        EXPECT_EQ(MemoryConversion().Convert(row.source),
                  row.written.empty() ? row.source : row.written);
}

// ---- text ----

static std::string Convert(const std::string &text, int type, size_t size = 1000)
{
    Guarded<char> room(size);
    Guarded<WCHAR> wide(size);
    FontMapEntry entry = {"", type, ""};
    if (text.size() > size)
        return "-";
    TextRoom place = {room.data(), wide.data(), size};
    long length = ConvertTextNode(place, text.data(), text.size(), entry);
    return length < 0 ? std::to_string(length) : std::string(room.data(), size_t(length));
}

struct TextRow {
    int type;
    const char *text, *converted;
};

// What the made-up documents don't hold.
static const TextRow kTextRows[] = {
    {0, "a-Œ", "a\u200B-"},   // the hyphen's byte is a break, and 0x8C the hyphen
    {1, "-–", "-\u200B"},     // 0x96 is the break
    {0, "Ωⓐ", "O\u200B"},     // the code page's best fit, and what has none
    {2, "¢&amp;", "?&amp;"},  // no sign in that font
    {3, "d\t\u00A0é", "ກ\t\u00A0?"},
    {3, "&amp;", "5ັທຍວ"},  // references are letters like others
    {-1, "¡a", "ກa"},
    {1, "Ç", "Ç"},  // no sign: the byte itself
};

TEST_F(ConverterFonts, TextOfEachType)
{
    for (const TextRow &row : kTextRows)
        EXPECT_EQ(Convert(row.text, row.type), row.converted) << row.type << " " << row.text;
}

// Every room from nothing up: converted whole, or told to be too long, and nothing behind the room
// is touched. A byte may give two signs of three bytes each.
TEST_F(ConverterFonts, TextStaysInItsRoom)
{
    const std::string text = "+d+d+", whole = "ໍ່ກໍ່ກໍ່";
    for (size_t size = 0; size < 40; ++size) {
        std::string converted = Convert(text, 3, size);
        EXPECT_EQ(converted, size < text.size() ? "-" : size < whole.size() ? "-1" : whole) << size;
    }
}
