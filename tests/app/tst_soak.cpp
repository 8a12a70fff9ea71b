// Thirty analyses back to back on the real main window, in a seeded random
// mix of finished runs, runs aborted at random points, engine errors, and
// saves, exports and imports between them.
#include "CellText.h"
#include "ModalDialogs.h"
#include "RandomTable.h"
#include "VireonResources.h"
#include "WidgetLookup.h"
#include "XCsv.h"
#include "XFileDialog.h"
#include "XMainWindow.h"
#include "XResult.h"
#include "XSpreadsheet.h"
#include "XWorkspace.h"

#include <QAction>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QtTest>

class TestSoak : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void thirtyAnalyses();

private:
    enum Kind { Finish, AbortAtStart, AbortMidway, AbortNearEnd, EngineError };

    QAction* action(QString const& text) { return findAction(m_window, text); }
    void run(Kind kind, quint32 seed);
    void saveShown(quint32 seed);
    void exportAndImport(quint32 seed);
    QStringList shownInput() const;

    QTemporaryDir* m_dir = nullptr;
    XMainWindow* m_window = nullptr;
    QRandomGenerator m_rng{2026};
    // What the window must show: the input of the last analysis installed.
    QStringList m_expectedInput;
    int m_finished = 0;
    int m_aborted = 0;
    int m_errors = 0;
};

void TestSoak::initTestCase()
{
    initVireonResources();
}

void TestSoak::init()
{
    m_dir = new QTemporaryDir;
    QVERIFY(m_dir->isValid());
    m_window = new XMainWindow;
    m_window->show();
}

void TestSoak::cleanup()
{
    stopWatchingModals();
    XFileDialog::setOpenHook({});
    XFileDialog::setSaveHook({});
    delete m_window;
    m_window = nullptr;
    delete m_dir;
    m_dir = nullptr;
}

QStringList TestSoak::shownInput() const
{
    XWorkspace* workspace = m_window->workspace();
    return workspace && workspace->csv() ? gridText(*workspace->csv()) : QStringList();
}

void TestSoak::run(Kind kind, quint32 seed)
{
    RandomTableOptions options;
    options.minRows = 30;
    options.maxRows = kind == AbortMidway || kind == AbortNearEnd ? 400 : 80;
    options.minColumns = 6;
    options.maxColumns = kind == AbortMidway || kind == AbortNearEnd ? 120 : 24;
    options.textPercent = 0;
    options.maxAllele = 15;
    QPointer<XCsv> csv = new XCsv(randomGrid(seed, options));
    const QStringList input = gridText(*csv);
    QPointer<XCsv> src;
    if (kind == EngineError)
        src = new XCsv(QStringLiteral("Name,Other\nS,1\n"));
    else if (m_rng.bounded(3) == 0)
        src = new XCsv(csv->data().mid(0, 3));

    XWorkspace* before = m_window->workspace();
    const QString beforeText = before ? before->toString() : QString();
    QString message;
    bool abortPressed = false;
    if (kind == EngineError) {
        whenDialogOpens<QMessageBox>([&message](QMessageBox* box) {
            message = box->text();
            box->close();
        });
    } else if (kind != Finish) {
        const int at = kind == AbortAtStart ? 0 : kind == AbortMidway ? 50 : 95;
        whenDialogOpens<QProgressDialog>([&abortPressed, at](QProgressDialog* progress) {
            auto* poll = new QTimer(progress);
            QObject::connect(poll, &QTimer::timeout, progress, [&abortPressed, at, progress, poll] {
                if (progress->value() < at)
                    return;
                poll->stop();
                abortPressed = true;
                progress->findChild<QPushButton*>()->click();
            });
            poll->start(1);
        });
    }
    m_window->parseCsv(XAnalysisRequest(
        csv, src, XSearchSettings::reproducible(1 + int(m_rng.bounded(3)), int(seed))));
    // Let queued results and message boxes arrive.
    QTest::qWait(20);
    QTRY_VERIFY_WITH_TIMEOUT(kind != EngineError || !message.isEmpty(), 60000);

    XWorkspace* after = m_window->workspace();
    if (after != before) {
        // A new analysis: exactly the one just run, whole.
        QVERIFY(kind != EngineError);
        QVERIFY(after->isComplete());
        QCOMPARE(shownInput(), input);
        QCOMPARE(after->src() != nullptr, !src.isNull());
        m_expectedInput = input;
        ++m_finished;
    } else {
        // Nothing installed: an abort that won the race, or an error.
        QVERIFY(kind != Finish);
        QVERIFY(csv.isNull());
        QVERIFY(src.isNull());
        QCOMPARE(after ? after->toString() : QString(), beforeText);
        if (kind == EngineError) {
            QCOMPARE(message, QStringLiteral("Different headers."));
            ++m_errors;
        } else {
            QVERIFY(abortPressed);
            ++m_aborted;
        }
    }
    stopWatchingModals();
}

void TestSoak::saveShown(quint32 seed)
{
    if (!m_window->workspace())
        return;
    m_window->findChild<QSlider*>(QStringLiteral("slider"))->setValue(1 + int(m_rng.bounded(100)));
    const QString name =
        m_dir->filePath(QStringLiteral("core%1.%2")
                            .arg(seed)
                            .arg(seed % 2 ? QStringLiteral("xls") : QStringLiteral("csv")));
    XFileDialog::setSaveHook([name](QWidget*, QString const&) { return name; });
    action(QStringLiteral("Save As..."))->trigger();
    QString error;
    QScopedPointer<XCsv> back(XSpreadsheet::read(name, &error));
    QVERIFY2(back, qPrintable(error));
    QCOMPARE(gridText(*back), gridText(*m_window->shownCore()));
}

void TestSoak::exportAndImport(quint32 seed)
{
    if (!m_window->workspace())
        return;
    const QString name = m_dir->filePath(QStringLiteral("analysis%1.ccw").arg(seed));
    XFileDialog::setSaveHook([name](QWidget*, QString const&) { return name; });
    action(QStringLiteral("Export Workspace..."))->trigger();
    const QString text = m_window->workspace()->toString();
    XFileDialog::setOpenHook([name](QWidget*, QString const&) { return name; });
    action(QStringLiteral("Import Workspace..."))->trigger();
    QCOMPARE(m_window->workspace()->toString(), text);
    QCOMPARE(shownInput(), m_expectedInput);
}

void TestSoak::thirtyAnalyses()
{
    const Kind kinds[] = {Finish, Finish, AbortAtStart, AbortMidway, AbortNearEnd, EngineError};
    for (int i = 0; i < 30; ++i) {
        const quint32 seed = m_rng.generate();
        // The first run finishes, so that aborts and errors have something to keep.
        const Kind kind = i == 0 ? Finish : kinds[m_rng.bounded(6)];
        run(kind, seed);
        if (QTest::currentTestFailed())
            return;
        switch (m_rng.bounded(3)) {
        case 0:
            saveShown(seed);
            break;
        case 1:
            exportAndImport(seed);
            break;
        default:
            break;
        }
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(shownInput(), m_expectedInput);
    QVERIFY(m_window->workspace()->isComplete());
    qInfo("%d finished, %d aborted, %d engine errors", m_finished, m_aborted, m_errors);
    QVERIFY(m_finished >= 2);
}

QTEST_MAIN(TestSoak)
#include "tst_soak.moc"
