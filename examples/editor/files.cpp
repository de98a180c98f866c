// Opening and saving. A file is saved beside its old state and takes its place when it is whole;
// what it had of its own, line ends and byte order mark, it has again.
#include "document.h"

#include <commdlg.h>
#include <cstdio>
#include <vector>

#include "commands.h"
#include "encoding.h"
#include "library.h"

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr int kFontCodes = 16;

// The kinds of the file dialogs: UTF-8, then the font codes that there are.
struct FileKinds {
    std::wstring filter;
    std::vector<int> codes;
};

static FileKinds ListFileKinds()
{
    FileKinds kinds = {std::wstring(L"UTF-8 text\0*.*\0", 15), {kUtf8}};
    for (int code = 0; code < kFontCodes; ++code) {
        char name[32];
        int length = gOrvel.GetFontCodeName(name, sizeof name, code);
        if (length <= 0)
            continue;
        kinds.codes.push_back(code);
        kinds.filter += L"Text in " + std::wstring(name, name + length);
        kinds.filter.append(L" code\0*.*\0", 10);
    }
    return kinds;
}

// Asks for a file and the code of its text, which is offered as it was.
static bool AskForFile(bool forSaving, std::wstring *path, int *code)
{
    FileKinds kinds = ListFileKinds();
    wchar_t name[MAX_PATH] = L"";
    path->copy(name, MAX_PATH - 1);
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = gDocument.frame;
    dialog.lpstrFilter = kinds.filter.c_str();
    dialog.lpstrFile = name;
    dialog.nMaxFile = MAX_PATH;
    dialog.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST |
                   (forSaving ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    for (size_t i = 0; i < kinds.codes.size(); ++i)
        if (kinds.codes[i] == *code)
            dialog.nFilterIndex = DWORD(i + 1);
    if (!(forSaving ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog)))
        return false;
    *path = name;
    *code = kinds.codes[dialog.nFilterIndex ? dialog.nFilterIndex - 1 : 0];
    return true;
}

static bool ReadFileBytes(const std::wstring &path, std::string *bytes)
{
    FILE *file = _wfopen(path.c_str(), L"rb");
    if (!file)
        return false;
    char block[4096];
    for (size_t count; (count = fread(block, 1, sizeof block, file)) > 0;)
        bytes->append(block, count);
    bool done = !ferror(file);
    fclose(file);
    return done;
}

static bool WriteFileBytes(const std::wstring &path, const std::string &bytes)
{
    std::wstring beside = path + L".new";
    FILE *file = _wfopen(beside.c_str(), L"wb");
    if (!file)
        return false;
    bool done = fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    done = fclose(file) == 0 && done;
    done = done && MoveFileExW(beside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
    if (!done)
        DeleteFileW(beside.c_str());
    return done;
}

static void ReplaceAll(std::wstring *text, std::wstring_view old, std::wstring_view by)
{
    for (size_t i = 0; (i = text->find(old, i)) != text->npos; i += by.size())
        text->replace(i, old.size(), by);
}

static void ShowFileName()
{
    size_t name = gDocument.path.find_last_of(L"\\/:") + 1;
    SetWindowTextW(gDocument.frame, (gDocument.path.substr(name) + L" - Editor").c_str());
    SendMessageW(gDocument.text, EM_SETMODIFY, FALSE, 0);
}

bool LoadFile(const std::wstring &path, int code)
{
    std::string bytes;
    std::wstring text;
    if (!ReadFileBytes(path, &bytes)) {
        Tell((path + L" can't be read.").c_str());
        return false;
    }
    bool hasMark = code == kUtf8 && bytes.starts_with(kByteOrderMark);
    if (!DecodeText(hasMark ? bytes.substr(3) : bytes, code, &text)) {
        Tell((path + L" isn't text of the code chosen.").c_str());
        return false;
    }
    if (gDocument.showsMarks)
        ToggleMarks();
    gDocument.path = path;
    gDocument.code = code;
    gDocument.hasByteOrderMark = hasMark;
    gDocument.hasPlainLineFeeds = text.find(L"\r\n") == text.npos && text.find(L'\n') != text.npos;
    ReplaceAll(&text, L"\r\n", L"\n");
    ReplaceAll(&text, L"\n", L"\r\n");
    SetWindowTextW(gDocument.text, text.c_str());
    ShowFileName();
    return true;
}

static bool SaveTo(const std::wstring &path, int code)
{
    std::wstring text = ReadText();
    if (gDocument.hasPlainLineFeeds)
        ReplaceAll(&text, L"\r\n", L"\n");
    std::string bytes;
    if (!EncodeText(text, code, &bytes) &&
        MessageBoxW(gDocument.frame,
                    L"Some characters have no place in this code and will be lost. Save all the "
                    L"same?",
                    L"Editor", MB_YESNO | MB_DEFBUTTON2 | MB_ICONWARNING) != IDYES)
        return false;
    if (code == kUtf8 && gDocument.hasByteOrderMark)
        bytes.insert(0, kByteOrderMark);
    if (!WriteFileBytes(path, bytes)) {
        Tell((path + L" can't be written.").c_str());
        return false;
    }
    gDocument.path = path;
    gDocument.code = code;
    ShowFileName();
    return true;
}

static bool SaveAs()
{
    std::wstring path = gDocument.path;
    int code = gDocument.code;
    return AskForFile(true, &path, &code) && SaveTo(path, code);
}

static bool Save()
{
    return gDocument.path.empty() ? SaveAs() : SaveTo(gDocument.path, gDocument.code);
}

void SaveFile()
{
    Save();
}

void SaveFileAs()
{
    SaveAs();
}

bool CanDiscard()
{
    if (!SendMessageW(gDocument.text, EM_GETMODIFY, 0, 0))
        return true;
    int answer = MessageBoxW(gDocument.frame, L"Save the changes?", L"Editor",
                             MB_YESNOCANCEL | MB_ICONQUESTION);
    return answer == IDNO || (answer == IDYES && Save());
}

void OpenFile()
{
    std::wstring path;
    int code = gDocument.code;
    if (CanDiscard() && AskForFile(false, &path, &code))
        LoadFile(path, code);
}

static std::string Utf8Path(const std::wstring &path)
{
    std::string bytes;
    EncodeText(path, kUtf8, &bytes);
    return bytes;
}

// A document of the word processor, legacy fonts to Unicode ones. The library shows its meter, and
// says itself what went wrong.
void ConvertFiles()
{
    std::wstring from, to;
    int code = kUtf8;
    if (!AskForFile(false, &from, &code) || !AskForFile(true, &to, &code))
        return;
    std::string source = Utf8Path(from), destination = Utf8Path(to);
    DocumentJob job = {};
    job.size = sizeof job;
    job.source = source.c_str();
    job.destination = destination.c_str();
    EnableWindow(gDocument.frame, FALSE);
    DWORD failure = gOrvel.ConvertDocument(&job);
    EnableWindow(gDocument.frame, TRUE);
    SetForegroundWindow(gDocument.frame);
    if (!failure)
        Tell((to + L" is written.").c_str());
}
