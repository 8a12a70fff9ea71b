#include "Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

// Q_INIT_RESOURCE must be used outside any namespace. The resource lives in
// a static library, so it is only linked because this refers to it.
static void registerTranslations()
{
    Q_INIT_RESOURCE(vireon_translations);
}

QString installTranslators(QCoreApplication& app, QLocale const& locale)
{
    static const bool registered = (registerTranslations(), true);
    Q_UNUSED(registered);

    auto* own = new QTranslator(&app);
    if (!own->load(locale, QStringLiteral("vireon"), QStringLiteral("_"),
                   QStringLiteral(":/translations"))) {
        delete own;
        return QString();
    }
    QCoreApplication::installTranslator(own);
    const QString language = own->language();
    // The toolkit's texts follow the language found for Vireon's, so that
    // a German system does not get German buttons around English texts.
    auto* toolkit = new QTranslator(&app);
    if (toolkit->load(QLocale(language), QStringLiteral("qtbase"), QStringLiteral("_"),
                      QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(toolkit);
    else
        delete toolkit;
    return language;
}
