// The dialog templates as the resource compiler left them, for the library and for this program. A
// control that moves, changes its style or its place in the order is another dialog to its user and
// to the code that counts on it.
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>
#include <windows.h>

#include "support/temp_folder.h"

struct Control {
    int id;
    std::string className;  // in capitals, as the compiler writes it
    std::string text;
    int x, y, width, height;  // in dialog units
    DWORD style, exStyle = 0;
};

struct Dialog {
    const char *name;
    bool isExtended;
    std::string caption;
    int pointSize;
    std::string face;
    int x, y, width, height;
    DWORD style;
    std::vector<Control> controls;
};

// clang-format off
static const Dialog kDialogs[] = {
    {"METER", false, "", 8, "MS Sans Serif", 58, 36, 204, 74,
     0x900002C4, {
        {102, "STATIC", "Process caption", 5, 28, 193, 8, 0x50020001},
        {2, "BUTTON", "Cancel", 79, 57, 46, 12, 0x50010000},
        {101, "MSCTLS_PROGRESS32", "Progress1", 38, 39, 127, 14, 0x50800001},
    }},
    {"OPTIONS", false, "Orvel: Options", 8, "MS Sans Serif", 0, 0, 271, 170,
     0x90C808C4, {
        {120, "BUTTON", "&Dictionaries", 11, 9, 82, 48, 0x50000007},
        {121, "BUTTON", "Main", 23, 18, 68, 12, 0x50030003},
        {122, "BUTTON", "User-defined", 23, 30, 68, 12, 0x50010003},
        {123, "BUTTON", "Old spellings", 23, 42, 68, 12, 0x50010003},
        {110, "BUTTON", "Lao text &breaks between", 103, 9, 99, 48, 0x50000007},
        {112, "BUTTON", "Syllables", 118, 18, 55, 12, 0x50030009},
        {113, "BUTTON", "Words", 118, 30, 55, 12, 0x50000009},
        {114, "BUTTON", "Both", 118, 42, 55, 12, 0x50000009},
        {130, "BUTTON", "&Old spelling options", 11, 64, 82, 48, 0x50000007},
        {131, "BUTTON", "Prompt to change", 20, 73, 72, 12, 0x50030009},
        {132, "BUTTON", "Automatic change", 20, 84, 72, 12, 0x50000009},
        {133, "BUTTON", "Don't change", 20, 95, 72, 12, 0x50000009},
        {117, "BUTTON", "&Romanized Lao text breaks", 103, 64, 99, 48, 0x50000007},
        {141, "BUTTON", "None", 118, 73, 55, 12, 0x50030009},
        {142, "BUTTON", "Hidden", 118, 84, 55, 12, 0x50000009},
        {143, "BUTTON", "Visible", 118, 95, 55, 12, 0x50000009},
        {-1, "BUTTON", "Lao &sort mode", 11, 120, 82, 40, 0x50000007},
        {1017, "BUTTON", "Vowels last", 20, 131, 72, 10, 0x50030009},
        {1018, "BUTTON", "Natural", 20, 144, 72, 10, 0x50000009},
        {-1, "BUTTON", "&Font substitution", 103, 120, 99, 40, 0x50000007},
        {1019, "BUTTON", "Auto", 118, 131, 58, 10, 0x50030009},
        {1020, "BUTTON", "User selected", 118, 144, 58, 10, 0x50000009},
        {1, "BUTTON", "OK", 211, 13, 50, 14, 0x50030001},
        {2, "BUTTON", "Cancel", 211, 31, 50, 14, 0x50010000},
        {9, "BUTTON", "&Help", 211, 55, 50, 14, 0x50010000},
        {118, "BUTTON", "&Word list...", 211, 82, 50, 14, 0x58012000},
        {109, "BUTTON", "&Keyboards...", 211, 124, 50, 14, 0x50010000},
        {108, "BUTTON", "&Fonts...", 211, 145, 50, 14, 0x50010000},
    }},
    {"KEYBOARDS", false, "Select keyboards to use", 8, "MS Sans Serif", 0, 0, 188, 110,
     0x90C808C4, {
        {1, "BUTTON", "OK", 90, 89, 42, 14, 0x50010001},
        {2, "BUTTON", "Cancel", 139, 89, 42, 14, 0x50010000},
        {1029, "BUTTON", "Orvel", 12, 16, 77, 13, 0x50010003},
        {1030, "BUTTON", "Unicode", 12, 28, 77, 13, 0x50010003},
        {1031, "BUTTON", "Lao2000", 12, 40, 77, 13, 0x50010003},
        {1032, "BUTTON", "Lao95", 12, 52, 77, 13, 0x50010003},
        {1033, "BUTTON", "IBM-STENO", 12, 64, 77, 13, 0x50010003},
        {1034, "BUTTON", "Lao ISO", 12, 76, 77, 13, 0x50010003},
        {-1, "STATIC", "Font &Codes", 7, 7, 62, 9, 0x50020000},
        {1035, "BUTTON", "Thai", 12, 88, 70, 13, 0x50010003},
        {1037, "COMBOBOX", "", 114, 18, 67, 65, 0x50210002},
        {-1, "STATIC", "Keyboard &Hot Key", 114, 7, 67, 8, 0x50020000},
    }},
    {"FONTS", true, "Orvel: Set font properties", 8, "MS Sans Serif", 0, 0, 247, 143,
     0x90C808C4, {
        {-1, "STATIC", "Font &name:", 10, 36, 36, 8, 0x50020000},
        {108, "COMBOBOX", "", 66, 36, 108, 98, 0x50210003},
        {1011, "COMBOBOX", "", 66, 36, 108, 98, 0x50210142},
        {1003, "EDIT", "", 66, 36, 108, 12, 0x50810080},
        {-1, "STATIC", "Font &code:", 10, 61, 35, 8, 0x50020000},
        {1004, "COMBOBOX", "", 66, 60, 108, 65, 0x58210003},
        {-1, "STATIC", "&Substitute font:", 10, 89, 48, 8, 0x50020000},
        {1005, "COMBOBOX", "", 66, 87, 108, 57, 0x58210102},
        {-1, "STATIC", "Scale &factor (%):", 10, 114, 52, 8, 0x50020000},
        {124, "EDIT", "", 66, 112, 32, 12, 0x58810080},
        {-1, "STATIC", "E&xtended Unicode:", 103, 114, 61, 8, 0x50020000},
        {1020, "BUTTON", "", 163, 113, 10, 10, 0x58010023},
        {1, "BUTTON", "OK", 188, 36, 50, 14, 0x50010001},
        {2, "BUTTON", "Cancel", 188, 52, 50, 14, 0x50010000},
        {9, "BUTTON", "&Help", 188, 68, 50, 14, 0x50010000},
        {104, "BUTTON", "&Add", 187, 87, 50, 14, 0x50010000},
        {109, "BUTTON", "&Modify", 187, 103, 50, 14, 0x50010000},
        {105, "BUTTON", "&Delete", 187, 119, 50, 14, 0x50010000},
        {-1, "STATIC", "Make sure that the font code you specify is correct"
         " for the font you are adding or modifying!", 41, 7, 165, 20, 0x50020001, 0x20000},
    }},
    {"SEARCHDLG", false, "Replace Lao", 8, "MS Sans Serif", 22, 21, 253, 70,
     0x90C80AC4, {
        {-1, "STATIC", "Find what:", 4, 7, 31, 8, 0x50000000},
        {101, "EDIT", "", 51, 6, 100, 18, 0x50830000},
        {121, "STATIC", "Replace by:", 4, 35, 47, 8, 0x50000000},
        {102, "EDIT", "", 51, 34, 100, 18, 0x50830000},
        {104, "STATIC", "&Direction", 54, 36, 30, 8, 0x50000000},
        {103, "COMBOBOX", "", 88, 34, 37, 33, 0x50030003},
        {105, "BUTTON", "Search ignoring breaks", 53, 56, 98, 12, 0x50030003},
        {1, "BUTTON", "Find Next", 159, 5, 41, 13, 0x50030000},
        {2, "BUTTON", "Close", 205, 5, 41, 13, 0x50030001},
        {108, "BUTTON", "Replace...", 159, 21, 41, 13, 0x50030000},
        {109, "BUTTON", "Replace All", 205, 21, 41, 13, 0x50030000},
        {9, "BUTTON", "Help", 183, 37, 41, 13, 0x50030000},
    }},
    {"SPELL", false, "Spelling check: Lao", 8, "MS Sans Serif", 10, 19, 254, 70,
     0x90C80AC4, {
        {102, "EDIT", "", 45, 35, 110, 18, 0x50810080},
        {1, "BUTTON", "Ignore", 161, 6, 41, 13, 0x50030001},
        {104, "BUTTON", "Ignore All", 208, 6, 41, 13, 0x50010000},
        {105, "BUTTON", "Change", 161, 22, 41, 13, 0x58030000},
        {106, "BUTTON", "Change All", 208, 22, 41, 13, 0x58010000},
        {120, "BUTTON", "Dictionary...", 161, 38, 41, 13, 0x58030000},
        {9, "BUTTON", "Help", 208, 38, 41, 13, 0x50030000},
        {2, "BUTTON", "Cancel", 184, 54, 41, 13, 0x50030000},
        {103, "BUTTON", "Expand text", 47, 54, 67, 14, 0x50030003},
        {119, "STATIC", "Bad spelling:", 2, 8, 42, 8, 0x50020000},
        {101, "EDIT", "", 45, 7, 110, 18, 0x50800180},
        {-1, "STATIC", "Change to:", 2, 36, 42, 8, 0x50020000},
    }},
    {"SORTING", false, "Lao Sort", 8, "MS Sans Serif", 7, 16, 221, 131,
     0x90C800C4, {
        {104, "BUTTON", "&Sort By", 5, 8, 63, 91, 0x50000007},
        {101, "COMBOBOX", "", 13, 20, 47, 56, 0x50210003},
        {-1, "STATIC", "Ty&pe:", 10, 41, 37, 9, 0x50020000},
        {102, "COMBOBOX", "", 13, 52, 47, 60, 0x50210003},
        {-1, "STATIC", "&Order:", 10, 67, 37, 9, 0x50020000},
        {103, "COMBOBOX", "", 13, 78, 47, 33, 0x50210003},
        {105, "BUTTON", "Then &By", 79, 8, 63, 91, 0x50000007},
        {106, "COMBOBOX", "", 87, 20, 47, 56, 0x50210003},
        {-1, "STATIC", "Ty&pe:", 84, 41, 37, 9, 0x50020000},
        {107, "COMBOBOX", "", 87, 52, 47, 60, 0x50210003},
        {-1, "STATIC", "&Order:", 84, 67, 37, 9, 0x50020000},
        {108, "COMBOBOX", "", 87, 78, 47, 33, 0x50210003},
        {109, "BUTTON", "Then B&y", 154, 8, 63, 91, 0x50000007},
        {110, "COMBOBOX", "", 162, 20, 47, 56, 0x50210003},
        {-1, "STATIC", "Ty&pe:", 159, 41, 37, 9, 0x50020000},
        {111, "COMBOBOX", "", 162, 52, 47, 59, 0x50210003},
        {-1, "STATIC", "&Order:", 159, 67, 37, 9, 0x50020000},
        {112, "COMBOBOX", "", 162, 78, 47, 33, 0x50210003},
        {113, "BUTTON", "Skip &header", 6, 103, 53, 12, 0x50010003},
        {114, "BUTTON", "Keep &keys", 6, 116, 53, 12, 0x50010003},
        {1, "BUTTON", "OK", 63, 111, 41, 13, 0x50010001},
        {2, "BUTTON", "Cancel", 113, 111, 41, 13, 0x50010000},
        {9, "BUTTON", "Help", 169, 111, 41, 13, 0x50010000},
    }},
    {"USERDICT", false, "Lao User Dictionary", 8, "MS Sans Serif", 0, 0, 179, 134,
     0x90C808C4, {
        {-1, "STATIC", "Lao word", 10, 7, 51, 8, 0x50020000},
        {101, "COMBOBOX", "", 10, 19, 108, 107, 0x50210001},
        {102, "BUTTON", "&Add", 128, 6, 42, 14, 0x50010000},
        {103, "BUTTON", "&Delete", 128, 24, 42, 14, 0x50010000},
        {2, "BUTTON", "&Close", 128, 42, 42, 14, 0x50010001},
        {9, "BUTTON", "&Help", 128, 60, 42, 14, 0x50010000},
    }},
    {"FONTPICK", true, "Orvel: Font Substitution", 8, "MS Sans Serif", 0, 0, 187, 95,
     0x90C808C4, {
        {-1, "STATIC", "Select a font to use"
         " from the list below:", 23, 7, 140, 10, 0x50020001, 0x20000},
        {-1, "STATIC", "&Replace:", 7, 25, 71, 9, 0x50020000},
        {106, "EDIT", "", 7, 35, 79, 12, 0x50810080},
        {-1, "STATIC", "&By", 100, 25, 80, 9, 0x50020000},
        {1026, "COMBOBOX", "", 100, 35, 80, 70, 0x50210102},
        {-1, "STATIC", "When to apply:", 7, 64, 78, 9, 0x50020000},
        {1024, "BUTTON", "&Always", 7, 75, 51, 13, 0x50010000},
        {1023, "BUTTON", "&Selection only", 66, 75, 55, 13, 0x50010000},
        {1022, "BUTTON", "&Once only", 129, 75, 51, 13, 0x50010000},
    }},
    {"EDITLAO", false, "", 11, "Saysettha Lao", 0, 0, 307, 11,
     0x90800844, {
        {1027, "EDIT", "", 0, 0, 307, 12, 0x50010080},
    }},
};
// clang-format on

