// Drives the real main window through a whole analysis of the example data
// and saves a picture of each step. Usage: screenshots OUTPUT_DIR
#include "ModalDialogs.h"
#include "VireonResources.h"
#include "XCsv.h"
#include "XCsvEditor.h"
#include "XFileDialog.h"
#include "XMainWindow.h"
#include "XResult.h"
#include "XSample.h"
#include "XWizard.h"
#include "XWorkspace.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QProgressDialog>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTimer>

#include <cstdio>

namespace {

QString outputDir;
int failures = 0;

void save(QWidget* widget, QString const& name)
{
    QApplication::processEvents();
    const QString path = outputDir + QLatin1Char('/') + name + QStringLiteral(".png");
    if (!widget || !widget->grab().save(path)) {
        std::fprintf(stderr, "could not save %s\n", qPrintable(path));
        ++failures;
        return;
    }
    std::printf("%s\n", qPrintable(path));
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
    if (argc != 2) {
        std::fprintf(stderr, "usage: screenshots OUTPUT_DIR\n");
        return 2;
    }
    outputDir = QString::fromLocal8Bit(argv[1]);
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
    if (QPushButton* find = buttonNamed(&editor, QStringLiteral("Find")))
        find->click();
    save(&editor, QStringLiteral("editor"));
    editor.close();
    return failures == 0 ? 0 : 1;
}
