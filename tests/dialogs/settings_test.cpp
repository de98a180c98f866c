// The dialogs of the settings, driven as a person does it: options, keyboards, fonts.
#include "dialogs/person.h"

#include "fonts/font_table.h"
#include "frame/companion.h"
#include "frame/records.h"
#include "settings/options.h"
#include "support/message_boxes.h"
#include "testing/testing.h"

class Settings : public ModalDialogs
{
  protected:
    static std::string Letters()
    {
        std::string values;
        for (const char *letter : {"b", "d", "o", "r", "s", "i", "e", "c"})
            values += std::to_string(GetOrvelOption(letter)) + " ";
        return values;
    }
};

static const std::vector<int> kMarks = {121, 122, 123, 112, 113,  114,  131,  132,
                                        133, 141, 142, 143, 1017, 1018, 1019, 1020};
static const std::vector<int> kNeedy = {120, 121, 122, 123, 130, 131, 132, 133, 118};

static std::string Marks(HWND dialog)
{
    return IdsWith(dialog, kMarks, IsChecked) + "/ " + IdsWith(dialog, kNeedy, IsUsable);
}

TEST_F(Settings, OptionsFollowEachClick)
{
    const struct {
        OptionsRecord stored;
        int click;
        const char *opened, *clicked, *letters;
    } rows[] = {
        // clang-format off
        {{0, 12, 1, 0, 32, 0, 64, 12, 0}, 122, "121 114 133 143 1017 1019 / 120 121 122 123 ",
         "121 122 114 133 143 1017 1019 / 120 121 122 123 118 ", "12 5 0 32 0 80 80 0 "},
        {{0, 0, 0, 7, 9, 5, 1, 1, 9}, 142, "114 133 141 1017 1019 / ",
         "114 133 142 1017 1019 / 120 121 122 ", "12 0 0 31 0 80 80 0 "},
        {{0, 8, 7, 1, 31, 1, 1, 1, 1}, 121, "121 122 123 113 131 142 1018 1020 / 120 121 122 123 130 131 132 133 118 ",
         "122 123 113 131 142 1018 1020 / 120 121 122 118 ", "8 6 1 31 1 80 80 1 "},
        {{0, 12, 7, 2, 0, 0, 1, 1, 0}, 112, "121 122 123 114 132 141 1017 1019 / 120 121 122 123 130 131 132 133 118 ",
         "121 122 123 112 132 141 1017 1019 / 118 ", "4 7 2 0 0 80 80 0 "},
        {{0, 4, 6, 0, 0, 1, 1, 1, 0}, 1020, "122 123 112 133 141 1018 1019 / 118 ",
         "122 123 112 133 141 1018 1020 / 118 ", "4 6 0 0 1 80 80 1 "},
        // clang-format on
    };
    for (const auto &row : rows) {
        *gProcess.options = row.stored;
        ASSERT_EQ(SaveOptions(), 1);
        std::string stored = Letters(), opened, clicked, letters;
        SetOrvelOption("b", 999, 0);  // what isn't saved is lost
        for (int button : {ID_CANCEL, ID_OK}) {
            opened = clicked = letters = "";
            Do({See(&opened, Marks), Click(row.click), See(&clicked, Marks),
                See(&letters, [](HWND) { return Letters(); }), Click(button)});
            EXPECT_EQ(OrvelOptions(host_), button == ID_OK);
            EXPECT_EQ(opened, row.opened);
            EXPECT_EQ(clicked, row.clicked);
            EXPECT_EQ(letters, row.letters);
            LoadOptions();
            EXPECT_EQ(Letters(), button == ID_OK ? row.letters : stored);
        }
    }
}

static std::string HotKeyShown(HWND dialog)
{
    return TextOf(dialog, ID_KEYBOARDS_HOT_KEY);
}

