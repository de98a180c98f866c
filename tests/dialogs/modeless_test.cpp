// Find and spelling, as a host has them: open beside its window, on its message loop, calling it
// back.
#include "dialogs/person.h"

#include <filesystem>

#include "frame/companion.h"
#include "frame/records.h"
#include "settings/registry.h"
#include "support/message_boxes.h"

// What the host's callback heard, and what it does then.
struct HostState {
    std::string heard;                        // "1 3 "
    std::deque<int> answers;                  // behind the last one: 1
    std::function<void(DWORD action)> reply;  // may be empty
};
static HostState gHost;

static int WINAPI HostCallback(DWORD action)
{
    gHost.heard += std::to_string(action) + " ";
    if (gHost.reply)
        gHost.reply(action);
    int answer = gHost.answers.empty() ? 1 : gHost.answers.front();
    if (!gHost.answers.empty())
        gHost.answers.pop_front();
    return answer;
}

constexpr DWORD kHostMode = 0x1D3;

class Modeless : public AttachedDialogs
{
  protected:
    void SetUp() override
    {
        AttachedDialogs::SetUp();
        gHost = {};
        SetActiveWindow(host_);
        LaoMode(kHostMode, ~0u);
        SaveOptionsWith(kUserDictionary);
    }
    void TearDown() override
    {
        for (HWND window : {gProcess.findWindow, gProcess.spellingWindow})
            if (window)
                DestroyWindow(window);
        EXPECT_EQ(LaoMode(0, 0), kHostMode);
        AttachedDialogs::TearDown();
    }
    static void SaveOptionsWith(WORD dictionaries) { SetOrvelOption("d", dictionaries, 1); }
    static std::string Heard() { return std::exchange(gHost.heard, ""); }
    static void Press(HWND dialog, int id)
    {
        Click(id)(dialog);
        DrainMessages();
    }
    static void Write(HWND dialog, int id, const std::string &text)
    {
        Type(id, text)(dialog);
        DrainMessages();
    }
};

class Find : public Modeless
{
  protected:
    HWND Open(int replace, const char *text, int ignoreBreaks = 0)
    {
        SetActiveWindow(host_);
        EXPECT_EQ(StartOrvelFind(nullptr, replace, text, ignoreBreaks, HostCallback), 1);
        DrainMessages();
        return gProcess.findWindow;
    }
    // "find / replacement / ignores direction"
    static std::string Texts(int size = 127)
    {
        char find[130], replace[130];
        memset(find, '#', sizeof find);
        DWORD ignores = 9, direction = 9;
        if (!GetFindReplaceText(find, replace, size, &ignores, &direction))
            return find[0] == '#' ? "none" : "written";
        return std::string(find) + "/" + replace + "/" + std::to_string(ignores) +
               std::to_string(direction);
    }
    // Title, what is seen, what can be used, the default button.
    static std::string Form(HWND dialog)
    {
        char title[40] = "";
        GetWindowTextA(dialog, title, sizeof title);
        return std::string(title) + "|" + TextOf(dialog, ID_FIND_REPLACE) + "|" +
               IdsWith(dialog, {102, 121, 109, 103, 104}, IsSeen) + "|" +
               IdsWith(dialog, {1, 2, 108, 109}, IsUsable) + "|" +
               std::to_string(DefaultOf(dialog));
    }
};

