// The main program of every test: folders of its own, so that no test touches what the person who
// runs it has, and message boxes that are recorded and answered.
#include <algorithm>
#include <gtest/gtest.h>

#include "support/message_boxes.h"
#include "support/temp_folder.h"
#include "testing/testing.h"

static ExpectBoxes *gExpected;  // the innermost one

ExpectBoxes::ExpectBoxes(std::vector<std::string> expected, std::vector<int> given)
    : pieces(std::move(expected)), answers(std::move(given)), outer(gExpected)
{
    gExpected = this;
}

ExpectBoxes::~ExpectBoxes()
{
    gExpected = outer;
    EXPECT_EQ(shown.size(), pieces.size()) << "boxes that came, boxes expected";
    for (size_t i = 0; i < std::min(shown.size(), pieces.size()); i++) {
        std::string whole = shown[i].caption + ": " + shown[i].text;
        EXPECT_NE(whole.find(pieces[i]), std::string::npos)
            << "box " << i << ": " << whole << "\nexpected: " << pieces[i];
    }
}

std::vector<std::string> ExpectBoxes::captions() const
{
    std::vector<std::string> list;
    for (const ShownBox &box : shown)
        list.push_back(box.caption);
    return list;
}

static int FirstButton(UINT flags)
{
    constexpr int kFirst[] = {IDOK, IDOK, IDABORT, IDYES, IDYES, IDRETRY, IDCANCEL};
    return kFirst[flags & MB_TYPEMASK];
}

static int RecordBox(HWND owner, const char *text, const char *caption, UINT flags)
{
    if (!gExpected) {
        ADD_FAILURE() << "unexpected message box: " << caption << ": " << text;
        return FirstButton(flags);
    }
    size_t number = gExpected->shown.size();
    gExpected->shown.push_back({owner, text, caption, flags});
    return number < gExpected->answers.size() ? gExpected->answers[number] : FirstButton(flags);
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    PrepareFolders();
    UseFoldersBelow(FreshFolder().c_str());
    SetMessageBoxAnswerer(RecordBox);
    int result = RUN_ALL_TESTS();
    RemoveFolders();
    return result;
}