// Goes through one template; behind its end there are zeros, and `at` shows it.
struct TemplateBytes {
    std::string bytes;
    size_t at = 0;
    WORD Word()
    {
        WORD word = 0;
        if (at + 2 <= bytes.size())
            memcpy(&word, &bytes[at], 2);
        at += 2;
        return word;
    }
    DWORD Long()
    {
        DWORD low = Word();
        return low | DWORD(Word()) << 16;
    }
    // A number in place of a text shows as the characters of 0xFFFF and the number.
    std::string Text()
    {
        std::string text;
        while (WORD character = Word())
            text += character < 128 ? std::string(1, char(character)) : std::to_string(character);
        return text;
    }
    void Align() { at = (at + 3) & ~size_t(3); }
};

// All dialog templates of a compiled resource file, by their names.
static std::map<std::string, std::string> ReadTemplates(const std::string &file)
{
    std::map<std::string, std::string> templates;
    TemplateBytes entry = {file};
    while (entry.at + 8 < file.size()) {
        size_t begin = entry.at, size = entry.Long(), head = entry.Long();
        if (entry.Long() == 0x0005FFFF)
            templates[entry.Text()] = file.substr(begin + head, size);
        entry.at = begin + head + size;
        entry.Align();
    }
    return templates;
}

static std::string Show(const Dialog &dialog)
{
    char text[400];
    snprintf(text, sizeof text, "%s %s '%s' %d,%d,%d,%d %08X %d '%s' of %zu", dialog.name,
             dialog.isExtended ? "extended" : "plain", dialog.caption.c_str(), dialog.x, dialog.y,
             dialog.width, dialog.height, unsigned(dialog.style), dialog.pointSize,
             dialog.face.c_str(), dialog.controls.size());
    return text;
}

