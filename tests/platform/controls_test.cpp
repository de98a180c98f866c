// The controls of a modal dialog: keys and messages in, notifications and states out, in their
// order. Each row is a script, a word for each time that the dialog has nothing to do, and is heard
// alike on both targets. What Windows leaves open, or does otherwise than Wine, isn't in one.
#include <windows.h>
#include <cstring>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

constexpr int kEditOfCombo = 1001;

struct RunState {
    std::istringstream script;
    HWND control;  // that the words are for; a number chooses it
    std::string heard;
    bool mustDestroy;  // the dialog, at its next notification
    bool isDeaf;       // before the first word and behind the last one
};
static RunState gRun;

static void Hear(const std::string &text)
{
    if (!gRun.isDeaf)
        gRun.heard += (gRun.heard.empty() ? "" : " ") + text;
}

// clang-format off
static constexpr struct { WORD code; const char *name; } kNotifications[] = {
    {BN_CLICKED, "click"}, {EN_SETFOCUS, "focus"}, {EN_KILLFOCUS, "kill"}, {EN_UPDATE, "update"},
    {EN_CHANGE, "change"}, {CBN_SELCHANGE, "select"}, {CBN_SETFOCUS, "focus"},
    {CBN_KILLFOCUS, "kill"}, {CBN_EDITCHANGE, "change"}, {CBN_EDITUPDATE, "update"},
};

// Arguments: n number, r two of them, t text, w number and text; the result of = is heard.
static constexpr struct { const char *name; UINT message; const char *arguments; } kWords[] = {
    {"text:", WM_SETTEXT, "t"}, {"range:", EM_SETSEL, "r"}, {"readonly:", EM_SETREADONLY, "n"},
    {"add:", CB_ADDSTRING, "t="}, {"reset:", CB_RESETCONTENT, "n"}, {"cur:", CB_SETCURSEL, "n"},
    {"exact:", CB_FINDSTRINGEXACT, "w="}, {"length:", CB_GETLBTEXTLEN, "n="},
    {"data:", CB_SETITEMDATA, "r"}, {"item:", CB_GETITEMDATA, "n="}, {"check:", BM_SETCHECK, "n"},
    {"press:", BM_CLICK, "n"}, {"code:", WM_GETDLGCODE, "n="}, {"default:", DM_SETDEFID, "n"},
};
// clang-format on

static INT_PTR CALLBACK KindsProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    if (message != WM_COMMAND || gRun.isDeaf)
        return message == WM_INITDIALOG;
    bool mustEnd = gRun.mustDestroy || wParam == IDCANCEL;
    for (auto [code, name] : kNotifications) {
        if (code != HIWORD(wParam))
            continue;
        Hear(name + std::to_string(LOWORD(wParam)));
        gRun.isDeaf = mustEnd;
    }
    if (gRun.isDeaf)
        EndDialog(dialog, 0);
    if (gRun.isDeaf && gRun.mustDestroy) {
        DestroyWindow(dialog);
        PostMessageA(nullptr, WM_NULL, 0, 0);  // so that the loop looks again
    }
    return TRUE;
}

// Check marks and Tab stops of the buttons.
static std::string MarksOf(HWND dialog)
{
    std::ostringstream marks;
    for (int id : {23, 24, 25, 26}) {
        bool isStop = (GetWindowLongA(GetDlgItem(dialog, id), GWL_STYLE) & WS_TABSTOP) != 0;
        marks << (isStop ? "+" : "-") << IsDlgButtonChecked(dialog, id);
    }
    return marks.str();
}

// The text, with the selection where the focus is, and a combo box's selected entry and entries.
static std::string StateOf(HWND control)
{
    std::ostringstream state;
    char text[64];
    bool isCombo = GetDlgCtrlID(control) != 21;
    HWND edit = isCombo ? GetDlgItem(control, kEditOfCombo) : control;
    GetWindowTextA(control, text, sizeof text);
    state << '[' << text;
    LRESULT range = SendMessageA(edit, EM_GETSEL, 0, 0);
    if (edit && edit == GetFocus())
        state << '|' << LOWORD(range) << '-' << HIWORD(range);
    state << ']';
    LRESULT count = SendMessageA(control, CB_GETCOUNT, 0, 0);  // 0 of an edit box
    if (isCombo)
        state << SendMessageA(control, CB_GETCURSEL, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        SendMessageA(control, CB_GETLBTEXT, WPARAM(i), reinterpret_cast<LPARAM>(text));
        state << (i ? "," : ":") << text;
    }
    return state.str();
}

