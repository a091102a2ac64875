#pragma once

#include "storage/filehealth.h"

#include <QMap>
#include <QString>
#include <QVariant>

/// INI files that are only ever replaced whole: the new content lies complete and on disk beside
/// the file before it takes its place. Whenever the process is killed, the file is the old one or
/// the new one; what is left beside it is tidied up later.
namespace storage {

/// The values of an INI file by "group/key".
using Values = QMap<QString, QVariant>;

/// The INI file of this organisation and application in the user's settings folder. A "/" at the
/// beginning of the application makes no difference.
QString pathOf(const char *organisation, const char *application);

/// A name beside a file under which a new one is made. It is this process's own, so that nobody's
/// lock on it can keep a write waiting.
QString freshName(const QString &fileName);

/// Removes what processes that were killed while they wrote this file have left.
void removeLeftovers(const QString &fileName);

/// Adds the values of a file, as far as it can be read.
FileHealth readValues(const QString &fileName, Values &values);

/// Makes a copy that is on disk, byte for byte, at a path that nobody reads yet.
bool makeCopy(const QString &of, const QString &fileName);

/// These three replace a file, and leave it as it was when they answer false.
///@{
bool writeValues(const QString &fileName, const Values &values);
bool copyWhole(const QString &from, const QString &fileName);
bool replaceFile(const QString &fileName, const QString &by);
///@}

} // namespace storage
