// Text from the code of one font to the current font code, which hosts call when text changes its
// font or is pasted, and the choice of the companion's keyboard. The companion's mode word holds
// both: the number of the font code, which is the keyboard's too, and whether the keyboard is on.
#include <cstring>

#include "fonts/font_table.h"
#include "frame/companion.h"
#include "frame/strings.h"
#include "orvel.h"

constexpr DWORD kCodeBits = 15, kKeyboardOn = 16;

// A name's beginning, and the keyboard that it chooses.
struct FixedKeyboard {
    const char *prefix;
    int number;
};

// Names that hosts have used since before the companion had names of its own; they come first.
constexpr FixedKeyboard kFixedKeyboards[] = {{"Enhl", 0}, {"Lao9", 1}};

int WINAPI ConvertText(const char *source, char *buffer, DWORD size, const char *font)
{
    if (!source || !buffer || strlen(source) >= size)
        return 0;
    CopyWhole(buffer, size, source);
    int code = FontType(font);
    int current = int(LaoMode(0, 0) & kCodeBits);
    if (code < 0 || code == current)
        return 1;
    RecodeString(buffer, size, code);
    PackLao(buffer);  // what one code writes in two signs may be one in the other
    if (current)
        RecodeString(buffer, size, -current);
    return 1;
}

int WINAPI GetKeybdNo(void)
{
    return int(LaoMode(0, 0) & (kCodeBits | kKeyboardOn));
}

int WINAPI SetKeybdNo(int number)
{
    if (number < 0)
        LaoMode(0, kKeyboardOn);  // off; the number stays
    else
        LaoMode((DWORD(number) & kCodeBits) | kKeyboardOn, kCodeBits | kKeyboardOn);
    return 1;
}

// Whether text begins with the whole of prefix, without regard to case.
static bool BeginsWith(const char *text, const char *prefix)
{
    char start[kFontCodeNameSize];
    size_t length = strlen(prefix);
    if (length >= sizeof start)
        return false;
    CopyCut(start, length + 1, text);
    return EqualNoCase(start, prefix);
}

// The number of a keyboard by the beginning of its name, -1 for an unknown one.
static int FindKeyboard(const char *name)
{
    for (const FixedKeyboard &keyboard : kFixedKeyboards)
        if (BeginsWith(name, keyboard.prefix))
            return keyboard.number;
    for (int code = 0; code < kMostFontCodes; ++code) {
        FontCodeRecord record = {};
        if (FontCodeData(code, &record) && BeginsWith(record.name, name))
            return code;
    }
    return -1;
}

int WINAPI SetKeyboard(const char *name)
{
    if (!name)
        return 0;
    int number = *name ? FindKeyboard(name) : -1;
    if (*name && number < 0)
        return 0;
    return SetKeybdNo(number);
}

int WINAPI SetLaoDefaultKeyboard(void)
{
    return LaoOn(1);
}
