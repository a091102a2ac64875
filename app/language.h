#pragma once

#include <QLocale>

/// The language of the system's user interface: on a Linux machine that of the environment, on
/// Windows that of its display. Any thread.
QLocale systemLanguage();

/// Loads the panel's own translations into this language, where there are any; what has none stays
/// English. After the application object was made, and once. GUI thread only.
void installTranslations(const QLocale &language = systemLanguage());
