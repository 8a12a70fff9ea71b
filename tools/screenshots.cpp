// Drives the real main window through a whole analysis of the example data
// and saves a picture of each step. Usage: screenshots OUTPUT_DIR [LANGUAGE]
// With a LANGUAGE ("es", "fr"), the program speaks it and only the pictures
// that show the README's languages are saved, as NAME-LANGUAGE.png.
#include "ModalDialogs.h"
#include "Translations.h"
#include "VireonResources.h"
#include "XCsv.h"
#include "XCsvEditor.h"
#include "XFileDialog.h"
#include "XGraphWidget.h"
#include "XMainWindow.h"
#include "XResult.h"
#include "XSample.h"
#include "XSpreadsheet.h"
#include "XWizard.h"
#include "XWorkspace.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSlider>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>

#include <cstdio>

namespace {

QString outputDir;
QString language;
int failures = 0;

void save(QWidget* widget, QString const& name)
{
    static const QStringList translated{QStringLiteral("core"), QStringLiteral("wizard")};
    if (!language.isEmpty() && !translated.contains(name))
        return;
    QApplication::processEvents();
    const QString path = outputDir + QLatin1Char('/') + name +
                         (language.isEmpty() ? QString() : QLatin1Char('-') + language) +
                         QStringLiteral(".png");
    if (!widget || !widget->grab().save(path)) {
        std::fprintf(stderr, "could not save %s\n", qPrintable(path));
        ++failures;
        return;
    }
    std::printf("%s\n", qPrintable(path));
}

QStringList readLines(QString const& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void writeLines(QString const& path, QStringList const& lines)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write((lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8()) < 0) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(path));
        ++failures;
    }
}

