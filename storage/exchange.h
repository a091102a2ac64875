#pragma once

#include "storage/disk.h"
#include "storage/values.h"

#include <QStringList>

#include <optional>
#include <vector>

/// The files in which scenes are kept and exchanged, "NAME.tamber". A file holds one scene or a
/// backup of all slots, with the values of mixer and outputs, but none of the panel's own. The
/// format is described in docs/exchange.md. Except for readExchange(), pure functions; any thread.
namespace storage {

constexpr int exchangeFormat = 1;
constexpr int largestExchange = 1024 * 1024; ///< bytes
constexpr char exchangeEnding[] = ".tamber";

struct ExchangeScene
{
    int slot = 0; ///< 1 to 10 in a backup, 0 in the file of a single scene
    QString name;
    Values values;
};

/// Returns the text of a file.
/// @param panel the version of the panel that writes it
QByteArray toExchange(const std::vector<ExchangeScene> &scenes, const QString &panel);

/// What was read from a file.
struct Exchange
{
    QString problem; ///< a sentence that says why nothing was taken; empty if the file is good
    std::vector<ExchangeScene> scenes; ///< in the order of their slots; none if there is a problem
    QStringList leftOut;               ///< entries with unknown names or unreadable values
};

/// Reads a file. Trusts nothing in it: a file that is too large, damaged, of another format or
/// without a scene is refused as a whole.
Exchange fromExchange(const QByteArray &text);

/// Reads a file from a disk. A file that cannot be read is a problem too. GUI thread only.
Exchange readExchange(Disk &disk, const QString &path);

/// Returns only those values that a file carries.
Values exchangeable(const Values &values);

} // namespace storage