static void Send(HWND control, UINT message, const std::string &how, const std::string &arguments)
{
    std::istringstream in(arguments);
    long first = 0, second = 0;
    std::string text = arguments;
    if (how[0] != 't')
        in >> first;
    if (how[0] == 'r')
        in.ignore() >> second;
    if (how[0] == 'w')
        getline(in.ignore(), text);
    bool isText = how[0] == 't' || how[0] == 'w';
    LRESULT result = SendMessageA(control, message, WPARAM(first),
                                  isText ? reinterpret_cast<LPARAM>(text.c_str()) : second);
    if (how.back() == '=')
        Hear("=" + std::to_string(result));
}

static void PressKeys(const std::string &word)
{
    bool isShifted = word[0] == '+';
    BYTE key = BYTE(std::stoi(word.substr(isShifted + 1), nullptr, 16));
    if (isShifted)
        keybd_event(VK_SHIFT, 0, 0, 0);
    keybd_event(key, 0, 0, 0);
    keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    if (isShifted)
        keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
}

// Where the focus and the look of the default button are.
static void HearFocus(HWND dialog)
{
    std::string look = GetFocus() ? std::to_string(GetDlgCtrlID(GetFocus())) : "nowhere";
    for (int id : {27, 28, IDCANCEL}) {
        if (SendDlgItemMessageA(dialog, id, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON)
            look += "/" + std::to_string(id);
    }
    Hear("on" + look);
}

// Words that are no message: k2E is a key and +k09 one with Shift; 'ab is typed, < going back; x
// lets the next notification destroy the dialog.
static void Do(HWND dialog, const std::string &word)
{
    if (isdigit(BYTE(word[0])))
        gRun.control = GetDlgItem(dialog, std::stoi(word));
    else if (word[0] == 'k' || word[0] == '+')
        PressKeys(word);
    else if (word == "focus")
        SetFocus(gRun.control);
    else if (word == "off" || word == "hide")
        word == "off" ? EnableWindow(gRun.control, FALSE) : ShowWindow(gRun.control, SW_HIDE);
    else if (word == "on?")
        HearFocus(dialog);
    else if (word == "?" || word == "marks?")
        Hear(word == "?" ? StateOf(gRun.control) : MarksOf(dialog));
    gRun.mustDestroy = gRun.mustDestroy || word == "x";
    for (char typed : word[0] == '\'' ? word.substr(1) : "")
        SendMessageA(GetFocus(), WM_CHAR, WPARAM(BYTE(typed == '<' ? '\b' : typed)), 0);
    for (auto [name, message, how] : kWords) {
        if (word.rfind(name, 0) == 0)
            Send(message == DM_SETDEFID ? dialog : gRun.control, message, how,
                 word.substr(strlen(name)));
    }
}

static LRESULT CALLBACK OwnerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_ENTERIDLE)
        return DefWindowProcA(window, message, wParam, lParam);
    HWND dialog = reinterpret_cast<HWND>(lParam);
    PostMessageA(dialog, WM_NULL, 0, 0);  // so that it is idle again
    if (gRun.isDeaf && GetFocus() != GetDlgItem(dialog, 21))
        return 0;  // the screen hasn't made it active yet
    std::string word;
    gRun.isDeaf = !(gRun.script >> word);
    if (gRun.isDeaf)
        EndDialog(dialog, 0);
    else
        Do(dialog, word);
    return 0;
}