TEST_F(Find, FormsAndButtonsFollowTheText)
{
    HWND dialog = Open(0, " \t", 1);
    RECT label = {}, box = {};
    GetWindowRect(GetDlgItem(dialog, 0xFFFF), &label);
    GetWindowRect(GetDlgItem(dialog, ID_FIND_TEXT), &box);
    EXPECT_EQ(label.right, box.left) << "its text needs the room";
    EXPECT_EQ(Form(dialog), "Finding Lao text|Replace...|103 104 |2 |2");
    EXPECT_EQ(Texts(), "//10");
    EXPECT_EQ(StartOrvelFind(nullptr, 1, "x", 0, HostCallback), 0) << "one is open";
    Write(dialog, ID_FIND_TEXT, "\xA1\xD0");
    EXPECT_EQ(Form(dialog), "Finding Lao text|Replace...|103 104 |1 2 108 109 |1");
    PressKey(VK_RETURN);
    SelectItem(dialog, ID_FIND_DIRECTION, 1);
    EXPECT_EQ(Texts(), "\xA1\xD0//11");
    EXPECT_EQ(Texts(2), "\xA1//11");
    Press(dialog, ID_FIND_REPLACE);
    EXPECT_EQ(Form(dialog), "Replacing Lao text|Replace|102 121 109 |1 2 108 109 |1");
    Write(dialog, ID_FIND_REPLACEMENT, "neu");
    Press(dialog, ID_FIND_REPLACE);
    Press(dialog, ID_FIND_REPLACE_ALL);
    EXPECT_EQ(Texts(-1), "\xA1\xD0/neu/10");
    EXPECT_EQ(Heard(), "1 2 3 ");
    EXPECT_EQ(ShowFindDialog(0), 1);
    EXPECT_FALSE(GetWindowLongA(dialog, GWL_EXSTYLE) & WS_EX_TOPMOST);
    EXPECT_EQ(ShowFindDialog(1), 1);
    EXPECT_TRUE(GetWindowLongA(dialog, GWL_EXSTYLE) & WS_EX_TOPMOST);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(Texts(), "none");
    EXPECT_EQ(ShowFindDialog(1), 0);
    Open(1, nullptr);
    EXPECT_EQ(Texts(), "\xA1\xD0//00") << "what was last";
    EXPECT_EQ(Heard(), "");
}

TEST_F(Find, TextsAtTheirLimits)
{
    for (size_t length : {126, 127, 128, 500}) {
        Open(1, std::string(length, 'f').c_str());
        SetDlgItemTextA(gProcess.findWindow, ID_FIND_REPLACEMENT, std::string(length, 'r').c_str());
        EXPECT_EQ(Texts(), std::string(126, 'f') + "/" + std::string(126, 'r') + "/00") << length;
        EXPECT_EQ(Texts(128), Texts());
        PressKey(VK_ESCAPE);
    }
    ExpectBoxes boxes({"Orvel: Null callback address!"});
    EXPECT_EQ(StartOrvelFind(nullptr, 0, "x", 0, nullptr), 0);
}

// Every way in and out of the boxes, and every way to close.
TEST_F(Find, ModeWordIsLaoInTheBoxesAlone)
{
    constexpr DWORD kLao = (kHostMode & ~63u) | 48;
    for (int way = 0; way < 5; ++way) {
        HWND dialog = Open(0, "x");
        EXPECT_EQ(LaoMode(0, 0), kLao);
        PressKey(VK_TAB);
        EXPECT_EQ(LaoMode(0, 0), kHostMode) << GetDlgCtrlID(GetFocus());
        SetFocus(GetDlgItem(dialog, ID_FIND_TEXT));
        EXPECT_EQ(LaoMode(0, 0), kLao);
        SetActiveWindow(host_);
        EXPECT_EQ(LaoMode(0, 0), kHostMode);
        SetActiveWindow(dialog);
        EXPECT_EQ(LaoMode(0, 0), kLao);
        switch (way) {
        case 0: PressKey(VK_ESCAPE); break;
        case 1: SendMessageA(dialog, WM_CLOSE, 0, 0); break;
        case 2: DestroyWindow(dialog); break;
        case 3:
            gHost.reply = [=](DWORD) { DestroyWindow(dialog); };
            PressKey(VK_RETURN);
            break;
        case 4: LibMain(gProcess.instance, 0, nullptr); break;
        }
        DrainMessages();
        EXPECT_FALSE(IsWindow(dialog) || gProcess.findWindow) << way;
        if (way == 4) {  // the companion is gone, with its mode word
            BindCompanion();
            LaoMode(kHostMode, ~0u);
        }
        EXPECT_EQ(LaoMode(0, 0), kHostMode) << way;
    }
}

