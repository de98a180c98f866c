// A whole session in the editor: a person types, breaks, checks, finds, replaces, sorts, saves and
// opens, by keys; after each step the document is read.
#include <gtest/gtest.h>

#include "../../examples/editor/commands.h"
#include "../../src/resources/resource.h"
#include "driver.h"
#include "support/temp_folder.h"
#include "testing/testing.h"

static void ExpectText(HWND editor, const std::wstring &wanted)
{
    EXPECT_EQ(WaitForDocument(editor, wanted), wanted);
}

static void PressTimes(BYTE key, int times)
{
    for (int i = 0; i < times; ++i)
        PressKey(key);
}

// The dialogs' boxes have the internal code, which Windows reads as its own characters.
TEST(EditorSession, GoesFromTypingToSavingAndOpening)
{
    std::string folder = FreshFolder(), path = folder + "\\text.txt", other = folder + "\\o.txt";
    std::ofstream(path, std::ios::binary) << "ສະບາຍດີ\n";
    std::ofstream(other, std::ios::binary) << "\xEF\xBB\xBFຂອບໃຈ";
    RemoveRegistryKey(HKEY_CURRENT_USER, "Software\\Orvel\\Orvel7");  // another test's options
    HWND editor = StartEditor(std::wstring(path.begin(), path.end()));
    ASSERT_TRUE(editor);

    PressKey(VK_END);
    TypeText(L"ຊາວລາວ");
    ExpectText(editor, L"ສະບາຍດີຊາວລາວ\r\n");
    PressKey(VK_F5);
    ExpectText(editor, L"ສະບາຍດີ\u200Bຊາວ\u200Bລາວ\r\n");
    PressKey(VK_F8);
    ExpectText(editor, L"ສະບາຍດີ\u00A6ຊາວ\u00A6ລາວ\r\n");
    PressKey('S', true);
    EXPECT_EQ(ReadWholeFile(path), "ສະບາຍດີ\u200Bຊາວ\u200Bລາວ\n") << "what is shown isn't saved";
    PressKey(VK_F6);
    ExpectText(editor, L"ສະບາຍດີຊາວລາວ\r\n");
    PressKey(VK_F8);

    PressKey('A', true);
    TypeText(L"ເເພື່ອ ກກກ ເເພື່ອ\t8\rຂາ\t10\rກາ\t9");
    std::wstring typed = L"ເເພື່ອ ກກກ ເເພື່ອ\t8\r\nຂາ\t10\r\nກາ\t9";
    ExpectText(editor, typed);
    PressKey(VK_F7);
    HWND spelling = WaitForDialog(L"Spelling check: Lao");
    ASSERT_TRUE(spelling);
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitForEnd(spelling));
    ExpectText(editor, typed);

    PressKey(VK_F7);
    spelling = WaitForDialog(L"Spelling check: Lao");
    ASSERT_TRUE(spelling);
    PressKey(VK_RETURN);
    EXPECT_EQ(ReadWindow(GetDlgItem(spelling, ID_SPELL_MARKED)), L"\u00A1\u00A1\u00A1")
        << "ignored";
    PressKey(VK_END);
    PressTimes(VK_BACK, 3);
    TypeText(L"\u00A1\u00BE");
    PressKey(VK_RETURN);
    ExpectText(editor, L"ເເພື່ອ ກາ ເເພື່ອ\t8\r\nຂາ\t10\r\nກາ\t9");
    PressKey(VK_HOME);
    PressKey(VK_DELETE);
    Click(spelling, ID_SPELL_CHANGE_ALL);
    ASSERT_TRUE(WaitForDialog(L"Editor")) << "that it is complete";
    ExpectText(editor, L"ເພື່ອ ກາ ເພື່ອ\t8\r\nຂາ\t10\r\nກາ\t9");
    PressKey(VK_RETURN);
    EXPECT_TRUE(WaitForEnd(spelling));

    PressKey(VK_HOME, true);
    PressKey('F', true);
    HWND find = WaitForDialog(L"Finding Lao text");
    ASSERT_TRUE(find);
    TypeText(L"\u00A1\u00BE");
    PressTimes(VK_RETURN, 2);
    DWORD selection = DWORD(SendDlgItemMessageW(editor, kTextControl, EM_GETSEL, 0, 0));
    EXPECT_EQ(LOWORD(selection), 25) << "the second one";
    EXPECT_EQ(HIWORD(selection), 27);
    Click(find, ID_FIND_REPLACE);
    HWND replace = WaitForDialog(L"Replacing Lao text");
    SetDlgItemTextA(replace, ID_FIND_REPLACEMENT, "\xA4\xBE");
    Click(replace, ID_FIND_REPLACE_ALL);
    ASSERT_TRUE(WaitForDialog(L"Editor")) << "how many";
    PressKey(VK_RETURN);
    ExpectText(editor, L"ເພື່ອ ງາ ເພື່ອ\t8\r\nຂາ\t10\r\nງາ\t9");
    WaitForDialog(L"Replacing Lao text");
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitForEnd(find));

    Choose(editor, kSortLines);
    ASSERT_TRUE(WaitForDialog(L"Lao Sort"));
    PressKey(VK_DOWN);  // column 2
    PressKey(VK_TAB);
    PressTimes(VK_DOWN, 2);  // numeric
    PressKey(VK_TAB);
    PressKey(VK_DOWN);  // descending
    PressKey(VK_RETURN);
    ExpectText(editor, L"ຂາ\t10\r\nງາ\t9\r\nເພື່ອ ງາ ເພື່ອ\t8");

    PressKey('S', true);
    EXPECT_EQ(ReadWholeFile(path), "ຂາ\t10\nງາ\t9\nເພື່ອ ງາ ເພື່ອ\t8");
    PressKey('O', true);
    ASSERT_TRUE(WaitForDialog(L"Open"));
    TypeText(std::wstring(other.begin(), other.end()));
    PressKey(VK_RETURN);
    ExpectText(editor, L"ຂອບໃຈ");
    PressKey('S', true);
    EXPECT_EQ(ReadWholeFile(other), "\xEF\xBB\xBFຂອບໃຈ");

    std::string unicode = folder + "\\u.xml";
    std::filesystem::path legacy =
        std::filesystem::absolute(ORVEL_CORPUS "/../../samples/legacy.xml");
    Choose(editor, kConvertFile);
    ASSERT_TRUE(WaitForDialog(L"Open"));
    TypeText(legacy.lexically_normal().make_preferred().wstring());
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitForDialog(L"Save As"));
    TypeText(std::wstring(unicode.begin(), unicode.end()));
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitForDialog(L"Editor")) << "that it is written";
    PressKey(VK_RETURN);
    EXPECT_NE(ReadWholeFile(unicode).find("<w:t>ບົດນຳ"), std::string::npos);
    PostMessageW(editor, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitForEnd(editor));
}