// clang-format off
static constexpr const char *kRows[][2] = {
    // 21: an edit box
    {"21 27 focus 21 focus on? text:abc ? text:abc",
     "kill21 focus21 on21/28 update21 change21 [abc|0-0] update21 change21"},
    {"21 text: 'ab ? text:hello range:1,3 'x ? '< ? '< '<< ?",
     "update21 change21 update21 change21 update21 change21 [ab|2-2] update21 change21 "
     "update21 change21 [hxlo|2-2] update21 change21 [hlo|1-1] update21 change21 [lo|0-0]"},
    {"21 text:abc range:1,1 k2E ? k23 ? k2E k24 ? k27 ? k25 k25 ? range:0,2 k2E ?",
     "update21 change21 update21 change21 [ac|1-1] [ac|2-2] [ac|0-0] [ac|1-1] [ac|0-0] "
     "update21 change21 [|0-0]"},
    {"21 ? range:-1,0 ? range:0,-1 ? range:3,1 ? range:2,99 ? range:0,-65536 ? text:ab ?",
     "[text|0-4] [text|4-4] [text|0-4] [text|1-3] [text|2-4] [text|0-4] update21 change21 "
     "[ab|0-0]"},
    {"21 readonly:1 text:ab 'a k2E '< ? readonly:0 'c ? code:0",
     "update21 change21 [ab|0-0] update21 change21 [cab|1-1] =137"},
    {"21 x 'ab", "update21"}, {"21 x text:a", "update21"}, {"21 x 27 focus", "kill21"},
    // 23: a check box; 24 to 26: radio buttons; 30: a box around a group; 27, 28: push buttons
    {"23 code:0 press:0 marks? press:0 marks? check:1 marks? focus k20 marks?",
     "=8192 kill21 click23 +1+0-0-0 click23 +0+0-0-0 +1+0-0-0 click23 +0+0-0-0"},
    {"24 code:0 press:0 marks? 25 press:0 marks? 26 check:1 marks? check:0 24 focus k20 marks?",
     "=8256 kill21 click24 +0+1-0-0 click25 +0-0+1-0 +0-0+1+1 click24 +0+1-0-0"},
    {"30 code:0 check:1 27 code:0 press:0 check:1 marks? 28 code:0",
     "=256 =8224 kill21 click27 +0+0-0-0 =8208"},
    {"23 focus x press:0", "kill21 click23"}, {"25 focus x press:0", "kill21 click25"},
    // 22: a list that drops down from an edit box, 31: without one, 32: always open, 33: sorted
    {"22 code:0 focus on? focus 27 focus 31 code:0 focus on? 27 focus 32 focus on?",
     "=129 kill21 focus22 on1001/28 kill22 focus22 kill22 =129 focus31 on31/28 kill31 focus32 "
     "on1001/28"},
    {"22 add:bb add:aa add:Ab ? cur:1 ? cur:-1 ? cur:0 text:zz ? reset:0 ?",
     "=0 =1 =2 []-1:bb,aa,Ab [aa]1:bb,aa,Ab []-1:bb,aa,Ab [zz]0:bb,aa,Ab []-1"},
    {"31 add:bb add:aa add:Ab cur:1 ? text:zz ? cur:-1 ? cur:0 reset:0 ?",
     "=0 =1 =2 [aa]1:bb,aa,Ab [aa]1:bb,aa,Ab []-1:bb,aa,Ab []-1"},
    {"33 add:bb add:a_9 cur:0 add:aa add:B9 add:9 add:_x add:aB ? data:1,77 add:5 item:2 item:8",
     "=0 =0 =1 =2 =0 =0 =4 [a_9]2:_x,9,a_9,aa,aB,B9,bb =1 =77 =-1"},
    {"22 add:abc add:ab exact:-1,AB exact:1,ab exact:-1,a length:0 length:3 length:-1",
     "=0 =1 =1 =1 =-1 =3 =-1 =-1"},
    {"22 add:a add:b cur:1 focus ? 'b ? cur:1 '< ? reset:0 ?",
     "=0 =1 kill21 focus22 [b|0-1]1:a,b update22 change22 [b|1-1]-1:a,b update22 change22 "
     "[|0-0]-1:a,b [|0-0]-1"},
    {"22 add:bay add:box add:c focus 'bo k28 ? k28 ? k26 ?",
     "=0 =1 =2 kill21 focus22 update22 change22 update22 change22 select22 "
     "[box|0-3]1:bay,box,c select22 [c|0-1]2:bay,box,c select22 [box|0-3]1:bay,box,c"},
    {"31 add:a add:b focus k28 ? k23 ? k26 ? k27 ? k24 k25 'b ? 'q ?",
     "=0 =1 kill21 focus31 select31 [a]0:a,b select31 [b]1:a,b select31 [a]0:a,b select31 "
     "[b]1:a,b select31 select31 select31 [b]1:a,b [b]1:a,b"},
    {"32 add:a add:b focus 'b ? k28 ?",
     "=0 =1 kill21 focus32 update32 change32 [b|1-1]-1:a,b select32 [b|0-1]1:a,b"},
    {"22 add:a focus x 'y", "=0 kill21 focus22 update22"},
    {"31 add:a focus x k28", "=0 kill21 focus31 select31"},
    {"22 focus x 27 focus", "kill21 focus22 kill22"}, {"27 focus 32 x focus", "kill21 focus32"},
    // focus that can't stay; Tab, Return, Escape and the arrows
    {"21 off on? 22 focus off on? 31 focus hide on?",
     "kill21 onnowhere/28 focus22 kill22 onnowhere/28 focus31 kill31 focus32 on1001/28"},
    {"k09 on? k09 k09 k09 k09 on? k09 on? k09 on? k09 on? k09 on? k09 21 ?",
     "kill21 focus22 on1001/28 kill22 focus31 kill31 focus32 kill32 focus33 kill33 on23/28 "
     "on24/28 on27/27 on28/28 on2/2 focus21 [text|0-4]"},
    {"+k09 on? +k09 on? +k09 on? +k09 on? +k09 on? +k09 on?",
     "kill21 on2/2 on28/28 on27/27 on24/28 on23/28 focus33 on1001/28"},
    {"24 focus k27 on? k28 on? k25 on? k09 on? +k09 on?",
     "kill21 click25 on25/28 click24 on24/28 click25 on25/28 on27/27 on25/28"},
    {"k0D 27 focus k0D +k09 k0D on? k20", "click28 kill21 click28 click28 on24/28 click24"},
    {"default:27 on? k0D 2 focus default:28 on? k0D on? k09 on?",
     "on21/27 click27 kill21 on2/28 click28 on2/28 focus21 on21/28"},
    {"28 off k0D k1B 21 k0D", "click2"},
};
// clang-format on

