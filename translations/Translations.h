#pragma once

#include <QLocale>
#include <QString>

class QCoreApplication;

// Installs the translation of Vireon's texts for the first of the locale's
// languages that Vireon speaks, and the toolkit's own texts (standard
// buttons, the command line's help) in that same language when the system
// has them. Nothing is installed when no language matches, so the texts
// stay English. The translators are children of the application. Returns
// the language installed ("es", "fr"), or an empty text for English.
QString installTranslators(QCoreApplication& app, QLocale const& locale = QLocale::system());
