#include "app/language.h"

#include <QCoreApplication>
#include <QTranslator>

QLocale systemLanguage()
{
    return QLocale(QLocale::system().uiLanguages().value(0));
}

void installTranslations(const QLocale &language)
{
    // One file a room: the panel's own texts exist in fewer languages than the updates'.
    for (const char *room : {"panel", "update"}) {
        auto *translator = new QTranslator(qApp);
        if (translator->load(
                language, QLatin1String(room), QStringLiteral("_"),
                QStringLiteral(":/Resource/translations")))
            QCoreApplication::installTranslator(translator);
        else
            delete translator;
    }
}
