#include "app/companionmixer.h"

#include <QProcess>
#include <QStandardPaths>

void killCompanionMixer()
{
    // Without the full path, a "taskkill.exe" in the panel's own folder would be started instead.
    QProcess::execute(
        QStandardPaths::findExecutable(QStringLiteral("taskkill.exe")),
        {QStringLiteral("/f"), QStringLiteral("/im"), QStringLiteral("tmbrmixer.exe")});
}