TEST(Controls, AreHeardAsOnWindows)
{
    HWND owner = CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9, nullptr,
                                 nullptr, nullptr, nullptr);
    SetWindowLongPtrA(owner, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(OwnerProc));
    DWORD fonts = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    for (auto [script, heard] : kRows) {
        gRun = {std::istringstream(script), nullptr, "", false, true};
        DialogBoxParamA(nullptr, "kinds", owner, KindsProc, 0);
        EXPECT_EQ(gRun.heard, heard) << script;
        EXPECT_TRUE(IsWindowEnabled(owner));
    }
    EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), fonts);
    DestroyWindow(owner);
}

TEST(Controls, ExtendedTemplateIsCentredAndBringsItsFont)
{
    HWND dialog = CreateDialogParamA(nullptr, "KINDS", nullptr, KindsProc, 0);
    RECT place = {};
    GetWindowRect(dialog, &place);
    EXPECT_NEAR(place.left + place.right, GetSystemMetrics(SM_CXSCREEN), 1);
    EXPECT_NEAR(place.top + place.bottom, GetSystemMetrics(SM_CYSCREEN), 1);
    EXPECT_TRUE(GetWindowLongA(GetDlgItem(dialog, 70000), GWL_EXSTYLE) & 0x20000);
    LRESULT font = SendMessageA(dialog, WM_GETFONT, 0, 0);
    EXPECT_TRUE(font);
    for (int id : {70000, 21, 22, 31, 23, 30})
        EXPECT_EQ(SendDlgItemMessageA(dialog, id, WM_GETFONT, 0, 0), font) << id;
    HWND edit = GetDlgItem(GetDlgItem(dialog, 22), kEditOfCombo);
    EXPECT_EQ(SendMessageA(edit, WM_GETFONT, 0, 0), font);
    DestroyWindow(dialog);
}

TEST(Controls, NumbersAreReadWithinTheirRange)
{
    HWND dialog = CreateDialogParamA(nullptr, "KINDS", nullptr, KindsProc, 0);
    struct Row {
        const char *text;
        BOOL isSigned, isNumber;
        UINT number;
    } const rows[] = {
        // clang-format off
        {"0", FALSE, TRUE, 0}, {"  12x", FALSE, TRUE, 12}, {"-5", TRUE, TRUE, UINT(-5)},
        {"", FALSE, FALSE, 0}, {"x1", TRUE, FALSE, 0}, {"-", TRUE, FALSE, 0},
        {"4294967294", FALSE, TRUE, 4294967294}, {"4294967296", FALSE, FALSE, 0},
        {"2147483646", TRUE, TRUE, 2147483646}, {"2147483648", TRUE, FALSE, 0},
        {"-99999999999999999999999999", TRUE, FALSE, 0},
        // clang-format on
    };
    for (const Row &row : rows) {
        BOOL isNumber = 7;
        SetDlgItemTextA(dialog, 21, row.text);
        EXPECT_EQ(GetDlgItemInt(dialog, 21, &isNumber, row.isSigned), row.number) << row.text;
        EXPECT_EQ(isNumber, row.isNumber) << row.text;
    }
    DestroyWindow(dialog);
}
