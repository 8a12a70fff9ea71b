#include "ModalDialogs.h"
#include "VireonResources.h"
#include "XCsv.h"
#include "XFileDialog.h"
#include "XMainWindow.h"
#include "XSpreadsheet.h"
#include "XWizard.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QtTest>

// The window without its workbook reader program: opening an .xls names
// the missing reader, and everything else goes on working.
class TestWorkbookReaderMissing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void openingXlsSaysReaderMissing();
};

void TestWorkbookReaderMissing::initTestCase()
{
    initVireonResources();
}

void TestWorkbookReaderMissing::cleanup()
{
    stopWatchingModals();
    XFileDialog::setOpenHook({});
    qunsetenv("VIREON_WORKBOOK_READER");
}

void TestWorkbookReaderMissing::openingXlsSaysReaderMissing()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString xls = dir.filePath(QStringLiteral("input.xls"));
    QVERIFY(XSpreadsheet::write(XCsv(QStringLiteral("Name,M1,M1\nA,1,2\n")), xls));
    qputenv("VIREON_WORKBOOK_READER", QFile::encodeName(dir.filePath(QStringLiteral("gone"))));

    XMainWindow window;
    window.show();
    QString title, text, fileShown;
    bool wizardSeen = false;
    whenModalOpens([&](QWidget* modal) {
        auto* wizard = qobject_cast<XWizard*>(modal);
        wizardSeen = wizard != nullptr;
        if (!wizard) {
            modal->close();
            return;
        }
        wizard->next();
        QWidget* page = wizard->currentPage();
        XFileDialog::setOpenHook([xls](QWidget*, QString const&) { return xls; });
        whenModalOpens(
            [&](QWidget* box) {
                if (auto* message = qobject_cast<QMessageBox*>(box)) {
                    title = message->windowTitle();
                    text = message->text();
                }
                box->close();
            },
            60000, wizard);
        QMetaObject::invokeMethod(page, "csvBrowseButtonClicked");
        fileShown = page->findChild<QLineEdit*>()->text();
        wizard->reject();
    });
    window.wizard();
    QVERIFY(wizardSeen);
    QCOMPARE(title, QStringLiteral("Error"));
    QCOMPARE(text, QStringLiteral("The .xls file cannot be read: the workbook reader could not "
                                  "be started."));
    QVERIFY(fileShown.isEmpty());
    QCOMPARE(window.workspace(), nullptr);
}

QTEST_MAIN(TestWorkbookReaderMissing)
#include "tst_workbookreadermissing.moc"
