// Sort keys: digits that, compared as bytes, put Lao text in Lao order. A key is "##", so that keys
// stand apart from plain text, and the text under the sort table: for each syllable the places of
// its initial, cluster, final, vowel and tone in the order of Lao.
#include <cstring>

#include "frame/companion.h"
#include "frame/strings.h"
#include "keytables/builtin_tables.h"
#include "keytables/convert.h"
#include "keytables/work_table.h"
#include "orvel.h"
#include "text/lao_code.h"

enum : DWORD { kLeastKeySize = 8, kPrefixLength = 2 };

// The table in force; it lives until a host names another file.
struct SortState {
    WorkTable work;
};
static SortState gSort = {{{"Empty", {}, {}, 0, 0, kSortTable, {}, 0}, {}}};

// The signs for repetition and "and so on" have no place in the order.
static void BlankWordSigns(char *text)
{
    for (; *text; ++text)
        if (IsWordSign(*text))
            *text = ' ';
}

int WINAPI SortString(const char *text, char *key, DWORD size, const char *font)
{
    if (!text || !key || size < kLeastKeySize)
        return 0;
    char *body = key + kPrefixLength;
    memset(key, 0, size);  // what the copy below doesn't reach is the terminator
    memcpy(key, "##", kPrefixLength);
    memcpy(body, text, strnlen(text, size - kPrefixLength - 1));
    FillWorkTable(&gSort.work, &kBuiltInSortTable);
    int code = FontType(font);
    if (code < 0)
        return 1;  // not Lao text
    RecodeString(body, size - kPrefixLength - 1, code);
    PackLao(body);
    BlankWordSigns(body);
    return ConvertByKeyTable(body, size - kPrefixLength, &gSort.work.table);
}

// The empty text loads the table, so that a bad file is told now.
int WINAPI SetSortKey(char *file)
{
    char key[16];
    NameControlFile(&gSort.work, file);
    return SortString("", key, sizeof key, "Arial");
}

int WINAPI LoadSortKey(const char *content, DWORD size)
{
    return content ? LoadWorkTable(&gSort.work, content, size, &kBuiltInSortTable) : 0;
}
