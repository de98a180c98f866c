// Font codes by name.
#include "font_codes.h"

#include "orvel.h"
#include "runtime.h"

constexpr int kCodeNameSize = 32, kMostCodes = 16;

static std::string NameOfCode(int code)
{
    char name[kCodeNameSize];
    return GetFontCodeName(name, sizeof name, code) ? name : "";
}

std::string FontCodeName(int code)
{
    std::string name = NameOfCode(code);
    return name.empty() ? std::to_string(code) : name;
}

int FindFontCode(const std::string &name)
{
    for (int code = 0; code < kMostCodes; ++code) {
        std::string known = NameOfCode(code);
        bool isMeant =
            name == std::to_string(code) || CompareNoCase(name.c_str(), known.c_str()) == 0;
        if (!known.empty() && isMeant)
            return code;
    }
    return -1;
}

std::string ListFontCodes()
{
    std::string list;
    for (int code = 0; code < kMostCodes; ++code)
        if (!NameOfCode(code).empty())
            list += ", " + NameOfCode(code);
    return list;
}
