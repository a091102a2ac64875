#include "storage/syncfile.h"

#include <io.h>

bool storage::syncFile(int descriptor)
{
    return _commit(descriptor) == 0;
}

void storage::syncFolderOf(const QString &)
{
    // The journal of the file system protects names.
}
