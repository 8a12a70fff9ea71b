// The programs speak the language of the system locale: started with LANG
// alone naming Spanish or French (no LC_ALL, no LANGUAGE), the window, the
// wizard with the toolkit's own buttons, the lines under the slider and
// vireon-cli's help and messages come in that language. One executable per
// language, since the locale is read once per process.
#include "RunVireon.h"
#include "WidgetLookup.h"
#include "XCoreReport.h"
#include "XCsv.h"
#include "XMainWindow.h"
#include "XResult.h"
#include "XWizard.h"
#include "XWorkspace.h"

#include <QApplication>
#include <QMenuBar>
#include <QProcess>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

// What each language shows; the English texts are the sources.
struct Expected
{
    QString menus;
    QString tabs;
    QString wizardTitle;
    QString wizardButtons;
    QString coverageLine;
    QString startLine;
    QString runLine;
    QString helpUsage; // %1: the program as started
    QString helpDescription;
    QString noInput;
};

Expected expected(QString const& language)
{
    if (language == QLatin1String("es"))
        return {QStringLiteral("&Archivo|A&yuda"),
                QStringLiteral("Inicio|Colección núcleo|Gráfico|Archivo de entrada|Colección de "
                               "partida"),
                QStringLiteral("Inicio"),
                QStringLiteral("Siguie&nte >|Cancelar"),
                QStringLiteral("1 accesión · la búsqueda indica 3 de 5 alelos · contienen 2 "
                               "(40 %)"),
                QStringLiteral("2 accesiones (1 en la colección de partida) · la búsqueda indica "
                               "3 de 6 alelos · contienen 3 (50 %)"),
                QStringLiteral("Búsqueda reproducible · semilla 1 · 1 iteración"),
                QStringLiteral("Uso: %1 [opciones] ENTRADA"),
                QStringLiteral("Selecciona colecciones núcleo: para cada porcentaje de 1 a 100 "
                               "de los alelos de ENTRADA, el menor conjunto de accesiones "
                               "encontrado que conserva esa proporción."),
                QStringLiteral("vireon-cli: no se ha indicado ENTRADA.")};
    return {QStringLiteral("&Fichier|&Aide"),
            QStringLiteral("Accueil|Collection noyau|Graphique|Fichier d'entrée|Collection de "
                           "départ"),
            QStringLiteral("Accueil"),
            QStringLiteral("&Suivant >|Annuler"),
            QStringLiteral("1 accession · la recherche indique 3 allèles sur 5 · elles en "
                           "contiennent 2 (40 %)"),
            QStringLiteral("2 accessions (1 dans la collection de départ) · la recherche indique "
                           "3 allèles sur 6 · elles en contiennent 3 (50 %)"),
            QStringLiteral("Recherche reproductible · graine 1 · 1 itération"),
            QStringLiteral("Utilisation : %1 [options] ENTRÉE"),
            QStringLiteral("Sélectionne des collections noyaux : pour chaque pourcentage de 1 à "
                           "100 des allèles d'ENTRÉE, le plus petit ensemble d'accessions trouvé "
                           "qui conserve cette part."),
            QStringLiteral("vireon-cli : aucune ENTRÉE indiquée.")};
}

// A small analysis: three accessions, one core of row 1 up to 50 % and of
// rows 1 and 2 above.
XWorkspace* workspace(bool withStart)
{
    auto* csv = new XCsv(QStringLiteral("Name,M,M\nA1,1,2\nA2,3,4\nA3,5,*\n"));
    XCsv* src = withStart ? new XCsv(QStringLiteral("Name,M,M\nS1,7,7\n")) : nullptr;
    XResult::Entries entries;
    for (int p = 1; p <= 100; ++p)
        entries << XResult::Entry(p <= 50 ? 3 : 5, p <= 50 ? QList<int>{1} : QList<int>{1, 2});
    return new XWorkspace(csv, src, new XResult(entries, csv, src));
}

QString cliOutput(QStringList const& arguments, bool errors)
{
    QProcess cli;
    cli.setProgram(QStringLiteral(VIREON_CLI));
    cli.setArguments(arguments);
    cli.start();
    if (!cli.waitForFinished(60000))
        return QStringLiteral("vireon-cli did not finish");
    return QString::fromUtf8(errors ? cli.readAllStandardError() : cli.readAllStandardOutput());
}

} // namespace