// What the keyboards' OK does stays done, also when the options are cancelled.
TEST_F(Settings, KeyboardsAndTheirHotKey)
{
    const struct {
        DWORD before;
        int position, button;  // -1: leaves the list alone
        const char *shown;
        DWORD after;
        bool isTold;
    } rows[] = {
        {19, 2, ID_OK, "Pause", 113, false},   {19, 13, ID_OK, "Pause", 0, true},
        {0, 12, ID_OK, "Disabled", 123, true}, {0, 13, ID_OK, "Disabled", 0, false},
        {999, -1, ID_OK, "", 999, false},      {113, 13, ID_CANCEL, "F2", 113, false},
    };
    for (const auto &row : rows) {
        ASSERT_EQ(WriteHotKey(row.before), 1);
        std::string shown, restart = "You must exit and restart Kerrin after enabling or disabling";
        ExpectBoxes boxes(row.isTold ? std::vector{restart} : std::vector<std::string>{});
        Do({Click(ID_OPTIONS_KEYBOARDS), See(&shown, HotKeyShown),
            row.position < 0 ? Type(ID_KEYBOARDS_HOT_KEY, "F2")
                             : Choose(ID_KEYBOARDS_HOT_KEY, row.position),
            Click(row.button), Key(VK_ESCAPE)});
        EXPECT_EQ(OrvelOptions(host_), 0);
        EXPECT_EQ(shown, row.shown);
        EXPECT_EQ(ReadHotKey(), row.after);
    }
}

TEST_F(Settings, KeyboardsOfTheFontCodes)
{
    for (int flags : {16, 0}) {
        std::string checked;
        Do({Click(ID_OPTIONS_KEYBOARDS), Click(ID_KEYBOARDS_LAO95), Click(ID_OK),
            Click(ID_OPTIONS_KEYBOARDS),
            See(&checked,
                [](HWND dialog) {
                    return IdsWith(dialog, {1029, 1030, 1031, 1032, 1033, 1034, 1035}, IsChecked);
                }),
            Click(ID_KEYBOARDS_THAI), Click(ID_CANCEL), Click(ID_CANCEL)});
        OrvelOptions(host_);
        EXPECT_EQ(checked,
                  flags ? "1029 1030 1031 1033 1034 1035 " : "1029 1030 1031 1032 1033 1034 1035 ");
        FontCodeRecord record;
        for (int code : {3, 6}) {
            ASSERT_TRUE(FontCodeData(code, &record));
            EXPECT_EQ(record.flags & 16, code == 3 ? flags : 0);
        }
    }
}

// Nothing is known of the font codes then, and nothing is stored of them.
TEST_F(Settings, WithoutACompanion)
{
    std::string file = "Old,Lao95,,90\n", shown;
    ASSERT_EQ(ReplaceFonts(file), 1);
    UnbindCompanion();
    ExpectBoxes boxes({"does not use the currently selected font codes"});
    Do({Click(ID_OPTIONS_KEYBOARDS),
        See(&shown,
            [](HWND d) {
                return IdsWith(d, {1029, 1035}, IsChecked);
            }),
        Click(ID_OK), Click(ID_OPTIONS_FONTS),
        See(&shown, [](HWND d) { return TextOf(d, ID_FONTS_CODE); }), Click(ID_FONTS_MODIFY),
        Click(ID_OK), Close(), Close()});
    EXPECT_EQ(OrvelOptions(host_), 0);
    EXPECT_EQ(shown, "");
    EXPECT_EQ(FontType("Old"), 3) << "as it was";
    BindCompanion();
    mode_ = LaoMode(0, 0);
}

// ---- fonts ----

// "108 / 104 109 105 / name, code, substitute, scale, extended; button"
static std::string FontsShown(HWND dialog)
{
    std::string name =
        IsSeen(dialog, ID_FONTS_REGISTERED) ? TextOf(dialog, ID_FONTS_REGISTERED) : "";
    return IdsWith(dialog, {108, 1011, 1003}, IsSeen) + "/ " +
           IdsWith(dialog, {104, 109, 105, 1004, 1005, 124, 1020}, IsUsable) + "/ " + name + "," +
           TextOf(dialog, ID_FONTS_CODE) + "," + TextOf(dialog, ID_FONTS_SUBSTITUTE) + "," +
           TextOf(dialog, ID_FONTS_SCALE) + (IsChecked(dialog, ID_FONTS_EXTENDED) ? ",x" : "") +
           " " + TextOf(dialog, ID_CANCEL) + "\n";
}
#define SHOWS(text) See(&seen, FontsShown), See(&wanted, [](HWND) { return text "\n"; })

constexpr char kQuestion[] = "Orvel: Font registration: The substitute font does not use",
               kRegistered[] = "That font is already registered!",
               kNoMore[] = "No more fonts can be registered!",
               kLast[] = "You must leave at least one Lao font registered!";
constexpr char kTwoFonts[] = "Uni,Unicode,Uni,100,1\nOld,Lao95,Uni,90\n";
#define IDLE "108 / 104 109 105 / "
#define EDIT "/ 1004 1005 124 1020 / "

