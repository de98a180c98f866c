// The spelling check. The library's dialog shows one word at a time and calls back with what the
// user pressed; here the word is acted on, the next one is found and handed over. The user can work
// on the text in between, so a word is looked for anew each time and changed only where it still
// stands.
#include <algorithm>

#include "commands.h"
#include "division.h"
#include "document.h"
#include "encoding.h"
#include "library.h"

constexpr size_t kWordRoom = 120;  // characters of a word; the dialog takes 126 bytes of it
constexpr int kTextSize = 128;     // bytes of a text of the dialog, terminator included

// A check, from its start to the dialog's end.
struct SpellingCheck {
    size_t next;        // where in the text the search goes on
    Range range;        // of the word that the dialog shows
    std::wstring word;  // its text, as it stands in the document
    std::vector<std::wstring> ignored;
};
static SpellingCheck gCheck;

static std::wstring ModernSpelling(const std::wstring &word)
{
    char modern[kTextSize];
    bool isOld = gOrvel.FindOldWord(ToInternal(WithoutMarks(word)).c_str(), modern, sizeof modern);
    return isOld ? FromInternal(modern) : std::wstring();
}

static void ChangeWord(const std::wstring &by)
{
    if (ReadText().compare(gCheck.range.start, gCheck.word.size(), gCheck.word) != 0)
        return;
    ReplaceRange(gCheck.range, by);
    gCheck.next = gCheck.range.start + by.size();
}

static void ChangeAllWords(const std::wstring &by)
{
    std::wstring text = ReadText(), changed;
    size_t written = 0;
    for (const LaoChunk &chunk : Divide(text, kBothBreaks)) {
        if (text.compare(chunk.start, chunk.end - chunk.start, gCheck.word) != 0)
            continue;
        changed.append(text, written, chunk.start - written);
        changed += by;
        written = chunk.end;
        if (chunk.start == gCheck.range.start)
            gCheck.next = changed.size();
    }
    changed.append(text, written);
    ReplaceRange({0, text.size()}, changed);
}

static std::wstring ReadChangedText()
{
    char text[kTextSize];
    return gOrvel.GetChangedText(text, sizeof text) ? FromInternal(text) : gCheck.word;
}

static bool IsIgnored(const std::wstring &word)
{
    return std::find(gCheck.ignored.begin(), gCheck.ignored.end(), word) != gCheck.ignored.end();
}

// Takes the next word that is to be looked at, behind gCheck.next. A stretch that is too long for
// the dialog is shown in pieces.
static bool FindWord(const std::wstring &text, BYTE *kind)
{
    WORD oldSpelling = gOrvel.GetOrvelOption("o");
    for (const LaoChunk &chunk : Divide(text, kBothBreaks)) {
        size_t start = std::max<size_t>(chunk.start, gCheck.next);
        bool isOld = chunk.kind == kOldWord && oldSpelling != kKeepOldSpelling;
        if (chunk.end <= start || !(isOld || chunk.kind == kBadStretch))
            continue;
        gCheck.range = {start, std::min<size_t>(chunk.end, start + kWordRoom)};
        gCheck.word = text.substr(start, gCheck.range.end - start);
        gCheck.next = gCheck.range.end;
        *kind = chunk.kind;
        if (!IsIgnored(gCheck.word))
            return true;
    }
    return false;
}

// 1 when the dialog has a next word, 0 when the text has none.
static int ShowNextWord()
{
    BYTE kind;
    while (FindWord(ReadText(), &kind)) {
        std::wstring modern = kind == kOldWord ? ModernSpelling(gCheck.word) : L"";
        if (!modern.empty() && gOrvel.GetOrvelOption("o") == kChangeOldSpelling) {
            ChangeWord(modern);
            continue;
        }
        SelectRange(gCheck.range);
        gOrvel.SetMarkedText(ToInternal(gCheck.word).c_str(), ToInternal(modern).c_str(), kind);
        return 1;
    }
    return 0;
}

static int WINAPI OnSpelling(DWORD action)
{
    switch (action) {
    case kSpellCancelled: return 0;
    case kSpellDone: Tell(L"The spelling check is complete."); return 0;
    case kSpellIgnoreAll: gCheck.ignored.push_back(gCheck.word); break;
    case kSpellChange: ChangeWord(ReadChangedText()); break;
    case kSpellChangeAll: ChangeAllWords(ReadChangedText()); break;
    }
    return ShowNextWord();
}

void CheckSpelling()
{
    gCheck = {};
    gOrvel.StartSpellChecking(gDocument.frame, OnSpelling);
}
