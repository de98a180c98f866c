// Nearly all strings have one font, so a number for each is enough; the others are found by a small
// hash.
#include "documents/shared_strings.h"

#include <cstdlib>

constexpr size_t kMostStrings = 64 * 1024 * 1024;

void FreeSharedStrings(SharedStrings *strings)
{
    free(strings->fonts);
    free(strings->copies);
    FreeBytes(&strings->texts);
    *strings = {};
}

static int *SlotOf(const SharedStrings &strings, int string)
{
    return const_cast<int *>(&strings.slots[unsigned(string) % kCopySlots]);
}

void AddCopy(SharedStrings *strings, int string, int font, int code)
{
    void *copies = strings->copies;
    if (!GrowArray(&copies, &strings->copyRoom, strings->copyCount + 1, sizeof(StringCopy))) {
        strings->failed = true;
        return;
    }
    strings->copies = static_cast<StringCopy *>(copies);
    int *slot = SlotOf(*strings, string);
    strings->copies[strings->copyCount++] = {string, code, font, kNoCopy, 0, 0, *slot - 1};
    *slot = int(strings->copyCount);
}

static bool GrowFonts(SharedStrings *strings, size_t count)
{
    void *fonts = strings->fonts;
    if (count <= strings->count)
        return true;
    if (count > kMostStrings || !GrowArray(&fonts, &strings->room, count, sizeof(int)))
        return false;
    strings->fonts = static_cast<int *>(fonts);
    while (strings->count < count)
        strings->fonts[strings->count++] = 0;
    return true;
}

bool IsShown(const SharedStrings &strings, int string)
{
    return string >= 0 && size_t(string) < strings.count && strings.fonts[string];
}

int FontOfString(const SharedStrings &strings, int string)
{
    return IsShown(strings, string) ? strings.fonts[string] - 1 : 0;
}

void ShowString(SharedStrings *strings, int string, int font)
{
    if (strings->failed || !GrowFonts(strings, size_t(string) + 1))
        strings->failed = true;
    else
        strings->fonts[string] = font + 1;
}

StringCopy *FindCopy(const SharedStrings &strings, int string, int code)
{
    for (int i = *SlotOf(strings, string) - 1; i >= 0; i = strings.copies[i].next)
        if (strings.copies[i].string == string && strings.copies[i].code == code)
            return &strings.copies[i];
    return nullptr;
}

bool HasCopies(const SharedStrings &strings, int string)
{
    for (int i = *SlotOf(strings, string) - 1; i >= 0; i = strings.copies[i].next)
        if (strings.copies[i].string == string)
            return true;
    return false;
}

void KeepText(SharedStrings *strings, int string, std::string_view text)
{
    size_t start = strings->texts.length;
    AppendBytes(&strings->texts, text);
    strings->failed = strings->failed || strings->texts.failed;
    for (int i = *SlotOf(*strings, string) - 1; i >= 0; i = strings->copies[i].next) {
        StringCopy *copy = &strings->copies[i];
        if (copy->string != string)
            continue;
        copy->start = start;
        copy->length = text.size();
        copy->place = 0;  // it gets one
    }
}

void PlaceCopies(SharedStrings *strings, size_t listed)
{
    strings->listed = listed;
    for (size_t i = 0; i < strings->copyCount; ++i)
        if (strings->copies[i].place != kNoCopy)
            strings->copies[i].place = int(listed + strings->added++);
}
