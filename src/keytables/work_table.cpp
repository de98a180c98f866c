// Filling of work tables. A table that isn't filled yet has the name "Empty", which a host's own
// file of that name shares: it is read again at each use then.
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
    work->table = *builtIn;  // no file, or one that was told to be bad
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
