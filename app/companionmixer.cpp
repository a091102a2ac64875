#include "app/companionmixer.h"

#include <QProcess>

void killCompanionMixer()
{
    QProcess::execute(
        QStringLiteral("taskkill.exe"),
        {QStringLiteral("/f"), QStringLiteral("/im"), QStringLiteral("tmbrmixer.exe")});
}