// ---- spelling ----

class Spelling : public Modeless
{
  protected:
    HWND Open()
    {
        EXPECT_EQ(StartSpellChecking(host_, HostCallback), 1);
        HWND dialog = gProcess.spellingWindow;
        DrainMessages();
        return dialog;
    }
    // Hands these words over, one a call, and then says that there are no more.
    struct Word {
        std::string marked, suggested;
        int kind;
    };
    static void Offer(std::deque<Word> words)
    {
        gHost.answers.assign(words.size(), 1);
        gHost.answers.push_back(0);
        gHost.reply = [=](DWORD action) mutable {
            if (action < kSpellIgnore || words.empty())
                return;
            SetMarkedText(words[0].marked.c_str(), words[0].suggested.c_str(), words[0].kind);
            words.pop_front();
        };
    }
    // Label, both boxes, buttons that can be used, the default one, the focus.
    static std::string Shown(HWND dialog)
    {
        return TextOf(dialog, ID_SPELL_KIND_LABEL) + " " + TextOf(dialog, ID_SPELL_MARKED) + "|" +
               TextOf(dialog, ID_SPELL_CHANGED) + "|" + IdsWith(dialog, {105, 106, 120}, IsUsable) +
               "|" + std::to_string(DefaultOf(dialog)) + " " +
               std::to_string(GetDlgCtrlID(GetFocus()));
    }
    static std::string Changed(int size = 200)
    {
        char text[200] = "none";
        return std::to_string(GetChangedText(text, size)) + text;
    }
};

TEST_F(Spelling, WordsComeOneByOneUntilTheHostHasNoMore)
{
    Offer({{"a-b\xD1", "unused", kBadStretch},
           {"old", "mo-dern", kOldWord},
           {"x-", "", kBadStretch},
           {"same", "s", 77},
           {"o", "n", kOldWord},
           {"p", "q-", kOldWord}});
    HWND dialog = Open();
    ASSERT_TRUE(dialog);
    EXPECT_EQ(Heard(), "10 ");
    EXPECT_EQ(Shown(dialog), "Bad spelling: ab\xD1|ab\xD1|120 |1 102");
    EXPECT_EQ(Changed(4), "1ab\xD1");
    EXPECT_EQ(Changed(3), "0none");
    SendDlgItemMessageA(dialog, ID_SPELL_CHANGED, WM_CHAR, '-', 1);
    DrainMessages();
    EXPECT_EQ(DefaultOf(dialog), ID_SPELL_CHANGE) << "typing makes Return change the word";
    Write(dialog, ID_SPELL_CHANGED, "c-d");
    gHost.reply = [host = gHost.reply](DWORD action) mutable {
        gHost.heard += Changed() + " ";
        host(action);
    };
    PressKey(VK_RETURN);
    EXPECT_EQ(Heard(), "30 1cd ");
    EXPECT_EQ(Shown(dialog), "Old spelling: old|modern|105 106 120 |105 105");
    PressKey(VK_SPACE);
    EXPECT_EQ(Heard(), "30 1modern ");
    EXPECT_EQ(Shown(dialog), "Bad spelling: x|x|120 |1 102");
    Press(dialog, ID_SPELL_IGNORE_ALL);
    EXPECT_EQ(Heard(), "20 1x ");
    EXPECT_EQ(Shown(dialog).substr(0, 20), "Bad spelling: same|x") << "another kind shows itself";
    Press(dialog, ID_OK);
    EXPECT_EQ(Heard(), "10 1x ");
    Press(dialog, ID_SPELL_CHANGE_ALL);
    EXPECT_EQ(Shown(dialog), "Old spelling: p|q|105 106 120 |105 105");
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(ID_OK, 1), 0);
    EXPECT_EQ(Heard(), "40 1n ") << "a notification presses nothing";
    gHost.reply = [&](DWORD) { gHost.heard += IsWindowVisible(dialog) ? "seen " : "hidden "; };
    Press(dialog, ID_OK);
    EXPECT_EQ(Heard(), "10 seen 1 hidden ");
    EXPECT_FALSE(IsWindow(dialog) || gProcess.spellingWindow);
}

