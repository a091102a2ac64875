#include "storage/syncfile.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

bool storage::syncFile(int descriptor)
{
    return fsync(descriptor) == 0;
}

void storage::syncFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    const int descriptor = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor); // some file systems do not support this for folders
    close(descriptor);
}
