#include "app/language.h"

#include <QCoreApplication>
#include <QTranslator>

QLocale systemLanguage()
{
    return QLocale(QLocale::system().uiLanguages().value(0));
}

void installTranslations(const QLocale &language)
{
    // Two files, because the panel's texts exist in fewer languages than those of the updates.
    for (const char *file : {"panel", "update"}) {
        auto *translator = new QTranslator(qApp);
        if (translator->load(
                language, QLatin1String(file), QStringLiteral("_"),
                QStringLiteral(":/Resource/translations")))
            QCoreApplication::installTranslator(translator);
        else
            delete translator;
    }
}
