#include "app/companionmixer.h"

#include <QProcess>
#include <QStandardPaths>

void killCompanionMixer()
{
    // By its whole name: one that lies beside the panel would be preferred to the system's.
    QProcess::execute(
        QStandardPaths::findExecutable(QStringLiteral("taskkill.exe")),
        {QStringLiteral("/f"), QStringLiteral("/im"), QStringLiteral("tmbrmixer.exe")});
}
