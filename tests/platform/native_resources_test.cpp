// Fonts that are in use; and resource files that are cut or damaged: a dialog comes or doesn't, and
// nothing behind the bytes is read. The bytes stand in a block of exactly their size, so that the
// sanitizer sees a step too far.
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "native/system/resources.h"
#include "support/temp_folder.h"

static INT_PTR CALLBACK NoProc(HWND, UINT, WPARAM, LPARAM)
{
    return 0;
}

// Whether the dialog opened; whatever else came with it is destroyed too.
static bool Opens(const std::string &file)
{
    auto module = HMODULE(LONG_PTR(0x1234));
    auto bytes = std::make_unique<char[]>(file.size());
    memcpy(bytes.get(), file.data(), file.size());
    EXPECT_TRUE(AddModuleResources(module, bytes.get(), file.size()));
    HWND dialog = nullptr;
    for (const char *name : {"kinds", "two"}) {
        dialog = CreateDialogParamA(module, name, nullptr, NoProc, 0);
        if (dialog)
            DestroyWindow(dialog);
    }
    RemoveModuleResources(module);
    return dialog != nullptr;
}

TEST(NativeResources, CutOrDamagedFilesAreReadWithinTheirEnds)
{
    const std::string file = ReadWholeFile(ORVEL_TEST_RESOURCES);
    ASSERT_TRUE(Opens(file));
    DWORD before = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    size_t opened = 0, damaged = 0;
    for (size_t size = 0; size < file.size(); size++)
        opened += Opens(file.substr(0, size));
    EXPECT_GT(opened, 0u) << "the other dialogs stand behind it";
    EXPECT_LT(opened, file.size() / 2);
    for (size_t at = 0; at < file.size(); at++) {
        for (char byte : {'\0', '\xFF', '\x80', '\x7F'}) {
            std::string changed = file;
            changed[at] = byte;
            damaged += !Opens(changed);
        }
    }
    EXPECT_GT(damaged, 100u);
    EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), before);
}

TEST(NativeDrawing, SelectedFontIsNotDeleted)
{
    PAINTSTRUCT paint;
    HDC context = BeginPaint(GetDesktopWindow(), &paint);
    const LOGFONTA wanted = {};
    HFONT font = CreateFontIndirectA(&wanted);
    HGDIOBJ before = SelectObject(context, font);
    EXPECT_FALSE(DeleteObject(font));
    SelectObject(context, before);
    EXPECT_TRUE(DeleteObject(font));
    EndPaint(GetDesktopWindow(), &paint);
}