QPushButton* buttonNamed(QWidget* parent, QString const& text)
{
    for (QPushButton* button : parent->findChildren<QPushButton*>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("Vireon"));
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: screenshots OUTPUT_DIR [LANGUAGE]\n");
        return 2;
    }
    outputDir = QString::fromLocal8Bit(argv[1]);
    if (argc == 3) {
        language = QString::fromLocal8Bit(argv[2]);
        // As LANG would set it: the numbers follow the language too.
        QLocale::setDefault(QLocale(language));
        if (installTranslators(app, QLocale(language)) != language) {
            std::fprintf(stderr, "Vireon has no translation for %s\n", argv[2]);
            return 2;
        }
    }
    QDir().mkpath(outputDir);
    initVireonResources();
    const QString examples = QStringLiteral(VIREON_EXAMPLES_DIR);

    XMainWindow window;
    window.resize(1000, 680);
    window.show();
    save(&window, QStringLiteral("start"));

    whenModalOpens([](QWidget* modal) {
        save(modal, QStringLiteral("sample"));
        modal->close();
    });
    window.sample();

    whenModalOpens([&](QWidget* modal) {
        auto* wizard = qobject_cast<XWizard*>(modal);
        wizard->resize(720, 520);
        save(wizard, QStringLiteral("wizard-start"));
        wizard->next();
        QWidget* page = wizard->currentPage();
        XFileDialog::setOpenHook(
            [examples](QWidget*, QString const&) { return examples + "/microbov.csv"; });
        QMetaObject::invokeMethod(page, "csvBrowseButtonClicked");
        page->findChild<QCheckBox*>()->setChecked(true);
        XFileDialog::setOpenHook(
            [examples](QWidget*, QString const&) { return examples + "/microbov_start.csv"; });
        QMetaObject::invokeMethod(page, "srcBrowseButtonClicked");
        save(wizard, QStringLiteral("wizard"));
        wizard->next();
        wizard->setField(QStringLiteral("iterations"), 10);
        wizard->setField(QStringLiteral("seed"), 42);
        save(wizard, QStringLiteral("wizard-settings"));
        whenDialogOpens<QProgressDialog>([](QProgressDialog* progress) {
            auto* poll = new QTimer(progress);
            QObject::connect(poll, &QTimer::timeout, progress, [progress, poll] {
                if (progress->value() >= 40) {
                    poll->stop();
                    save(progress, QStringLiteral("progress"));
                }
            });
            poll->start(5);
        });
        wizard->accept();
    });
    window.wizard();
    while (!window.workspace())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);

    auto* tabs = window.findChild<QTabWidget*>();
    window.findChild<QSlider*>()->setValue(90);
    save(&window, QStringLiteral("core"));
    tabs->setCurrentIndex(XMainWindow::GraphTab);
    save(&window, QStringLiteral("graph"));
    tabs->setCurrentIndex(XMainWindow::InputTab);
    save(&window, QStringLiteral("input"));

    // The editor on the input table with a few cells typed wrong.
    XCsv table(examples + QStringLiteral("/microbov.csv"));
    table.setCell(3, 2, QStringLiteral("x"));
    table.setCell(5, 4, QStringLiteral("-1"));
    table.setCell(8, 7, QStringLiteral("1.5"));
    XCsvEditor editor(&table, true, nullptr);
    editor.resize(900, 600);
    editor.show();
    if (QPushButton* find = buttonNamed(&editor, XCsvEditor::tr("Find")))
        find->click();
    save(&editor, QStringLiteral("editor"));
    editor.close();

    // Quitting with an analysis never exported: the question, then Cancel.
    whenModalOpens([](QWidget* modal) {
        save(modal, QStringLiteral("quit-question"));
        if (QPushButton* cancel =
                buttonNamed(modal, QCoreApplication::translate("XAnalysisFile", "Cancel")))
            cancel->click();
        else
            modal->close();
    });
    window.close();

    // Exported and imported again: the status line and the title say so.
    const QString workspaceFile = QDir(outputDir).filePath(QStringLiteral("microbov.ccw"));
    XFileDialog::setSaveHook([workspaceFile](QWidget*, QString const&) { return workspaceFile; });
    XFileDialog::setOpenHook([workspaceFile](QWidget*, QString const&) { return workspaceFile; });
    window.exportWorkspace();
    window.importWorkspace();
    QFile::remove(workspaceFile);
    save(&window, QStringLiteral("imported"));

    // Problems the wizard finds before Finish: a line with a quoted comma
    // left out, and a starting collection whose header has a typo.
    const QString input = QDir(outputDir).filePath(QStringLiteral("input.csv"));
    const QString start = QDir(outputDir).filePath(QStringLiteral("start.csv"));
    {
        QStringList lines = readLines(examples + QStringLiteral("/microbov.csv"));
        for (int line : {5, 17})
            lines[line - 1].replace(QRegularExpression(QStringLiteral("^[^,]*")),
                                    QStringLiteral("\"Smith, J\""));
        writeLines(input, lines);
        lines = readLines(examples + QStringLiteral("/microbov_start.csv"));
        lines[0].replace(QStringLiteral("Name,INRA63,INRA63,"),
                         QStringLiteral("Name,INRA63,INRA63X,"));
        writeLines(start, lines);
    }
    whenModalOpens([&](QWidget* modal) {
        auto* wizard = qobject_cast<XWizard*>(modal);
        wizard->resize(720, 560);
        wizard->next();
        QWidget* page = wizard->currentPage();
        XFileDialog::setOpenHook([input](QWidget*, QString const&) { return input; });
        page->findChild<QPushButton*>(QStringLiteral("inputBrowse"))->click();
        page->findChild<QCheckBox*>(QStringLiteral("startCheck"))->setChecked(true);
        XFileDialog::setOpenHook([start](QWidget*, QString const&) { return start; });
        page->findChild<QPushButton*>(QStringLiteral("startBrowse"))->click();
        save(wizard, QStringLiteral("wizard-checks"));
        whenModalOpens([](QWidget* question) {
            save(question, QStringLiteral("wizard-discard"));
            if (QPushButton* discard = buttonNamed(question, XWizard::tr("Discard")))
                discard->click();
            else
                question->close();
        });
        wizard->reject();
    });
    window.wizard();
    QFile::remove(input);
    QFile::remove(start);

    // The wizard after reading a workbook saved by today's spreadsheets.
    const QString workbook = QDir(outputDir).filePath(QStringLiteral("microbov.xlsx"));
    if (!XSpreadsheet::write(XCsv(examples + QStringLiteral("/microbov.csv")), workbook)) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(workbook));
        ++failures;
    }
    whenModalOpens([&](QWidget* modal) {
        auto* wizard = qobject_cast<XWizard*>(modal);
        wizard->resize(720, 520);
        wizard->next();
        QWidget* page = wizard->currentPage();
        XFileDialog::setOpenHook([workbook](QWidget*, QString const&) { return workbook; });
        page->findChild<QPushButton*>(QStringLiteral("inputBrowse"))->click();
        save(wizard, QStringLiteral("wizard-xlsx"));
        whenModalOpens([](QWidget* question) {
            if (QPushButton* discard = buttonNamed(question, XWizard::tr("Discard")))
                discard->click();
            else
                question->close();
        });
        wizard->reject();
    });
    window.wizard();
    QFile::remove(workbook);

    // A small table: whole-number ticks, and the largest core's label
    // inside the canvas at the right end of the axis.
    {
        QStringList lines = readLines(examples + QStringLiteral("/microbov.csv")).mid(0, 13);
        writeLines(input, lines);
    }
    window.parseCsv(
        XAnalysisRequest(new XCsv(input), nullptr, XSearchSettings::reproducible(10, 42)));
    QFile::remove(input);
    tabs->setCurrentIndex(XMainWindow::GraphTab);
    window.resize(800, 560);
    save(&window, QStringLiteral("graph-small"));

    // The exact search on the same data, with a budget short enough that
    // some cores stay unproven and their lower bounds show.
    window.resize(1000, 680);
    whenModalOpens([&](QWidget* modal) {
        auto* wizard = qobject_cast<XWizard*>(modal);
        wizard->resize(720, 520);
        wizard->next();
        QWidget* page = wizard->currentPage();
        XFileDialog::setOpenHook(
            [examples](QWidget*, QString const&) { return examples + "/microbov.csv"; });
        QMetaObject::invokeMethod(page, "csvBrowseButtonClicked");
        wizard->next();
        page = wizard->currentPage();
        page->findChild<QRadioButton*>(QStringLiteral("exactSearch"))->setChecked(true);
        page->findChild<QSpinBox*>(QStringLiteral("budget"))->setValue(2);
        save(wizard, QStringLiteral("wizard-exact"));
        wizard->accept();
    });
    window.wizard();
    while (window.workspace()->search() != QLatin1String("exact"))
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    tabs->setCurrentIndex(XMainWindow::CoreTab);
    // The largest share whose core is not proven smallest, if any.
    int unproven = 100;
    XResult const* exact = window.workspace()->result();
    for (int p = 1; p <= 100; ++p) {
        if (exact->lowerBounds().value(p - 1) != exact->entries().at(p - 1).second.size())
            unproven = p;
    }
    window.statusBar()->clearMessage();
    window.findChild<QSlider*>()->setValue(unproven);
    save(&window, QStringLiteral("core-exact"));
    tabs->setCurrentIndex(XMainWindow::GraphTab);
    save(&window, QStringLiteral("graph-exact"));
    // The same graph as "Save Graph As..." writes it for a paper.
    if (!language.isEmpty())
        return failures == 0 ? 0 : 1;
    auto* graph = window.findChild<XGraphWidget*>();
    const QString paper = QDir(outputDir).filePath(QStringLiteral("graph-paper.png"));
    QString reason;
    if (graph && graph->saveImage(paper, &reason)) {
        std::printf("%s\n", qPrintable(paper));
    } else {
        std::fprintf(stderr, "could not save %s: %s\n", qPrintable(paper), qPrintable(reason));
        ++failures;
    }
    return failures == 0 ? 0 : 1;
}