static std::string Show(const Control &control)
{
    char text[400];
    snprintf(text, sizeof text, "%d %s '%s' %d,%d,%d,%d %08X %X", control.id,
             control.className.c_str(), control.text.c_str(), control.x, control.y, control.width,
             control.height, unsigned(control.style), unsigned(control.exStyle));
    return text;
}

constexpr DWORD kPlainFont = 0x01000190;  // weight 400, upright, character set 1 (the system's)

// Reads the head and leaves the controls to be read; their number stands in the size of `controls`.
static Dialog ReadDialog(const char *name, TemplateBytes *from)
{
    Dialog dialog = {};
    dialog.name = name;
    dialog.isExtended = from->Long() == 0xFFFF0001;
    from->at = dialog.isExtended ? 8 : 0;  // the version and the number of a help topic
    DWORD exStyle = from->Long();
    dialog.style = from->Long();
    if (!dialog.isExtended)
        std::swap(dialog.style, exStyle);
    EXPECT_EQ(exStyle, 0u) << name;
    dialog.controls.resize(from->Word());
    for (int *side : {&dialog.x, &dialog.y, &dialog.width, &dialog.height})
        *side = short(from->Word());
    EXPECT_EQ(from->Text() + from->Text(), "") << name << ": menu and class";
    dialog.caption = from->Text();
    dialog.pointSize = from->Word();
    EXPECT_EQ(dialog.isExtended ? from->Long() : kPlainFont, kPlainFont) << name;
    dialog.face = from->Text();
    return dialog;
}

