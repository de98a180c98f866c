// The modal dialogs of hosts, driven as a person does it: the user's words, the edit box, the font
// picker, sort keys.
#include "dialogs/person.h"

#include "frame/companion.h"
#include "frame/records.h"
#include "settings/registry.h"
#include "support/message_boxes.h"

class SmallDialogs : public ModalDialogs
{
};

// ---- the user's words: items with the selected one in brackets, the edit, the default button ----

static std::string WordsShown(HWND dialog)
{
    std::string items;
    int count = int(SendDlgItemMessageA(dialog, ID_USERDICT_WORDS, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        char word[200] = "";
        CopyListItem(dialog, ID_USERDICT_WORDS, i, word, sizeof word);
        bool isSelected = i == SelectedItem(dialog, ID_USERDICT_WORDS);
        items += (isSelected ? "[" : "") + std::string(word) + (isSelected ? "] " : " ");
    }
    return items + "/" + TextOf(dialog, ID_USERDICT_WORDS) + "/" +
           std::to_string(DefaultOf(dialog)) + "\n";
}
#define WORDS(text) See(&seen, WordsShown), See(&wanted, [](HWND) { return text "\n"; })

TEST_F(SmallDialogs, WordsAreAddedAndDeleted)
{
    ReplaceDictionary("UserDict.dat", "");
    std::string seen, wanted;
    ExpectBoxes boxes({"at least two characters long!", "already in the user-defined word list",
                       "is not in the user-defined word list"});
    Do({WORDS("/ab/102"),
        Key(VK_RETURN),
        WORDS("[ab] /ab/2"),
        Type(ID_USERDICT_WORDS, "x"),
        WORDS("ab /x/102"),
        Click(ID_USERDICT_ADD),
        Type(ID_USERDICT_WORDS, "ab"),
        Click(ID_USERDICT_ADD),
        Type(ID_USERDICT_WORDS, "cd"),
        Key(VK_RETURN),
        WORDS("ab [cd] /cd/2"),
        Type(ID_USERDICT_WORDS, "ef"),
        Click(ID_USERDICT_ADD),
        Choose(ID_USERDICT_WORDS, 1),
        Click(ID_USERDICT_DELETE),
        WORDS("ab [ef] /ef/2"),
        Click(ID_USERDICT_DELETE),
        Click(ID_USERDICT_DELETE),
        WORDS("ab //2"),
        Choose(ID_USERDICT_WORDS, 0),
        See(&seen,
            [](HWND) {
                DeleteWord("ab");  // behind the dialog's back
                return "";
            }),
        Click(ID_USERDICT_DELETE),
        Key(VK_ESCAPE)});
    LaoMode(3, 15);
    mode_ = LaoMode(0, 0);
    EXPECT_EQ(ModifyDictionary(host_, "ab"), 1);
    EXPECT_EQ(seen, wanted);
    EXPECT_EQ(CountUserWords(), 0);
    EXPECT_FALSE(gProcess.userDictionaryWindow);
}

// Longer than the list shows and than the box hands out; and one dialog at a time.
TEST_F(SmallDialogs, WordsAtTheirLimits)
{
    ReplaceDictionary("UserDict.dat", "");
    for (size_t length : {31, 32, 126, 127, 500}) {
        std::string word(length, 'w'), seen;
        Do({Click(ID_USERDICT_ADD), See(&seen, WordsShown),
            See(&seen, [=, this](HWND) { return std::to_string(ModifyDictionary(host_, "")); }),
            Close()});
        ExpectBoxes boxes(length < 127 ? std::vector<std::string>{}
                                       : std::vector<std::string>{"already"});
        ModifyDictionary(host_, word.c_str());
        EXPECT_NE(seen.find(std::string(31, 'w')), std::string::npos) << seen;
        EXPECT_EQ(seen.back(), '1');
    }
    EXPECT_EQ(CountUserWords(), 3);
}

TEST_F(SmallDialogs, WordsWithoutACompanion)
{
    UnbindCompanion();
    ExpectBoxes boxes({"Unable to add to the user-defined dictionary"});
    Do({Type(ID_USERDICT_WORDS, "ab"), Click(ID_USERDICT_ADD), Click(ID_USERDICT_DELETE), Close()});
    EXPECT_EQ(ModifyDictionary(host_, nullptr), 1);
    Do({[](HWND) { LibMain(gProcess.instance, 0, nullptr); }});  // the library goes meanwhile
    EXPECT_EQ(ModifyDictionary(host_, nullptr), 1);
    BindCompanion();
    mode_ = LaoMode(0, 0);
}

// ---- the edit box ----

TEST_F(SmallDialogs, EditBoxHandsTheTextBack)
{
    const std::string longText(40, 'l');
    const struct {
        const char *before;
        int size;
        std::string typed;
        BYTE key;
        bool hasShift;
        int result;
        std::string after;
    } rows[] = {
        {"old", 20, "new", VK_RETURN, false, 1, "new"},
        {"old", 20, "new", VK_RETURN, true, 2, "new"},
        {"old", 20, "new", VK_ESCAPE, false, 0, "old"},
        {"old", 8, longText, VK_RETURN, false, 1, "lllllll"},
        {"", 1, "x", VK_RETURN, false, 1, ""},
    };
    for (const auto &row : rows) {
        for (DWORD mode : {0x1D5u, 0x0Fu}) {
            LaoMode(mode, ~0u);
            mode_ = mode;
            char buffer[64];
            memset(buffer, '#', sizeof buffer);
            memcpy(buffer, row.before, strlen(row.before) + 1);
            DWORD during = 0;
            Do({Type(ID_EDITLAO_TEXT, row.typed),
                [&](HWND) {
                    during = LaoMode(0, 0);
                    if (row.hasShift)
                        keybd_event(VK_SHIFT, 0, 0, 0);
                },
                Key(row.key)});
            EXPECT_EQ(EditLao(host_, buffer, row.size), row.result);
            keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
            DrainMessages();
            EXPECT_EQ(during, (mode & ~63u) | 48);
            EXPECT_EQ(std::string(buffer, strnlen(buffer, 64)), row.after);
            EXPECT_EQ(buffer[row.size], '#');
            EXPECT_EQ(LaoMode(0, 0), mode);
        }
    }
    EXPECT_EQ(EditLao(host_, nullptr, 9), 0);
}

// ---- the font picker ----

TEST_F(SmallDialogs, PickedFontIsOneOfTheList)
{
    ASSERT_EQ(ReplaceFonts("Zet,Unicode\nAlf,Unicode\nOther,Lao95\n"), 3);
    const struct {
        const char *choice;
        int size, position, button, result;  // position -1: leaves the list alone
        const char *after;
    } rows[] = {
        {"Zet", 20, -1, ID_FONTPICK_ONCE, 0, "Zet"},
        {"x", 20, 0, ID_FONTPICK_SELECTION_ONLY, 1, "Alf"},
        {"x", 20, -1, ID_FONTPICK_ALWAYS, -1, "x"},
        {"x", 3, 0, ID_FONTPICK_ALWAYS, -1, "x"},
        {"x", 4, 1, ID_FONTPICK_ALWAYS, -1, "Zet"},
        {"x", 0, 1, ID_FONTPICK_SELECTION_ONLY, 1, "x"},
    };
    for (const auto &row : rows) {
        char choice[20] = "";
        strcpy(choice, row.choice);
        std::string seen;
        SetActiveWindow(host_);
        Do({See(&seen,
                [](HWND dialog) {
                    return TextOf(dialog, ID_FONTPICK_REPLACED) + std::to_string(DefaultOf(dialog));
                }),
            row.position < 0 ? Type(ID_FONTPICK_FONTS, "typed")
                             : Choose(ID_FONTPICK_FONTS, row.position),
            Key(VK_ESCAPE), Close(), Click(row.button)});
        EXPECT_EQ(ChooseLaoFont("Arial", choice, row.size, 1), row.result);
        EXPECT_STREQ(choice, row.after);
        EXPECT_EQ(seen, "Arial1024");
    }
}

// ---- sort keys ----

static DWORD StoredKeepKeys()
{
    DWORD stored = 99, size = sizeof stored;
    return ReadUserValue("KeepSortKeys", &stored, &size) ? stored : 99;
}

static std::string ColumnsShown(HWND dialog)
{
    std::string shown;
    for (int list : {ID_SORT_COLUMN1, ID_SORT_TYPE1, ID_SORT_ORDER1, ID_SORT_COLUMN2, ID_SORT_TYPE3,
                     ID_SORT_ORDER3})
        shown += TextOf(dialog, list) + ",";
    return shown + IdsWith(dialog, {ID_SORT_SKIP_HEADER, ID_SORT_KEEP_KEYS}, IsChecked);
}

TEST_F(SmallDialogs, SortKeysAreHandedOut)
{
    const struct {
        short columns, first;
        std::deque<Step> steps;
        const char *opened, *result;  // columns, types, orders, keep, skip
        DWORD stored;
    } rows[] = {
        {3,
         3,
         {Choose(107, 3), Click(ID_OK)},
         "Column 3,Lao order,Ascending,(none),Lao order,Ascending,",
         "1: 3 0 0 0 0 0 0 0 0 0 0",
         0},
        {3,
         0,
         {Choose(102, 2), Choose(106, 2), Choose(108, 1), Choose(110, 1), Choose(111, 3),
          Click(114), Click(113), Click(ID_OK)},
         "Column 3,Lao order,Ascending,(none),Lao order,Ascending,",
         "1: 3 2 1 2 -1 2 0 1 0 1 1",
         1},
        {1,
         1,
         {Choose(101, 0), Click(114), Click(ID_CANCEL)},
         "Column 1,Lao order,Ascending,(none),Lao order,Ascending,114 ",
         "0: 1 7 7 7 7 7 7 7 7 7 7",
         1},
        {2,
         9,
         {Key(VK_ESCAPE)},
         "Column 1,Lao order,Ascending,(none),Lao order,Ascending,114 ",
         "0: 9 7 7 7 7 7 7 7 7 7 7",
         1},
        {0,
         1,
         {Choose(103, 1), Click(ID_OK)},
         ",Lao order,Ascending,(none),Lao order,Ascending,114 ",
         "1: 0 0 0 0 0 0 1 0 0 1 0",
         1},
    };
    ASSERT_EQ(SetOrvelOption("s", 0, 1), 1);  // makes the key
    for (const auto &row : rows) {
        short keys[3] = {row.first, 7, 7}, types[3] = {7, 7, 7}, orders[3] = {7, 7, 7};
        short keep = 7, skip = 7;
        std::string opened;
        std::deque<Step> steps = row.steps;
        steps.push_front(See(&opened, ColumnsShown));
        Do(steps);
        std::string result = std::to_string(ShowLaoSortDialog(host_, row.columns, keys, types,
                                                              orders, &keep, &skip)) +
                             ":";
        for (const short *values : {keys, types, orders})
            for (int i = 0; i < 3; ++i)
                result += " " + std::to_string(values[i]);
        result += " " + std::to_string(keep) + " " + std::to_string(skip);
        EXPECT_EQ(opened, row.opened);
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(StoredKeepKeys(), row.stored);
    }
}
