// Control files and the operations that follow them, on buffers of every size: nothing is written
// behind them (the sanitizer sees it), results are terminated, and what a table holds has no say in
// it. The first byte says whether the rest is a control file or a text.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "start.h"

// Syllables of all kinds, a cluster that is open, repeat sign and ellipsis, a silenced letter,
// digits, Latin.
static const char kFixedText[] =
    "\xA6\xBD\xAE\xBE\xA8\xA9\xF3 \xC5,\xA1\xB8\xAD\xC0\xA2\x9D\xBE \xA1\xBE\xEC\xFE\xC6\xE1"
    "ab-\x1F\xCE\xBE\xC0\xB4\xA8 \xFA\xA1.";

static const char *FontOf(uint8_t choice)
{
    return choice & 64 ? "unknown" : StartedFont().c_str();
}

static void RequireTerminated(const std::vector<char> &buffer)
{
    Require(memchr(buffer.data(), 0, buffer.size()), "the result is terminated");
}

// A text in a block of exactly its size.
static std::vector<char> TextBlock(const char *text, size_t size)
{
    std::vector<char> block(text, text + size);
    block.push_back(0);
    block.shrink_to_fit();
    return block;
}

static void Sort(const std::vector<char> &text, DWORD size, const char *font)
{
    std::vector<char> key(size);
    int done = SortString(text.data(), key.data(), size, font);
    Require(!done || size >= 8, "a small buffer is refused");
    if (size >= 8) {
        RequireTerminated(key);
        Require(memcmp(key.data(), "##", 2) == 0, "a key has its mark");
    }
}

static void Roman(const std::vector<char> &text, DWORD size, const char *font)
{
    std::vector<char> output(size);
    bool fits = strlen(text.data()) < size;
    int done = Romanize(text.data(), output.data(), size, font);
    Require(!done || fits, "what does not fit is refused");
    if (fits)
        RequireTerminated(output);
}

static void Email(const std::vector<char> &text, DWORD size, const char *font, DWORD state)
{
    std::vector<char> coded(size), decoded(size);
    if (strlen(text.data()) >= size)
        return;
    DWORD back = state;
    EncodeEmail(text.data(), coded.data(), size, font, &state);
    RequireTerminated(coded);
    DecodeEmail(coded.data(), decoded.data(), size, font, &back);
    RequireTerminated(decoded);
    DecodeEmail(text.data(), decoded.data(), size, font, &back);
    RequireTerminated(decoded);
    Require(state <= 1 && back <= 1, "a bracket is open or not");
}

static std::string KeyOfFixedText()
{
    std::vector<char> key(40 * sizeof kFixedText);
    SortString(kFixedText, key.data(), DWORD(key.size()), StartedFont().c_str());
    return key.data();
}

static void LoadFile(const uint8_t *data, size_t size)
{
    char name[] = "fuzz.key", font[8];
    std::string folder = std::string(getenv("XDG_DATA_HOME")) + "/Orvel",
                path = folder + "/" + name;
    std::filesystem::create_directories(folder);
    FILE *file = fopen(path.c_str(), "wb");
    Require(file != nullptr, "a file of the run");
    fwrite(data, 1, size, file);
    fclose(file);
    const char *content = reinterpret_cast<const char *>(data);
    Require(SetSortKey(name) == 1, "a bad file gives the built-in table");
    std::string byName = KeyOfFixedText();
    LoadSortKey(content, DWORD(size));
    Require(KeyOfFixedText() == byName, "a file's content makes the same table");
    SetRomanKey(name);  // in the small buffer of the load a table's text may not fit
    GetRomanFont(font, sizeof font);
    RequireTerminated(std::vector<char>(font, font + sizeof font));
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 4)
        return 0;
    StartedFont();
    DWORD room = DWORD(data[1] | (data[2] & 3) << 8);
    SetOrvelOption("b", data[3] & 12, 0);
    SetOrvelOption("s", data[3] & 1, 0);
    bool isFile = data[0] & 1;
    if (isFile)
        LoadFile(data + 4, size - 4);
    std::vector<char> text = isFile ? TextBlock(kFixedText, strlen(kFixedText))
                                    : TextBlock(reinterpret_cast<const char *>(data) + 4, size - 4);
    const char *font = FontOf(data[0]);
    Sort(text, room, font);
    Roman(text, room, font);
    Email(text, room, font, data[0] >> 1 & 1);
    Roman(text, 40 * DWORD(text.size()) + 40, font);
    return 0;
}
