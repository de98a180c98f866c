// Find and replace. The library's dialog collects the texts and calls back; the searching is done
// here. To search without regard to breaks the text is searched without them, and each character
// that is left knows its place.
#include <vector>

#include "commands.h"
#include "document.h"
#include "encoding.h"
#include "library.h"

constexpr int kTextSize = 128;  // bytes of a text of the dialog, terminator included

struct FindRequest {
    std::wstring text, replacement;
    bool ignoresBreaks, isUpward;
};

struct SearchedText {
    std::wstring text;
    std::vector<size_t> places;  // of each character in the document, and the document's end
};

static FindRequest ReadRequest()
{
    char text[kTextSize] = "", replacement[kTextSize] = "";
    DWORD ignoresBreaks = 0, direction = 0;
    gOrvel.GetFindReplaceText(text, replacement, kTextSize, &ignoresBreaks, &direction);
    FindRequest request = {FromInternal(text), FromInternal(replacement), ignoresBreaks != 0,
                           direction == 1};
    if (request.ignoresBreaks)
        request.text = WithoutMarks(request.text);
    return request;
}

static SearchedText ReadSearchedText(bool ignoresBreaks)
{
    std::wstring text = ReadText();
    SearchedText searched;
    for (size_t i = 0; i < text.size(); ++i) {
        if (ignoresBreaks && text[i] == kBreak)
            continue;
        searched.text += text[i];
        searched.places.push_back(i);
    }
    searched.places.push_back(text.size());
    return searched;
}

// The number of characters that are left in front of a place.
static size_t CountBefore(const SearchedText &searched, size_t place)
{
    size_t count = 0;
    while (count < searched.text.size() && searched.places[count] < place)
        ++count;
    return count;
}

// The place of a text found: from its first character to behind its last one.
static Range PlaceOf(const SearchedText &searched, size_t found, size_t length)
{
    return {searched.places[found], searched.places[found + length - 1] + 1};
}

static void FindNext(const FindRequest &request)
{
    SearchedText searched = ReadSearchedText(request.ignoresBreaks);
    Range selection = ReadSelection();
    size_t start = CountBefore(searched, selection.start), found;
    if (!request.isUpward)
        found = searched.text.find(request.text, CountBefore(searched, selection.end));
    else if (start < request.text.size())
        found = searched.text.npos;
    else
        found = searched.text.rfind(request.text, start - request.text.size());
    if (found == searched.text.npos)
        Tell(L"The text isn't found.");
    else
        SelectRange(PlaceOf(searched, found, request.text.size()));
}

static void ReplaceSelected(const FindRequest &request)
{
    Range selection = ReadSelection();
    std::wstring selected = ReadText().substr(selection.start, selection.end - selection.start);
    if (request.ignoresBreaks)
        selected = WithoutMarks(selected);
    if (selected == request.text)
        ReplaceRange(selection, request.replacement);
    FindNext(request);
}

static void ReplaceEach(const FindRequest &request)
{
    SearchedText searched = ReadSearchedText(request.ignoresBreaks);
    std::wstring text = ReadText(), replaced;
    size_t written = 0, count = 0;
    for (size_t at = 0; (at = searched.text.find(request.text, at)) != searched.text.npos;
         at += request.text.size(), ++count) {
        Range range = PlaceOf(searched, at, request.text.size());
        replaced.append(text, written, range.start - written);
        replaced += request.replacement;
        written = range.end;
    }
    replaced.append(text, written);
    if (count)
        ReplaceRange({0, text.size()}, replaced);
    Tell((std::to_wstring(count) + L" replaced.").c_str());
}

static int WINAPI OnFind(DWORD action)
{
    FindRequest request = ReadRequest();
    if (request.text.empty())
        return 0;
    switch (action) {
    case kFindNext: FindNext(request); break;
    case kReplaceFound: ReplaceSelected(request); break;
    case kReplaceAll: ReplaceEach(request); break;
    }
    return 0;
}

// What is selected on one line is what to find; without a selection it is what was last.
static void OpenFindDialog(int forReplacing)
{
    Range selection = ReadSelection();
    std::wstring text = ReadText().substr(selection.start, selection.end - selection.start);
    std::string code = ToInternal(text.substr(0, text.find(L'\r')));
    gOrvel.StartOrvelFind(gDocument.frame, forReplacing, code.empty() ? nullptr : code.c_str(), 1,
                          OnFind);
}

void FindTextCommand()
{
    OpenFindDialog(0);
}

void ReplaceTextCommand()
{
    OpenFindDialog(1);
}