class TestLanguages : public QObject
{
    Q_OBJECT

public:
    explicit TestLanguages(XMainWindow* window)
        : m_window(window), m_expected(expected(QStringLiteral(VIREON_TEST_LANGUAGE)))
    {
    }

private slots:
    void windowMenusAndTabs();
    void wizardWithToolkitButtons();
    void linesUnderTheSlider();
    void cliHelp();
    void cliMessage();
    void englishUnderCLocale();

private:
    XMainWindow* m_window;
    Expected m_expected;
};

void TestLanguages::windowMenusAndTabs()
{
    QStringList menus;
    for (QAction* action : m_window->menuBar()->actions())
        menus << action->text();
    QCOMPARE(menus.join(QLatin1Char('|')), m_expected.menus);
    auto* tabs = m_window->findChild<QTabWidget*>(QStringLiteral("tabs"));
    QVERIFY(tabs);
    QStringList titles;
    for (int i = 0; i < tabs->count(); ++i)
        titles << tabs->tabText(i);
    QCOMPARE(titles.join(QLatin1Char('|')), m_expected.tabs);
}

void TestLanguages::wizardWithToolkitButtons()
{
    XWizard wizard(m_window);
    wizard.show();
    QCOMPARE(wizard.currentPage()->title(), m_expected.wizardTitle);
    const QString buttons = wizard.button(QWizard::NextButton)->text() + QLatin1Char('|') +
                            wizard.button(QWizard::CancelButton)->text();
    QCOMPARE(buttons, m_expected.wizardButtons);
}

void TestLanguages::linesUnderTheSlider()
{
    std::unique_ptr<XWorkspace> plain(workspace(false));
    XCoreReport report(plain.get());
    QCOMPARE(report.coverageLine(10), m_expected.coverageLine);
    plain->setRun(XSearchSettings::reproducible(1, 1));
    QCOMPARE(report.runLine(), m_expected.runLine);
    std::unique_ptr<XWorkspace> started(workspace(true));
    QCOMPARE(XCoreReport(started.get()).coverageLine(50), m_expected.startLine);
    // Both languages write a decimal comma.
    QCOMPARE(XCoreReport::percentText(1, 8), QStringLiteral("12,5"));
    QCOMPARE(XCoreReport::percentText(8, 8), QStringLiteral("100"));
}

void TestLanguages::cliHelp()
{
    const QStringList lines = cliOutput({QStringLiteral("--help")}, false).split('\n');
    QVERIFY(lines.size() > 2);
    QCOMPARE(lines.at(0), m_expected.helpUsage.arg(QStringLiteral(VIREON_CLI)));
    QCOMPARE(lines.at(1), m_expected.helpDescription);
    // Nothing of the help is left in English, the toolkit's lines included.
    for (const char* english : {"Displays", "Options:", "starting collection", "attempts per",
                                "the table of accessions", "FILE"})
        QVERIFY2(!lines.join('\n').contains(QLatin1String(english)), english);
}

void TestLanguages::cliMessage()
{
    QCOMPARE(cliOutput({}, true).split('\n').value(0), m_expected.noInput);
}

// LC_ALL=C.UTF-8 overrides LANG, as it does for every other test.
void TestLanguages::englishUnderCLocale()
{
    QProcess cli;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    cli.setProcessEnvironment(environment);
    cli.start(QStringLiteral(VIREON_CLI), {QStringLiteral("--help")});
    QVERIFY(cli.waitForFinished(60000));
    QCOMPARE(QString::fromUtf8(cli.readAllStandardOutput()).section('\n', 0, 0),
             QStringLiteral("Usage: %1 [options] INPUT").arg(QStringLiteral(VIREON_CLI)));
}

int main(int argc, char* argv[])
{
    // The language as a user sets it: LANG alone. ctest's LC_ALL and
    // LANGUAGE, which keep every other test in English, are taken away
    // here, before the program reads the locale; vireon-cli inherits this.
    qunsetenv("LC_ALL");
    qunsetenv("LC_MESSAGES");
    qunsetenv("LANGUAGE");
    qputenv("LANG", VIREON_TEST_LOCALE);
    int status = 1;
    runVireon(argc, argv, [&](XMainWindow& window) {
        TestLanguages test(&window);
        status = QTest::qExec(&test, argc, argv);
        QTimer::singleShot(0, &window, &QWidget::close);
    });
    return status;
}

#include "tst_languages.moc"
