// Where an element ends, its formatting elements don't: "<p><font face=X>a</p>b" has b in X too.
// But no formatting leaves a cell.
#include "documents/html_tree.h"

#include <cstdlib>
#include <cstring>
#include <iterator>

#include "frame/strings.h"

constexpr size_t kMostOpen = 4096;

struct KindRow {
    std::string_view name;
    HtmlKind kind;
};
// clang-format off
constexpr KindRow kKinds[] = {
    {"font", kFormatting}, {"b", kFormatting}, {"i", kFormatting}, {"u", kFormatting}, {"a", kFormatting},
    {"em", kFormatting}, {"strong", kFormatting}, {"big", kFormatting}, {"small", kFormatting}, {"tt", kFormatting},
    {"s", kFormatting}, {"strike", kFormatting}, {"code", kFormatting}, {"nobr", kFormatting},
    {"p", kBlock}, {"div", kBlock}, {"center", kBlock}, {"h1", kBlock}, {"h2", kBlock}, {"h3", kBlock}, {"h4", kBlock},
    {"h5", kBlock}, {"h6", kBlock}, {"ul", kBlock}, {"ol", kBlock}, {"dl", kBlock}, {"li", kBlock}, {"dt", kBlock}, {"dd", kBlock},
    {"pre", kBlock}, {"blockquote", kBlock}, {"table", kBlock}, {"tr", kBlock}, {"tbody", kBlock}, {"thead", kBlock}, {"tfoot", kBlock},
    {"form", kBlock}, {"address", kBlock}, {"body", kBlock}, {"html", kBlock}, {"head", kBlock}, {"fieldset", kBlock}, {"dir", kBlock}, {"menu", kBlock},
    {"section", kBlock}, {"article", kBlock}, {"header", kBlock}, {"footer", kBlock}, {"nav", kBlock}, {"main", kBlock}, {"option", kBlock},
    {"td", kCell}, {"th", kCell}, {"caption", kCell},
    {"br", kVoid}, {"hr", kVoid}, {"img", kVoid}, {"input", kVoid}, {"meta", kVoid}, {"link", kVoid}, {"base", kVoid}, {"area", kVoid},
    {"col", kVoid}, {"embed", kVoid}, {"param", kVoid}, {"wbr", kVoid}, {"basefont", kVoid}, {"frame", kVoid}, {"bgsound", kVoid}, {"spacer", kVoid},
    {"source", kVoid}, {"track", kVoid},
    {"script", kRawText}, {"style", kRawText}, {"title", kRawText}, {"textarea", kRawText}, {"xmp", kRawText}, {"noscript", kInline},
};

// What an element ends where it opens, as far out as one of the third list stands.
struct EndRow {
    std::string_view opens, ends, stops;
};
constexpr EndRow kEnds[] = {
    {"li",     "li",              "ul ol dir menu td th"},
    {"dt",     "dt dd",           "dl td th"},
    {"dd",     "dt dd",           "dl td th"},
    {"td",     "td th caption",   "table"},
    {"th",     "td th caption",   "table"},
    {"tr",     "tr td th caption", "table"},
    {"tbody",  "tbody thead tfoot tr td th caption", "table"},
    {"thead",  "tbody thead tfoot tr td th caption", "table"},
    {"tfoot",  "tbody thead tfoot tr td th caption", "table"},
    {"option", "option",          "select"},
};
constexpr EndRow kParagraphEnd = {"", "p", "td th table caption body"};
// clang-format on
constexpr std::string_view kVerbatim[] = {"pre", "code", "tt", "xmp", "listing"};

void FreeHtmlTree(HtmlTree *tree)
{
    free(tree->open);
    *tree = {};
}

HtmlElement ElementOfName(std::string_view name)
{
    HtmlElement element = {};
    for (size_t i = 0; i < name.size() && i + 1 < sizeof element.name; ++i)
        element.name[i] = FoldLetter(name[i]);
    for (const KindRow &row : kKinds)
        if (row.name == element.name)
            element.kind = row.kind;
    for (std::string_view verbatim : kVerbatim)
        element.isVerbatim = element.isVerbatim || verbatim == element.name;
    return element;
}

static bool IsAmong(std::string_view names, std::string_view name)
{
    for (size_t at = names.find(name); at != names.npos; at = names.find(name, at + 1)) {
        size_t end = at + name.size();
        if ((at == 0 || names[at - 1] == ' ') && (end == names.size() || names[end] == ' '))
            return true;
    }
    return false;
}

// Takes out the element at a place and what is in it. What formats stays, but for cells.
static void CloseAt(HtmlTree *tree, size_t at)
{
    bool takesAll = tree->open[at].kind == kCell, takesOne = tree->open[at].kind == kFormatting;
    size_t kept = at;
    for (size_t i = at + 1; i < tree->count; ++i)
        if (takesOne || (!takesAll && tree->open[i].kind == kFormatting))
            tree->open[kept++] = tree->open[i];
    tree->count = kept;
}

static void CloseAmong(HtmlTree *tree, const EndRow &row)
{
    for (size_t i = tree->count; i > 0; --i) {
        std::string_view name = tree->open[i - 1].name;
        if (IsAmong(row.stops, name))
            return;
        if (IsAmong(row.ends, name)) {
            CloseAt(tree, i - 1);
            i = tree->count + 1;
        }
    }
}

void OpenHtmlElement(HtmlTree *tree, const HtmlElement &element)
{
    void *open = tree->open;
    if (element.kind == kBlock || element.kind == kCell)
        CloseAmong(tree, kParagraphEnd);
    for (const EndRow &row : kEnds)
        if (row.opens == element.name)
            CloseAmong(tree, row);
    if (element.kind == kVoid)
        return;
    tree->failed = tree->failed || tree->count >= kMostOpen ||
                   !GrowArray(&open, &tree->room, tree->count + 1, sizeof element);
    tree->open = static_cast<HtmlElement *>(open);
    if (!tree->failed)
        tree->open[tree->count++] = element;
}

// A cell isn't closed from inside by what is open around its table.
void CloseHtmlElement(HtmlTree *tree, std::string_view name)
{
    HtmlElement element = ElementOfName(name);
    for (size_t i = tree->count; i > 0; --i) {
        if (strcmp(tree->open[i - 1].name, element.name) == 0) {
            CloseAt(tree, i - 1);
            return;
        }
        if (tree->open[i - 1].kind == kCell && element.kind != kBlock && element.kind != kCell)
            return;
    }
}

int FontHere(const HtmlTree &tree)
{
    for (size_t i = tree.count; i > 0; --i)
        if (tree.open[i - 1].font)
            return tree.open[i - 1].font;
    return 0;
}

bool IsVerbatimHere(const HtmlTree &tree)
{
    for (size_t i = 0; i < tree.count; ++i)
        if (tree.open[i].isVerbatim)
            return true;
    return false;
}
