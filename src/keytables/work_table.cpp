// Filling of work tables. A table that isn't filled yet has the name "Empty", which a host's own
// file of that name shares: it is read again at each use then.
#include "keytables/work_table.h"

#include <cstring>

#include "frame/strings.h"

struct WorkTableState {
    uint32_t fillings;  // of all work tables so far
};
static WorkTableState gWorkTables;

// What is remembered of a table's answers goes by the number.
static void CountFilling(WorkTable *work)
{
    work->table.filling = ++gWorkTables.fillings;
}

void NameControlFile(WorkTable *work, char *file)
{
    CopyCut(work->table.name, sizeof work->table.name, kUnloadedName);
    work->fileName[0] = 0;
    if (!file || !*TrimSpaces(file))
        return;
    if (!CopyWhole(work->fileName, sizeof work->fileName, file))
        TellMissingControlFile();
}

static int FillFromFile(WorkTable *work, const KeyTable *builtIn)
{
    return work->fileName[0] && LoadControlFile(&work->table, work->fileName, builtIn->type);
}

int FillWorkTable(WorkTable *work, const KeyTable *builtIn)
{
    if (!EqualNoCase(work->table.name, kUnloadedName))
        return 0;
    int isBuiltIn = !FillFromFile(work, builtIn);
    if (isBuiltIn)
        work->table = *builtIn;  // no file, or one that was told to be bad
    CountFilling(work);
    return isBuiltIn;
}

int LoadWorkTable(WorkTable *work, const char *content, size_t size, const KeyTable *builtIn)
{
    work->fileName[0] = 0;
    int isGood = LoadControlText(&work->table, content, size, builtIn->type);
    if (!isGood)
        work->table = *builtIn;
    CountFilling(work);
    return isGood;
}
