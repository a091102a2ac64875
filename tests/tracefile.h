#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>

/// A line of a trace file.
struct TraceLine
{
    QByteArray what; ///< "out", "in", "rate" or "find"
    bool failed;
    QByteArray bytes; ///< in hexadecimal, separated by blanks

    /// The value of the first one-byte item with this tag, -1 if there is none.
    int item(const char *tag) const
    {
        const int at = (' ' + bytes).indexOf(' ' + QByteArray(tag) + " 02 ");
        return at < 0 ? -1 : bytes.mid(at + 6, 2).toInt(nullptr, 16);
    }
    /// Sets a fader, pan, mute, solo or phase.
    bool setsParameter() const
    {
        for (const char *tag : {"81", "82", "83", "84", "85"})
            if (what == "out" && item(tag) >= 0) return true;
        return false;
    }
};

/// The complete lines of a trace file, which another process may be writing.
inline QList<TraceLine> readTrace(const QString &fileName)
{
    QList<TraceLine> lines;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return lines;
    for (QByteArray line = file.readLine(); line.endsWith('\n'); line = file.readLine()) {
        const QList<QByteArray> words = line.trimmed().split(' ');
        if (words.size() >= 3) lines += {words[1], words[2] != "0", words.mid(3).join(' ')};
    }
    return lines;
}

/// The lines that set a fader, pan, mute, solo or phase.
inline QList<TraceLine> parametersSent(const QString &fileName)
{
    QList<TraceLine> sent;
    for (const TraceLine &line : readTrace(fileName))
        if (line.setsParameter()) sent += line;
    return sent;
}