static Control ReadControl(bool isExtended, TemplateBytes *from)
{
    Control control = {};
    from->Align();
    EXPECT_EQ(isExtended ? from->Long() : 0, 0u) << "no help topic";
    DWORD first = from->Long(), second = from->Long();
    control.style = isExtended ? second : first;
    control.exStyle = isExtended ? first : second;
    for (int *side : {&control.x, &control.y, &control.width, &control.height})
        *side = short(from->Word());
    control.id = isExtended ? int(from->Long()) : short(from->Word());
    control.className = from->Text();
    control.text = from->Text();
    EXPECT_EQ(from->Word(), 0) << "no creation data";
    return control;
}

TEST(Templates, AreTheDialogsToTheUnit)
{
    char program[MAX_PATH];
    ASSERT_TRUE(GetModuleFileNameA(nullptr, program, sizeof program));
    std::string linked = ReadWholeFile(program);
    std::map<std::string, std::string> templates = ReadTemplates(ReadWholeFile(ORVEL_TEMPLATES));
    EXPECT_EQ(templates.size(), std::size(kDialogs));
    for (const Dialog &dialog : kDialogs) {
        TemplateBytes from = {templates[dialog.name]};
        ASSERT_FALSE(from.bytes.empty()) << dialog.name;
        EXPECT_NE(linked.find(from.bytes), linked.npos) << dialog.name << " as it was linked";
        ASSERT_EQ(Show(ReadDialog(dialog.name, &from)), Show(dialog));
        for (const Control &control : dialog.controls)
            EXPECT_EQ(Show(ReadControl(dialog.isExtended, &from)), Show(control)) << dialog.name;
        EXPECT_EQ(from.at, from.bytes.size()) << dialog.name << ": its end";
    }
}
