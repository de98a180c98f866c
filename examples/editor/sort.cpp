// Sorting of the selected lines, or of all. The library's dialog asks for the keys, each a column
// between tabs, and the library makes the keys of Lao order, which are compared as bytes.
#include <algorithm>
#include <vector>

#include "commands.h"
#include "document.h"
#include "encoding.h"
#include "library.h"

constexpr int kKeys = 3;
enum KeyType { kLaoOrder, kAlphabetic, kNumeric, kDate };

// What the dialog gave.
struct SortRequest {
    short columns[kKeys], types[kKeys], orders[kKeys];
    short keepsKeys, skipsHeader;
};

// A line and what each of its keys is compared by: bytes, a text, or a number.
struct Line {
    std::wstring text;
    std::string bytes[kKeys];
    std::wstring words[kKeys];
    double numbers[kKeys];
};

static std::vector<Line> SplitLines(const std::wstring &text)
{
    std::vector<Line> lines;
    for (size_t start = 0; start <= text.size();) {
        size_t end = std::min(text.find(L"\r\n", start), text.size());
        lines.push_back({text.substr(start, end - start), {}, {}, {}});
        start = end + 2;
    }
    return lines;
}

static std::wstring Column(const std::wstring &line, int number)
{
    size_t start = 0;
    while (--number > 0) {
        start = line.find(L'\t', start);
        if (start == line.npos)
            return {};
        ++start;
    }
    return line.substr(start, line.find(L'\t', start) - start);
}

// A registered font whose text is the internal code.
static std::string FindTextFont()
{
    char name[37], substitute[37];
    for (int number = 1, code;
         (code = gOrvel.GetLaoFontInfo(name, substitute, sizeof name, nullptr, number)) >= 0;
         ++number)
        if (code <= 1)
            return name;
    return {};
}

static std::string LaoKey(const std::wstring &text)
{
    std::string code = ToInternal(text);
    std::vector<char> key(8 * code.size() + 16);  // a syllable takes eight bytes
    gOrvel.SortString(code.c_str(), key.data(), DWORD(key.size()), FindTextFont().c_str());
    return key.data();
}

// Day, month and year with anything between them.
static double DateNumber(const std::wstring &text)
{
    int day = 0, month = 0, year = 0;
    swscanf(text.c_str(), L"%d%*1[./- ]%d%*1[./- ]%d", &day, &month, &year);
    return year * 10000.0 + month * 100 + day;
}

static void MakeKeys(const SortRequest &request, Line *line)
{
    for (int key = 0; key < kKeys; ++key) {
        std::wstring text = Column(line->text, request.columns[key]);
        if (request.columns[key] == 0)
            continue;
        switch (request.types[key]) {
        case kLaoOrder: line->bytes[key] = LaoKey(text); break;
        case kAlphabetic: line->words[key] = text; break;
        case kNumeric: line->numbers[key] = wcstod(text.c_str(), nullptr); break;
        case kDate: line->numbers[key] = DateNumber(text); break;
        }
    }
}

// Below, equal or above 0.
static int CompareKey(const Line &left, const Line &right, int key)
{
    if (left.numbers[key] != right.numbers[key])
        return left.numbers[key] < right.numbers[key] ? -1 : 1;
    int words = lstrcmpiW(left.words[key].c_str(), right.words[key].c_str());
    return words ? words : left.bytes[key].compare(right.bytes[key]);
}

static void SortByKeys(const SortRequest &request, std::vector<Line> *lines)
{
    auto first = lines->begin() + (request.skipsHeader && !lines->empty() ? 1 : 0);
    for (auto line = first; line != lines->end(); ++line)
        MakeKeys(request, &*line);
    std::stable_sort(first, lines->end(), [&](const Line &left, const Line &right) {
        for (int key = 0; key < kKeys; ++key) {
            int order = CompareKey(left, right, key);
            if (order != 0)
                return request.orders[key] ? order > 0 : order < 0;
        }
        return false;
    });
    if (request.keepsKeys)  // as one more column, for who compares them elsewhere
        for (auto line = first; line != lines->end(); ++line)
            line->text += L"\t" + std::wstring(line->bytes[0].begin(), line->bytes[0].end());
}

// The lines that a selection touches, without the last one's end; all without a selection.
static Range ReadLineRange(const std::wstring &text)
{
    Range range = ReadSelection();
    if (range.start == range.end)
        range = {0, text.size()};
    while (range.start > 0 && text[range.start - 1] != L'\n')
        --range.start;
    if (range.end > range.start && text[range.end - 1] == L'\n')
        range.end -= 2;
    range.end = std::min(text.find(L"\r\n", range.end), text.size());
    return range;
}

static bool AskForKeys(const std::vector<Line> &lines, SortRequest *request)
{
    ptrdiff_t columns = 1;
    for (const Line &line : lines)
        columns = std::max(columns, 1 + std::count(line.text.begin(), line.text.end(), L'\t'));
    if (!gOrvel.ShowLaoSortDialog(gDocument.frame, short(std::min<ptrdiff_t>(columns, 99)),
                                  request->columns, request->types, request->orders,
                                  &request->keepsKeys, &request->skipsHeader))
        return false;
    for (int key = 1; key < kKeys; ++key)  // their types count from -1
        ++request->types[key];
    return true;
}

void SortLines()
{
    std::wstring text = ReadText(), sorted;
    Range range = ReadLineRange(text);
    std::vector<Line> lines = SplitLines(text.substr(range.start, range.end - range.start));
    SortRequest request = {};
    if (!AskForKeys(lines, &request))
        return;
    SortByKeys(request, &lines);
    for (const Line &line : lines)
        sorted += line.text + L"\r\n";
    sorted.resize(sorted.size() - 2);
    ReplaceRange(range, sorted);
}
