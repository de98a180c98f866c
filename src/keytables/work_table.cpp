// Filling of work tables.
#include "keytables/work_table.h"

#include <cstring>

#include "frame/strings.h"

void NameControlFile(WorkTable *work, char *file)
{
    CopyCut(work->table.name, sizeof work->table.name, kUnloadedName);
    work->fileName[0] = 0;
    if (!file || !*TrimSpaces(file))
        return;
    if (!CopyWhole(work->fileName, sizeof work->fileName, file))
        TellMissingControlFile();
}

int FillWorkTable(WorkTable *work, const KeyTable *builtIn)
{
    if (!EqualNoCase(work->table.name, kUnloadedName))
        return 0;
    if (work->fileName[0] && LoadControlFile(&work->table, work->fileName, builtIn->type))
        return 0;
    work->table = *builtIn;
    return 1;
}

int LoadWorkTable(WorkTable *work, const char *content, size_t size, const KeyTable *builtIn)
{
    work->fileName[0] = 0;
    if (LoadControlText(&work->table, content, size, builtIn->type))
        return 1;
    work->table = *builtIn;
    return 0;
}