class FontsDialogs : public Settings
{
  protected:
    void SetUp() override
    {
        Settings::SetUp();
        LaoMode(1, 15);
        mode_ = LaoMode(0, 0);
        ASSERT_EQ(ReplaceFonts(kTwoFonts), 2);
    }
    // From the options and back; the file must hold what was written, or what it was.
    void Run(std::deque<Step> steps, const std::string &file)
    {
        seen = wanted = "";
        steps.push_front(Click(ID_OPTIONS_FONTS));
        steps.push_back(Click(ID_CANCEL));
        Do(steps);
        OrvelOptions(host_);
        EXPECT_EQ(seen, wanted);
        std::string written = ReadDataFile("LaoFonts.dat");
        std::erase(written, '\r');
        EXPECT_EQ(written, file);
    }
    std::string seen, wanted;
};

TEST_F(FontsDialogs, AreShownChangedAndDeleted)
{
    ExpectBoxes boxes({kQuestion, kQuestion, kLast}, {IDNO, IDYES});
    Run({SHOWS(IDLE "Uni,Unicode,Uni,100,x Cancel"),
         Choose(ID_FONTS_REGISTERED, 1),
         SHOWS(IDLE "Old,Lao95,Uni,90 Cancel"),
         Click(ID_FONTS_MODIFY),
         SHOWS("1003 " EDIT ",Lao95,Uni,90 Cancel"),
         Type(ID_FONTS_NAME, "New"),
         Click(ID_FONTS_EXTENDED),
         Type(ID_FONTS_SUBSTITUTE, "None"),
         Click(ID_OK),
         SHOWS("1003 " EDIT ",Lao95,None,90,x Cancel"),
         Type(ID_FONTS_SCALE, "70000"),
         Click(ID_OK),
         SHOWS(IDLE "New,Lao95,None,4464 Close"),
         Click(ID_FONTS_MODIFY),
         Type(ID_FONTS_NAME, "x"),
         Key(VK_ESCAPE),
         SHOWS(IDLE "New,Lao95,None,4464 Close"),
         Choose(ID_FONTS_REGISTERED, 0),
         Click(ID_FONTS_DELETE),
         SHOWS(IDLE "New,Lao95,None,4464 Close"),
         Click(ID_FONTS_DELETE),
         Key(VK_ESCAPE)},
        "New,Lao95,None,4464\n");
}

TEST_F(FontsDialogs, AreAddedOnce)
{
    static constexpr SystemFontRecord kSystem[] = {
        {"Zed", TRUETYPE_FONTTYPE}, {"Raster", 1}, {"Alpha", TRUETYPE_FONTTYPE}};
    bool isOurs = ListSystemFonts(kSystem, 3);
    std::string first;
    ExpectBoxes boxes({kRegistered});
    Run({Click(ID_FONTS_ADD), See(&first, [](HWND d) { return TextOf(d, ID_FONTS_SYSTEM); }),
         SHOWS("1011 " EDIT ",Unicode,Uni,100,x Cancel"), Type(ID_FONTS_SYSTEM, "old"),
         Click(ID_OK), SHOWS(IDLE "Old,Lao95,Uni,90 Close"), Click(ID_FONTS_ADD), Click(ID_CANCEL),
         Choose(ID_FONTS_REGISTERED, 0), Click(ID_FONTS_ADD),
         Type(ID_FONTS_SYSTEM, std::string(50, 'n')), Key(VK_RETURN),
         SHOWS(IDLE "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn,Unicode,Uni,100,x Close"), Close()},
        std::string(kTwoFonts) + std::string(35, 'n') + ",Unicode,Uni,100,1\n");
    EXPECT_TRUE(!isOurs || first == "Alpha") << first;
    ListSystemFonts(nullptr, 0);
}

TEST_F(FontsDialogs, AreFewerThan128)
{
    std::string list;
    for (int i = 0; i < 126; ++i)
        list += "F" + std::to_string(i) + ",Unicode,,100,0\n";
    ASSERT_EQ(ReplaceFonts(list), 126);
    ExpectBoxes boxes({kQuestion, "can't hold a comma", kNoMore});
    Run({Click(ID_FONTS_ADD), Type(ID_FONTS_SYSTEM, "Last"), Type(ID_FONTS_SUBSTITUTE, ""),
         Click(ID_OK), Click(ID_FONTS_MODIFY), Type(ID_FONTS_NAME, "a,b"), Click(ID_OK),
         Click(ID_CANCEL), Click(ID_FONTS_ADD), Close()},
        list + "Last,Unicode,,100,0\n");
    EXPECT_EQ(gFonts.count, 127);
}
