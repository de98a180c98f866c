// The seven font codes: the library asks for their names, break characters and flags, and stores
// the flags when the user chooses keyboards. Only these are the user's: they are kept as one binary
// value in the registry, a byte for each code, and read back at the first question.
#include "font_codes.h"
#include "lao_signs.h"
#include "vesk.h"
#include <cstring>
#include <iterator>

static_assert(sizeof(FontCodeRecord) == 32);  // hosts give 32 bytes

// clang-format off
static const FontCodeRecord kFontCodes[] = {   // ORDER FontCode
    // flags, break character, name
    {0, kBreakMark,   "Orvel"},
    {0, kBreakMark,   "Unicode"},
    {0, kFontBreak,   "Lao2000"},
    {0, kFontBreak,   "Lao95"},
    {0, kPublicBreak, "IBM-STENO"},
    {0, kPublicBreak, "Lao ISO"},
    {0, kBreakMark,   "Thai"},
};
// clang-format on
static_assert(std::size(kFontCodes) == kFontCodeCount);

constexpr const char *kRegistryKey = "Software\\Orvel\\Orvel7";
constexpr const char *kRegistryValue = "FontCodes";

// Lives until the module is unloaded, or the flags are to be read again.
struct FontCodeState {
    bool isRead;  // the records are filled
    FontCodeRecord records[kFontCodeCount];
};
static FontCodeState gFontCodes;

// A missing or odd value leaves all codes enabled.
static void ReadFlags(FontCodeState *state)
{
    memcpy(state->records, kFontCodes, sizeof kFontCodes);
    state->isRead = true;
    HKEY key;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, kRegistryKey, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return;
    BYTE flags[kFontCodeCount];
    DWORD type = 0, size = sizeof flags;
    LONG result = RegQueryValueExA(key, kRegistryValue, nullptr, &type, flags, &size);
    RegCloseKey(key);
    if (result != ERROR_SUCCESS || type != REG_BINARY || size != sizeof flags)
        return;
    for (int code = 0; code < kFontCodeCount; ++code)
        state->records[code].flags = flags[code];
}

// All flags as one value, so that a reader never sees some from before and some from after.
static DWORD StoreFlags(const FontCodeState *state)
{
    BYTE flags[kFontCodeCount];
    for (int code = 0; code < kFontCodeCount; ++code)
        flags[code] = state->records[code].flags;
    HKEY key;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, kRegistryKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &key, nullptr) != ERROR_SUCCESS)
        return 0;
    LONG result = RegSetValueExA(key, kRegistryValue, 0, REG_BINARY, flags, sizeof flags);
    RegCloseKey(key);
    return result == ERROR_SUCCESS;
}

// The code's record, or null for another number.
static FontCodeRecord *FindFontCode(LONG code)
{
    if (code < 0 || code >= kFontCodeCount)
        return nullptr;
    if (!gFontCodes.isRead)
        ReadFlags(&gFontCodes);
    return &gFontCodes.records[code];
}

void ForgetFontCodes()
{
    gFontCodes = {};
}

DWORD WINAPI FontCodeData(LONG code, FontCodeRecord *record)
{
    const FontCodeRecord *found = record ? FindFontCode(code) : nullptr;
    if (!found)
        return 0;
    *record = *found;
    return 1;
}

DWORD WINAPI SetFontCodeData(LONG code, const FontCodeRecord *record)
{
    FontCodeRecord *found = record ? FindFontCode(code) : nullptr;
    if (!found)
        return 0;
    *found = *record;
    found->name[sizeof found->name - 1] = 0;  // a host's record may lack it
    return StoreFlags(&gFontCodes);
}