TEST_F(Spelling, EveryWayToEnd)
{
    const struct {
        std::function<void(HWND)> end;
        const char *heard;
    } rows[] = {
        {[](HWND) { PressKey(VK_ESCAPE); }, "0 "},
        {[](HWND dialog) { SendMessageA(dialog, WM_CLOSE, 0, 0); }, "0 0 "},
        {[](HWND dialog) { DestroyWindow(dialog); }, ""},
        {[](HWND) {  // the companion goes with the library, and its mode word
             LibMain(gProcess.instance, 0, nullptr);
             BindCompanion();
             LaoMode(kHostMode, ~0u);
         },
         ""},
        {[](HWND dialog) {
             gHost.reply = [=](DWORD) { DestroyWindow(dialog); };
             gHost.answers = {0};
             Press(dialog, ID_OK);
         },
         "10 "},
        {[](HWND dialog) {  // the host ends it, and begins anew from inside
             gHost.reply = [=](DWORD) {
                 gHost.heard += std::to_string(StartSpellChecking(nullptr, HostCallback)) + " ";
             };
             gHost.answers = {0};
             Press(dialog, ID_OK);
         },
         "10 0 1 0 "},
    };
    for (const auto &row : rows) {
        Offer({{"w", "", kBadStretch}});
        HWND dialog = Open();
        EXPECT_EQ(LaoMode(0, 0) & ~32u, (kHostMode & ~63u) | 16);
        EXPECT_EQ(Heard(), "10 ");
        EXPECT_EQ(StartSpellChecking(host_, HostCallback), 0);
        row.end(dialog);
        DrainMessages();
        EXPECT_EQ(Heard(), row.heard);
        EXPECT_FALSE(IsWindow(dialog) || gProcess.spellingWindow);
        EXPECT_EQ(LaoMode(0, 0), kHostMode);
        gHost.reply = nullptr;
    }
    gHost.answers = {0};
    EXPECT_FALSE(IsWindow(Open())) << "nothing to check";
    EXPECT_EQ(Heard(), "10 1 ");
    ExpectBoxes boxes({"Orvel: Null callback address!"});
    EXPECT_EQ(StartSpellChecking(host_, nullptr), 0);
}

TEST_F(Spelling, ExpandedTextStaysOnForTheNextTime)
{
    std::string marks(126, '-'), word(300, 'w');
    Offer({{"a-\xA1\xD1", "", kBadStretch}, {marks, "", kBadStretch}, {word, word, kOldWord}});
    HWND dialog = Open();
    Press(dialog, ID_SPELL_EXPAND);
    EXPECT_EQ(TextOf(dialog, ID_SPELL_MARKED), "a  -\xA1  \xD1");
    Press(dialog, ID_OK);
    std::string spread = TextOf(dialog, ID_SPELL_MARKED);
    EXPECT_EQ(spread.size(), 126u);
    EXPECT_EQ(spread.substr(120), "  -  -");
    Press(dialog, ID_OK);
    EXPECT_EQ(TextOf(dialog, ID_SPELL_MARKED), std::string(124, 'w'));
    EXPECT_EQ(Changed(), "1" + std::string(126, 'w'));
    PressKey(VK_ESCAPE);
    Offer({{"a-b", "", kBadStretch}});
    SaveOptionsWith(kMainDictionary);
    dialog = Open();
    EXPECT_EQ(Shown(dialog), "Bad spelling: a  -b|ab||1 102") << "and no list of words";
    Press(dialog, ID_SPELL_EXPAND);
    EXPECT_EQ(TextOf(dialog, ID_SPELL_MARKED), "ab");
}

