#pragma once

#include <QLocale>

/// Returns the language of the system's user interface: on Linux from the environment, on Windows
/// the display language. Any thread.
QLocale systemLanguage();

/// Loads the panel's translations into a language. Texts without a translation stay English. Call
/// it once, after the application object is made. GUI thread only.
void installTranslations(const QLocale &language = systemLanguage());