// The list of words opens with the word at hand, over the spelling dialog.
TEST_F(Spelling, WordGoesToTheDictionary)
{
    ReplaceDictionary("UserDict.dat", "");
    Offer({{"a-b", "", kBadStretch}});
    HWND dialog = Open();
    WatchDialogsOf(dialog);
    std::string word;
    gPerson.steps = {See(&word, [](HWND d) { return TextOf(d, ID_USERDICT_WORDS); }),
                     Key(VK_RETURN), Key(VK_ESCAPE)};
    Press(dialog, ID_SPELL_DICTIONARY);
    EXPECT_EQ(word, "ab");
    EXPECT_EQ(CountUserWords(), 1);
    EXPECT_TRUE(gPerson.steps.empty());
    EXPECT_EQ(Heard(), "10 ");
}

// ---- all of them ----

TEST_F(Modeless, TheHookIsTakenAwayByTheFirstThatGoes)
{
    gHost.reply = [](DWORD) { SetMarkedText("w", "", kBadStretch); };
    StartSpellChecking(host_, HostCallback);
    DrainMessages();
    StartOrvelFind(nullptr, 0, "x", 0, HostCallback);
    DrainMessages();
    HWND spelling = gProcess.spellingWindow;
    PressKey(VK_RETURN);
    EXPECT_EQ(Heard(), "10 ") << "the hook is the spelling dialog's";
    SetActiveWindow(spelling);
    PressKey(VK_RETURN);
    EXPECT_EQ(Heard(), "10 ");
    SendMessageA(gProcess.findWindow, WM_CLOSE, 0, 0);
    DrainMessages();
    SetActiveWindow(spelling);
    PressKey(VK_RETURN);
    EXPECT_EQ(Heard(), "") << "it works by mouse alone";
    Press(spelling, ID_CANCEL);
    EXPECT_EQ(Heard(), "0 ");
}

TEST_F(Modeless, NothingIsLeftBehind)
{
    HANDLE process = GetCurrentProcess();
    DWORD windows = 0, drawing = 0;
    WatchDialogsOf(host_);
    const int rounds = std::filesystem::path::preferred_separator == '/' ? 1000 : 120;
    for (int i = 0; i < rounds; ++i) {
        if (i == 10) {  // what the system makes once is there by now
            windows = GetGuiResources(process, GR_USEROBJECTS);
            drawing = GetGuiResources(process, GR_GDIOBJECTS);
        }
        SetActiveWindow(host_);
        StartOrvelFind(nullptr, 0, "x", 0, HostCallback);
        StartSpellChecking(host_, HostCallback);
        DrainMessages();
        SendMessageA(gProcess.findWindow, WM_CLOSE, 0, 0);
        SendMessageA(gProcess.spellingWindow, WM_CLOSE, 0, 0);
        DrainMessages();
        short keys[3] = {}, values[3] = {};
        char text[9] = "x";
        gPerson.steps = {Click(ID_FONTPICK_ONCE),
                         Key(VK_ESCAPE),
                         Key(VK_ESCAPE),
                         Close(),
                         Click(ID_OPTIONS_FONTS),
                         Close(),
                         Click(ID_OPTIONS_KEYBOARDS),
                         Close(),
                         Close()};
        StartOrvelMeter(host_, "x");
        CloseOrvelMeter();
        SetActiveWindow(host_);  // which owns the next one
        ChooseLaoFont("x", text, 9, 1);
        ModifyDictionary(host_, "x");
        EditLao(host_, text, 9);
        ShowLaoSortDialog(host_, 3, keys, values, values, values, values);
        OrvelOptions(host_);
        ASSERT_TRUE(gPerson.steps.empty());
    }
    EXPECT_LE(GetGuiResources(process, GR_USEROBJECTS), windows + 5);
    EXPECT_LE(GetGuiResources(process, GR_GDIOBJECTS), drawing + 5);
}
