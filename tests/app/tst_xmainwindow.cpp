#include "CellText.h"
#include "ModalDialogs.h"
#include "VireonResources.h"
#include "WidgetLookup.h"
#include "XCsv.h"
#include "XCsvTableWidget.h"
#include "XFileDialog.h"
#include "XGraphWidget.h"
#include "XMainWindow.h"
#include "XResult.h"
#include "XSample.h"
#include "XSpreadsheet.h"
#include "XWizard.h"
#include "XWorkspace.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <csignal>
#include <qwt_legend.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_scale_div.h>
#include <qwt_scale_widget.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

const QString examples = QStringLiteral(VIREON_EXAMPLES_DIR);

// A small analysis: percentages 1-50 share the core [1], 51-100 [1, 2].
XWorkspace* smallWorkspace(bool withStart, int slider)
{
    auto* csv = new XCsv(QStringLiteral("Name,M,M\nA1,1,2\nA2,3,4\nA3,5,*\n"));
    XCsv* src = withStart ? new XCsv(QStringLiteral("Name,M,M\nS1,7,7\n")) : nullptr;
    XResult::Entries entries;
    // Counts a reproducible search could report (its own bookkeeping, so
    // above what the rows hold), each reaching its share of the alleles.
    const int all = withStart ? 6 : 5;
    for (int p = 1; p <= 100; ++p)
        entries << XResult::Entry(p <= 50 ? 3 : all, p <= 50 ? QList<int>{1} : QList<int>{1, 2});
    auto* workspace = new XWorkspace(csv, src, new XResult(entries, csv, src));
    if (slider != -1)
        workspace->setSlider(slider);
    return workspace;
}

QByteArray readAll(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeText(QString const& path, QByteArray const& text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

// Lets pending layouts run first: a button shown a moment ago has no size yet.
void clickButtonNow(QAbstractButton* button)
{
    QApplication::processEvents();
    QTest::mouseClick(button, Qt::LeftButton);
}

// Clicks the message box button showing answer; keeps the box's title, text
// and the texts of its buttons.
std::function<void(QWidget*)> answerBox(QString const& answer, QStringList* seen)
{
    return [answer, seen](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (!box) {
            *seen << QString::fromLatin1(modal->metaObject()->className());
            modal->close();
            return;
        }
        *seen << box->windowTitle() << box->text();
        QAbstractButton* chosen = nullptr;
        for (QAbstractButton* b : box->buttons()) {
            *seen << b->text();
            if (b->text() == answer)
                chosen = b;
        }
        if (chosen)
            QTest::mouseClick(chosen, Qt::LeftButton);
        else
            box->reject();
    };
}

// A result whose largest count has many digits, so the y labels grow wide.
XWorkspace* wideWorkspace()
{
    auto* csv = new XCsv(QStringLiteral("Name,M,M\nA1,1,2\nA2,3,4\nA3,5,*\nA4,6,7\n"));
    XResult::Entries entries;
    for (int p = 1; p <= 100; ++p)
        entries << XResult::Entry(p <= 50 ? 98765 : 123456,
                                  p <= 50 ? QList<int>{1, 2} : QList<int>{1, 2, 3, 4});
    return new XWorkspace(csv, nullptr, new XResult(entries, csv, nullptr));
}

QwtPlotCurve* curveTitled(XGraphWidget const& graph, QString const& title)
{
    for (QwtPlotItem* item : graph.itemList(QwtPlotItem::Rtti_PlotCurve)) {
        if (item->title().text() == title)
            return static_cast<QwtPlotCurve*>(item);
    }
    return nullptr;
}

// The y value the curve gives the core of that size; -1 when it has none.
double yAt(QwtPlotCurve const* curve, double size)
{
    for (size_t i = 0; curve && i < curve->dataSize(); ++i) {
        if (curve->sample(int(i)).x() == size)
            return curve->sample(int(i)).y();
    }
    return -1;
}

QString messageOf(QWidget* modal)
{
    auto* box = qobject_cast<QMessageBox*>(modal);
    return box ? box->windowTitle() + QStringLiteral(" | ") + box->text()
               : QString::fromLatin1(modal->metaObject()->className());
}

} // namespace

class TestXMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void startState();
    void actions_data();
    void actions();
    void menus();
    void startPage();
    void aboutBox();
    void updateWithoutWorkspace();
    void sliderValuesOnLoad_data();
    void sliderValuesOnLoad();
    void firstLoadAtOneLeavesLabelEmpty();
    void startingCollectionTabFollows();
    void sameCoreKeepsView();
    void nullWorkspaceKeepsState();
    void newToResult();
    void workbooksGiveTheCsvResult_data();
    void workbooksGiveTheCsvResult();
    void runWithStartingCollection();
    void saveAndSaveAs_data();
    void saveAndSaveAs();
    void saveAgainWritesWithoutAsking();
    void saveFailureReported();
    void specialTargetRefused();
    void exportThenImport();
    void exportKeepsSavePath();
    void importReplaces();
    void importRefusesIncomplete_data();
    void importRefusesIncomplete();
    void importFromLongPath();
    void importRefusesFifo();
    void cancelledDialogsDoNothing();
    void engineErrorShown();
    void emptyInputRefused_data();
    void emptyInputRefused();
    void fullDiskKeepsOldFiles();
    void abortKeepsPreviousWorkspace_data();
    void abortKeepsPreviousWorkspace();
    void sampleDialogCloses();
    void saveAsKeyWithoutDesktop();
    void altFOpensFileMenu();
    void quitAsksBeforeLosingAnalysis();
    void quitAfterExportOrImportAsksNothing();
    void workspaceDialogTitlesStatusAndWindowTitle();
    void graphWholeNumbersAndLabelsInside();
    void graphAxesLaidOutForEachResult();
    void exactSearchLines();
    void reproducibleLines();
    void clockSeedKeptAndRepeated();
    void exportImportKeepsSearch_data();
    void exportImportKeepsSearch();
    void startingCollectionMarked();
    void saveGraphPicture_data();
    void saveGraphPicture();
    void saveGraphRefusesOtherSuffix();
    void exactAbortKeepsPreviousWorkspace();
    void savesNeverReplaceInputs_data();
    void savesNeverReplaceInputs();
    void xlsTooSmallRefusedBeforeWriting();

private:
    QTabWidget* tabs() { return m_window->findChild<QTabWidget*>(QStringLiteral("tabs")); }
    QSlider* slider() { return m_window->findChild<QSlider*>(QStringLiteral("slider")); }
    QLabel* sliderLabel();
    QAction* action(QString const& text) { return findAction(m_window, text); }
    QAbstractButton* button(QString const& text) { return findButton(m_window, text); }
    XCsvTableWidget* view(int tab);
    // Runs New through the wizard's file route on the given files.
    void runAnalysis(QString const& input, QString const& start, int iterations, int seed);
    // The same with "Smallest cores (exact)" clicked on the settings page.
    void runExactAnalysis(QString const& input, int budget);
    // Exports the workspace shown, shows another, and imports the file.
    void exportAndImport(QString const& name);
    // Opens the graph's own menu by a right click and clicks the entry.
    void clickGraphMenu(QString const& text);
    XGraphWidget* graph()
    {
        return qobject_cast<XGraphWidget*>(tabs()->widget(XMainWindow::GraphTab));
    }
    void answerSave(QString const& name);
    // New, the wizard's file route and Finish, all by clicks.
    void runAnalysisByClicks(QString const& input);
    // Import with a click on the start page's button, the file dialog answered.
    void importByClick(QString const& path);
    // Opens a menu by its mnemonic and clicks the action.
    void clickMenuAction(Qt::Key mnemonic, QString const& text);
    QString writeWorkspace(XWorkspace* workspace, QString const& name);
    void activate();

    QTemporaryDir* m_dir = nullptr;
    XMainWindow* m_window = nullptr;
    int m_saveQuestions = 0;
};

void TestXMainWindow::initTestCase()
{
    initVireonResources();
}

void TestXMainWindow::init()
{
    m_dir = new QTemporaryDir;
    QVERIFY(m_dir->isValid());
    m_window = new XMainWindow;
    m_window->show();
    m_saveQuestions = 0;
}

void TestXMainWindow::cleanup()
{
    stopWatchingModals();
    XFileDialog::setOpenHook({});
    XFileDialog::setSaveHook({});
    delete m_window;
    m_window = nullptr;
    delete m_dir;
    m_dir = nullptr;
}

QLabel* TestXMainWindow::sliderLabel()
{
    return m_window->findChild<QLabel*>(QStringLiteral("sliderValue"));
}

XCsvTableWidget* TestXMainWindow::view(int tab)
{
    QWidget* page = tabs()->widget(tab);
    if (auto* table = qobject_cast<XCsvTableWidget*>(page))
        return table;
    return page->findChild<XCsvTableWidget*>();
}

void TestXMainWindow::answerSave(QString const& name)
{
    XFileDialog::setSaveHook([this, name](QWidget*, QString const&) {
        ++m_saveQuestions;
        return name;
    });
}

void TestXMainWindow::runAnalysis(QString const& input, QString const& start, int iterations,
                                  int seed)
{
    whenModalOpens([=](QWidget* modal) {
        auto* wizard = qobject_cast<XWizard*>(modal);
        if (!wizard) {
            modal->close();
            return;
        }
        wizard->next();
        QWidget* page = wizard->currentPage();
        XFileDialog::setOpenHook([input](QWidget*, QString const&) { return input; });
        QMetaObject::invokeMethod(page, "csvBrowseButtonClicked");
        if (!start.isEmpty()) {
            page->findChild<QCheckBox*>()->setChecked(true);
            XFileDialog::setOpenHook([start](QWidget*, QString const&) { return start; });
            QMetaObject::invokeMethod(page, "srcBrowseButtonClicked");
        }
        wizard->next();
        wizard->setField(QStringLiteral("iterations"), iterations);
        wizard->setField(QStringLiteral("seed"), seed);
        wizard->accept();
    });
    m_window->wizard();
}

void TestXMainWindow::runExactAnalysis(QString const& input, int budget)
{
    bool settingsSeen = false;
    whenModalOpens([=, &settingsSeen](QWidget* modal) {
        auto* wizard = qobject_cast<XWizard*>(modal);
        if (!wizard) {
            modal->close();
            return;
        }
        wizard->next();
        XFileDialog::setOpenHook([input](QWidget*, QString const&) { return input; });
        QMetaObject::invokeMethod(wizard->currentPage(), "csvBrowseButtonClicked");
        wizard->next();
        QWidget* page = wizard->currentPage();
        auto* exact = page->findChild<QRadioButton*>(QStringLiteral("exactSearch"));
        auto* iterations = page->findChild<QSpinBox*>(QStringLiteral("iterations"));
        auto* seed = page->findChild<QSpinBox*>(QStringLiteral("seed"));
        auto* budgetBox = page->findChild<QSpinBox*>(QStringLiteral("budget"));
        QApplication::processEvents();
        QTest::mouseClick(exact, Qt::LeftButton, Qt::NoModifier,
                          QPoint(exact->height() / 2, exact->height() / 2));
        // The reproducible search's settings do not apply to the exact one.
        settingsSeen = exact->isChecked() && !iterations->isEnabled() && !seed->isEnabled() &&
                       budgetBox->isEnabled();
        budgetBox->setValue(budget);
        wizard->accept();
    });
    m_window->wizard();
    QVERIFY(settingsSeen);
}

void TestXMainWindow::exportAndImport(QString const& name)
{
    const QString path = m_dir->filePath(name);
    answerSave(path);
    action(QStringLiteral("Export Workspace..."))->trigger();
    QVERIFY(QFile::exists(path));
    m_window->clearWorkspace(smallWorkspace(false, 10));
    XFileDialog::setOpenHook([path](QWidget*, QString const&) { return path; });
    action(QStringLiteral("Import Workspace..."))->trigger();
    QCOMPARE(m_window->statusBar()->currentMessage(), QStringLiteral("Imported ") + path);
}

void TestXMainWindow::clickGraphMenu(QString const& text)
{
    tabs()->setCurrentIndex(XMainWindow::GraphTab);
    activate();
    QWidget* canvas = graph()->canvas();
    const QPoint at = canvas->rect().center();
    // What a right click sends; the canvas leaves it to the graph.
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, canvas->mapToGlobal(at));
    QApplication::sendEvent(canvas, &event);
    QMenu* menu = nullptr;
    QTRY_VERIFY((menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())));
    QAction* chosen = nullptr;
    for (QAction* a : menu->actions()) {
        if (a->text() == text)
            chosen = a;
    }
    QVERIFY(chosen);
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(chosen).center());
}

void TestXMainWindow::activate()
{
    QApplication::setActiveWindow(m_window);
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void TestXMainWindow::runAnalysisByClicks(QString const& input)
{
    bool finished = false;
    whenModalOpens([input, &finished](QWidget* modal) {
        auto* wizard = qobject_cast<XWizard*>(modal);
        if (!wizard) {
            modal->close();
            return;
        }
        auto click = [](QAbstractButton* button) {
            QApplication::processEvents();
            QTest::mouseClick(button, Qt::LeftButton);
        };
        click(wizard->button(QWizard::NextButton));
        XFileDialog::setOpenHook([input](QWidget*, QString const&) { return input; });
        click(wizard->currentPage()->findChild<QPushButton*>(QStringLiteral("inputBrowse")));
        click(wizard->button(QWizard::NextButton));
        click(wizard->button(QWizard::FinishButton));
        finished = !wizard->isVisible();
    });
    clickButtonNow(button(QStringLiteral("New")));
    QVERIFY(finished);
    QTRY_VERIFY(m_window->workspace());
}

void TestXMainWindow::importByClick(QString const& path)
{
    XFileDialog::setOpenHook([path](QWidget*, QString const&) { return path; });
    tabs()->setCurrentIndex(XMainWindow::StartTab);
    clickButtonNow(button(QStringLiteral("Import")));
}

void TestXMainWindow::clickMenuAction(Qt::Key mnemonic, QString const& text)
{
    activate();
    QTest::keyClick(m_window, mnemonic, Qt::AltModifier);
    QMenu* menu = nullptr;
    QTRY_VERIFY((menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())));
    QAction* chosen = nullptr;
    for (QAction* a : menu->actions()) {
        if (a->text() == text)
            chosen = a;
    }
    QVERIFY(chosen);
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(chosen).center());
}

QString TestXMainWindow::writeWorkspace(XWorkspace* workspace, QString const& name)
{
    const QString path = m_dir->filePath(name);
    writeText(path, workspace->toString().toUtf8());
    delete workspace;
    return path;
}

void TestXMainWindow::startState()
{
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Vireon"));
    QVERIFY(!m_window->windowIcon().isNull());
    QCOMPARE(m_window->minimumSize(), QSize(640, 480));
    QVERIFY(m_window->width() >= 640 && m_window->height() >= 480);
    QCOMPARE(tabs()->count(), 5);
    const QStringList titles = {"Start", "Core collection", "Graph", "Input file",
                                "Starting collection"};
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(tabs()->tabText(i), titles.at(i));
        QCOMPARE(tabs()->isTabEnabled(i), i == 0);
    }
    QCOMPARE(tabs()->currentIndex(), 0);
    QVERIFY(qobject_cast<XGraphWidget*>(tabs()->widget(XMainWindow::GraphTab)));
    QCOMPARE(slider()->minimum(), 1);
    QCOMPARE(slider()->maximum(), 100);
    QCOMPARE(slider()->singleStep(), 1);
    QCOMPARE(slider()->pageStep(), 1);
    QCOMPARE(slider()->orientation(), Qt::Horizontal);
    QVERIFY(!slider()->hasTracking());
    QCOMPARE(slider()->value(), 1);
    QCOMPARE(sliderLabel()->text(), QString());
    QWidget* page = tabs()->widget(XMainWindow::CoreTab);
    QVERIFY(page->isAncestorOf(slider()));
    auto* percent = page->findChild<QLabel*>(QStringLiteral("percentSign"));
    QVERIFY(percent);
    QCOMPARE(percent->text(), QStringLiteral("%"));
    QVERIFY(page->findChild<XCsvTableWidget*>(QStringLiteral("coreView")));
    QCOMPARE(m_window->workspace(), nullptr);
}

void TestXMainWindow::actions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QKeySequence>("shortcut");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("New") << "New..." << QKeySequence(QKeySequence::New) << true;
    QTest::newRow("Save") << "Save..." << QKeySequence(QKeySequence::Save) << false;
    const QKeySequence saveAs(QKeySequence::SaveAs);
    QTest::newRow("Save As") << "Save As..."
                             << (saveAs.isEmpty() ? QKeySequence(QStringLiteral("Ctrl+Shift+S"))
                                                  : saveAs)
                             << false;
    QTest::newRow("Import") << "Import Workspace..." << QKeySequence() << true;
    QTest::newRow("Export") << "Export Workspace..." << QKeySequence() << false;
    QTest::newRow("Quit") << "Quit" << QKeySequence(QKeySequence::Quit) << true;
    QTest::newRow("About") << "About" << QKeySequence() << true;
    QTest::newRow("About Qt") << "About Qt" << QKeySequence() << true;
}

void TestXMainWindow::actions()
{
    QFETCH(QString, text);
    QFETCH(QKeySequence, shortcut);
    QFETCH(bool, enabled);
    QAction* a = action(text);
    QVERIFY(a);
    QCOMPARE(a->parent(), m_window);
    QCOMPARE(a->shortcut(), shortcut);
    QCOMPARE(a->isEnabled(), enabled);
    QVERIFY(a->statusTip().isEmpty());
}

void TestXMainWindow::menus()
{
    const QList<QAction*> top = m_window->menuBar()->actions();
    QCOMPARE(top.size(), 2);
    // Mnemonics: shown as "File" and "Help", opened with Alt+F and Alt+H.
    QCOMPARE(top.at(0)->text(), QStringLiteral("&File"));
    QCOMPARE(top.at(1)->text(), QStringLiteral("&Help"));
    QStringList file;
    for (QAction* a : top.at(0)->menu()->actions())
        file << a->text();
    QCOMPARE(file, QStringList({"New...", "Save...", "Save As...", "Import Workspace...",
                                "Export Workspace...", "Quit"}));
    QStringList help;
    for (QAction* a : top.at(1)->menu()->actions())
        help << a->text();
    QCOMPARE(help, QStringList({"About", "About Qt"}));
}

void TestXMainWindow::startPage()
{
    auto* grid = qobject_cast<QGridLayout*>(tabs()->widget(0)->layout());
    QVERIFY(grid);
    QCOMPARE(grid->rowCount(), 3);
    QCOMPARE(grid->columnCount(), 2);
    QCOMPARE(grid->alignment(), Qt::AlignCenter);
    const QStringList labels = {"Open a file or create a new table", "Import an existing workspace",
                                "Show an input file sample"};
    const QStringList hints = {"newHint", "importHint", "sampleHint"};
    const QStringList buttons = {"New", "Import", "Sample"};
    const QStringList buttonNames = {"newButton", "importButton", "sampleButton"};
    for (int r = 0; r < 3; ++r) {
        auto* label = tabs()->widget(0)->findChild<QLabel*>(hints.at(r));
        auto* button = tabs()->widget(0)->findChild<QPushButton*>(buttonNames.at(r));
        QVERIFY(label && button);
        QCOMPARE(label->text(), labels.at(r));
        QCOMPARE(button->text(), buttons.at(r));
        // Each hint beside its button, one row each.
        int row = -1, column = -1, rowSpan = 0, columnSpan = 0;
        grid->getItemPosition(grid->indexOf(label), &row, &column, &rowSpan, &columnSpan);
        QCOMPARE(QPoint(column, row), QPoint(0, r));
        grid->getItemPosition(grid->indexOf(button), &row, &column, &rowSpan, &columnSpan);
        QCOMPARE(QPoint(column, row), QPoint(1, r));
    }
}

void TestXMainWindow::aboutBox()
{
    QString seen;
    whenModalOpens([&seen](QWidget* modal) {
        seen = messageOf(modal);
        modal->close();
    });
    action(QStringLiteral("About"))->trigger();
    QVERIFY2(seen.startsWith(QStringLiteral("About | Vireon 1.0d\n")), qPrintable(seen));
    for (char const* credit : {"The Vireon developers", "Qt", "Qwt", "FreeXL", "libgsf"})
        QVERIFY2(seen.contains(QLatin1String(credit)), credit);
}

void TestXMainWindow::updateWithoutWorkspace()
{
    m_window->update(50);
    QCOMPARE(m_window->shownCore(), nullptr);
    QCOMPARE(m_window->workspace(), nullptr);
}

void TestXMainWindow::sliderValuesOnLoad_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("shown");
    QTest::newRow("none") << -1 << 100;
    QTest::newRow("0") << 0 << 100;
    QTest::newRow("negative") << -7 << 100;
    QTest::newRow("over 100") << 101 << 100;
    QTest::newRow("40") << 40 << 40;
    QTest::newRow("100") << 100 << 100;
}

void TestXMainWindow::sliderValuesOnLoad()
{
    QFETCH(int, stored);
    QFETCH(int, shown);
    XWorkspace* workspace = smallWorkspace(false, stored);
    m_window->clearWorkspace(workspace);
    QCOMPARE(slider()->value(), shown);
    QCOMPARE(workspace->slider(), shown);
    QCOMPARE(m_window->shownCore(), workspace->result()->csv(shown));
    QCOMPARE(sliderLabel()->text(), QString::number(shown));
    QCOMPARE(tabs()->currentIndex(), int(XMainWindow::CoreTab));
    for (int tab : {1, 2, 3})
        QVERIFY(tabs()->isTabEnabled(tab));
    QVERIFY(!tabs()->isTabEnabled(XMainWindow::SourceTab));
    for (char const* text : {"Save...", "Save As...", "Export Workspace..."})
        QVERIFY(action(QString::fromLatin1(text))->isEnabled());
}

void TestXMainWindow::firstLoadAtOneLeavesLabelEmpty()
{
    XWorkspace* workspace = smallWorkspace(false, 1);
    m_window->clearWorkspace(workspace);
    QCOMPARE(slider()->value(), 1);
    QCOMPARE(sliderLabel()->text(), QString());
    QCOMPARE(m_window->shownCore(), workspace->result()->csv(1));
    QCOMPARE(view(XMainWindow::CoreTab)->model()->rowCount(), 1);
}

void TestXMainWindow::startingCollectionTabFollows()
{
    m_window->clearWorkspace(smallWorkspace(true, 60));
    QVERIFY(tabs()->isTabEnabled(XMainWindow::SourceTab));
    QCOMPARE(view(XMainWindow::SourceTab)->model()->rowCount(), 1);
    // The core shows the starting collection's rows first.
    QCOMPARE(rowText(m_window->shownCore()->at(1)), QStringLiteral("s:S1|i:7|i:7"));
    m_window->clearWorkspace(smallWorkspace(false, 60));
    QVERIFY(!tabs()->isTabEnabled(XMainWindow::SourceTab));
    QCOMPARE(view(XMainWindow::SourceTab)->model(), nullptr);
}

void TestXMainWindow::sameCoreKeepsView()
{
    XWorkspace* workspace = smallWorkspace(false, 60);
    m_window->clearWorkspace(workspace);
    XCsvTableWidget* core = view(XMainWindow::CoreTab);
    QAbstractItemModel* model = core->model();
    core->setCurrentIndex(model->index(1, 1));
    slider()->setValue(80);
    QCOMPARE(core->model(), model);
    QCOMPARE(core->currentIndex(), model->index(1, 1));
    QCOMPARE(workspace->slider(), 80);
    slider()->setValue(20);
    QVERIFY(core->model() != model);
    QCOMPARE(m_window->shownCore(), workspace->result()->csv(20));
    QCOMPARE(core->model()->rowCount(), 1);
}

void TestXMainWindow::nullWorkspaceKeepsState()
{
    m_window->clearWorkspace(smallWorkspace(true, 30));
    m_window->clearWorkspace(nullptr);
    QCOMPARE(m_window->workspace(), nullptr);
    QCOMPARE(m_window->shownCore(), nullptr);
    QVERIFY(tabs()->isTabEnabled(XMainWindow::CoreTab));
    QVERIFY(tabs()->isTabEnabled(XMainWindow::SourceTab));
    QCOMPARE(slider()->value(), 30);
    QVERIFY(action(QStringLiteral("Save..."))->isEnabled());
    QCOMPARE(view(XMainWindow::CoreTab)->model(), nullptr);
    QCOMPARE(view(XMainWindow::InputTab)->model(), nullptr);
    QCOMPARE(view(XMainWindow::SourceTab)->model(), nullptr);
    m_window->update(40);
    QCOMPARE(m_window->shownCore(), nullptr);
}

void TestXMainWindow::newToResult()
{
    // The progress window counts 1..100 and hides itself at 100; no error
    // box comes up, although its closing also reaches the abort slots.
    QPointer<QProgressDialog> progress;
    int highest = 0;
    // The search's progress, not the wizard's "Reading ..." that a loaded
    // machine may show first.
    auto searchProgress = [](QWidget* modal) {
        return qobject_cast<QProgressDialog*>(modal) &&
               modal->objectName() != QLatin1String("readingProgress");
    };
    whenModalOpens(
        [&](QWidget* modal) {
            auto* dialog = qobject_cast<QProgressDialog*>(modal);
            progress = dialog;
            QCOMPARE(dialog->minimum(), 1);
            QCOMPARE(dialog->maximum(), 100);
            QVERIFY(dialog->autoReset());
            QVERIFY(dialog->autoClose());
            connect(dialog, &QProgressDialog::canceled, dialog,
                    [&highest, dialog] { highest = qMax(highest, dialog->value()); });
        },
        60000, nullptr, searchProgress);
    QString errorBox;
    whenDialogOpens<QMessageBox>([&errorBox](QMessageBox* box) {
        errorBox = messageOf(box);
        box->close();
    });
    runAnalysis(examples + QStringLiteral("/microbov.csv"), QString(), 1, 42);
    // The result arrives as a queued call, possibly after the wizard has closed.
    QTRY_VERIFY_WITH_TIMEOUT(m_window->workspace(), 120000);
    XWorkspace* workspace = m_window->workspace();
    QVERIFY(workspace->isComplete());
    QCOMPARE(workspace->csv()->rows(), 705);
    QCOMPARE(workspace->src(), nullptr);
    QVERIFY(!workspace->hasSource());
    QCOMPARE(tabs()->currentIndex(), int(XMainWindow::CoreTab));
    for (int tab : {1, 2, 3})
        QVERIFY(tabs()->isTabEnabled(tab));
    QVERIFY(!tabs()->isTabEnabled(XMainWindow::SourceTab));
    QCOMPARE(slider()->value(), 100);
    QCOMPARE(m_window->shownCore(), workspace->result()->csv(100));
    QCOMPARE(view(XMainWindow::InputTab)->model()->rowCount(), 704);
    QCOMPARE(workspace->result()->count(100), 373);
    auto* graph = qobject_cast<XGraphWidget*>(tabs()->widget(XMainWindow::GraphTab));
    QVERIFY(graph->itemList(QwtPlotItem::Rtti_PlotCurve).size() >= 3);

    slider()->setValue(10);
    QCOMPARE(m_window->shownCore(), workspace->result()->csv(10));
    QCOMPARE(workspace->slider(), 10);
    QVERIFY(m_window->shownCore()->rows() < workspace->result()->csv(100)->rows());
    for (char const* text : {"Save...", "Save As...", "Export Workspace..."})
        QVERIFY(action(QString::fromLatin1(text))->isEnabled());
    QVERIFY(progress.isNull());
    QCoreApplication::processEvents();
    QCOMPARE(errorBox, QString());
}

void TestXMainWindow::workbooksGiveTheCsvResult_data()
{
    QTest::addColumn<QString>("input");
    const QString made = QStringLiteral(VIREON_FIXTURES_DIR "/spreadsheet/");
    QTest::newRow("csv") << examples + QStringLiteral("/microbov.csv");
    QTest::newRow("xlsx by openpyxl") << made + QStringLiteral("microbov.xlsx");
    QTest::newRow("ods by odfpy") << made + QStringLiteral("microbov.ods");
    QTest::newRow("semicolons") << QStringLiteral("semicolons");
}

void TestXMainWindow::workbooksGiveTheCsvResult()
{
    // microbov as today's spreadsheets save it runs to the very result of
    // microbov.csv, through the wizard and the window.
    QFETCH(QString, input);
    if (input == QLatin1String("semicolons")) {
        QFile csv(examples + QStringLiteral("/microbov.csv"));
        QVERIFY(csv.open(QIODevice::ReadOnly));
        input = m_dir->filePath(QStringLiteral("microbov-semicolons.csv"));
        QFile out(input);
        QVERIFY(out.open(QIODevice::WriteOnly));
        QVERIFY(out.write(csv.readAll().replace(',', ';')) > 0);
    }
    runAnalysis(input, QString(), 1, 1);
    QTRY_VERIFY_WITH_TIMEOUT(m_window->workspace(), 120000);
    XWorkspace* workspace = m_window->workspace();
    QVERIFY(workspace->isComplete());
    QCOMPARE(workspace->csv()->rows(), 705);
    QFile fixture(QStringLiteral(VIREON_FIXTURES_DIR "/engine/microbov_i1_s1.txt"));
    QVERIFY(fixture.open(QIODevice::ReadOnly | QIODevice::Text));
    QCOMPARE(workspace->result()->toString(), QString::fromUtf8(fixture.readAll()));
}

void TestXMainWindow::runWithStartingCollection()
{
    runAnalysis(examples + QStringLiteral("/microbov.csv"),
                examples + QStringLiteral("/microbov_start.csv"), 1, 7);
    // The result arrives as a queued call, possibly after the wizard has closed.
    QTRY_VERIFY_WITH_TIMEOUT(m_window->workspace(), 120000);
    XWorkspace* workspace = m_window->workspace();
    QVERIFY(workspace->hasSource());
    QVERIFY(tabs()->isTabEnabled(XMainWindow::SourceTab));
    QCOMPARE(view(XMainWindow::SourceTab)->model()->rowCount(), 5);
    XCsv* core = workspace->result()->csv(1);
    QCOMPARE(rowText(core->at(1)), rowText(workspace->src()->at(1)));
}

void TestXMainWindow::saveAndSaveAs_data()
{
    QTest::addColumn<QString>("name");
    // The file's first bytes for a workbook: a compound document for .xls,
    // a zip archive for .xlsx.
    QTest::addColumn<QByteArray>("workbook");
    QTest::newRow("csv") << "core.csv" << QByteArray();
    QTest::newRow("xls") << "core.xls" << QByteArray::fromHex("d0cf11e0a1b11ae1");
    QTest::newRow("xlsx") << "core.xlsx" << QByteArray("PK\x03\x04");
    QTest::newRow("upper-case XLS is text") << "core.XLS" << QByteArray();
    QTest::newRow("no suffix") << "core" << QByteArray();
    QTest::newRow("other suffix") << "core.txt" << QByteArray();
}

void TestXMainWindow::saveAndSaveAs()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, workbook);
    XWorkspace* workspace = smallWorkspace(true, 70);
    m_window->clearWorkspace(workspace);
    const QString path = m_dir->filePath(name);
    QString filterSeen;
    XFileDialog::setSaveHook([&](QWidget*, QString const& filter) {
        ++m_saveQuestions;
        filterSeen = filter;
        return path;
    });
    action(QStringLiteral("Save..."))->trigger();
    QCOMPARE(m_saveQuestions, 1);
    QCOMPARE(filterSeen, QStringLiteral("Comma separated value files (*.csv);;"
                                        "Microsoft Excel files (*.xls);;"
                                        "Excel workbooks (*.xlsx)"));
    QCOMPARE(workspace->savePath(), path);
    QVERIFY(QFile::exists(path));
    const QByteArray bytes = readAll(path);
    if (!workbook.isEmpty()) {
        QVERIFY(bytes.startsWith(workbook));
        QString error;
        QScopedPointer<XCsv> back(XSpreadsheet::read(path, &error));
        QVERIFY2(back, qPrintable(error));
        QCOMPARE(back->data().size(), m_window->shownCore()->rows());
    } else {
        QCOMPARE(QString::fromUtf8(bytes), m_window->shownCore()->toString());
        QCOMPARE(QString::fromUtf8(bytes), QStringLiteral("\"Name\",\"M\",\"M\"\n\"S1\",7,7\n"
                                                          "\"A1\",1,2\n\"A2\",3,4\n"));
    }
    QCOMPARE(m_window->statusBar()->currentMessage(),
             QStringLiteral("Core collection saved to ") + path);

    // Save As always asks, even with a save path.
    const QString other = m_dir->filePath(QStringLiteral("other.csv"));
    answerSave(other);
    action(QStringLiteral("Save As..."))->trigger();
    QCOMPARE(m_saveQuestions, 2);
    QCOMPARE(workspace->savePath(), other);
    QVERIFY(QFile::exists(other));
}

void TestXMainWindow::saveAgainWritesWithoutAsking()
{
    XWorkspace* workspace = smallWorkspace(false, 70);
    m_window->clearWorkspace(workspace);
    const QString path = m_dir->filePath(QStringLiteral("core.csv"));
    answerSave(path);
    action(QStringLiteral("Save..."))->trigger();
    QCOMPARE(m_saveQuestions, 1);
    const QByteArray first = readAll(path);
    slider()->setValue(10);
    action(QStringLiteral("Save..."))->trigger();
    QCOMPARE(m_saveQuestions, 1);
    const QByteArray second = readAll(path);
    QVERIFY(second != first);
    QCOMPARE(QString::fromUtf8(second), workspace->result()->csv(10)->toString());
}

void TestXMainWindow::saveFailureReported()
{
    m_window->clearWorkspace(smallWorkspace(false, 70));
    const QString path = m_dir->filePath(QStringLiteral("missing/dir/core.csv"));
    answerSave(path);
    action(QStringLiteral("Save As..."))->trigger();
    QVERIFY(!QFile::exists(path));
    QCOMPARE(m_window->statusBar()->currentMessage(),
             QStringLiteral("Could not write ") + path +
                 QStringLiteral(": No such file or directory"));
    answerSave(m_dir->filePath(QStringLiteral("missing/w.ccw")));
    action(QStringLiteral("Export Workspace..."))->trigger();
    QCOMPARE(m_window->statusBar()->currentMessage(),
             QStringLiteral("Could not write ") + m_dir->filePath(QStringLiteral("missing/w.ccw")) +
                 QStringLiteral(": No such file or directory"));
}

void TestXMainWindow::specialTargetRefused()
{
    // Renaming over a device or a FIFO would replace the node itself.
    m_window->clearWorkspace(smallWorkspace(false, 70));
    answerSave(QStringLiteral("/dev/null"));
    action(QStringLiteral("Save As..."))->trigger();
    QCOMPARE(m_window->statusBar()->currentMessage(),
             QStringLiteral("Could not write /dev/null: it exists and is not a regular file"));
    const QString fifo = m_dir->filePath(QStringLiteral("p.ccw"));
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    answerSave(fifo);
    action(QStringLiteral("Export Workspace..."))->trigger();
    QCOMPARE(m_window->statusBar()->currentMessage(),
             QStringLiteral("Could not write ") + fifo +
                 QStringLiteral(": it exists and is not a regular file"));
    struct stat info
    {
    };
    QCOMPARE(::stat(QFile::encodeName(fifo).constData(), &info), 0);
    QVERIFY(S_ISFIFO(info.st_mode));
    QCOMPARE(::stat("/dev/null", &info), 0);
    QVERIFY(S_ISCHR(info.st_mode));
}

void TestXMainWindow::exportThenImport()
{
    XWorkspace* original = smallWorkspace(true, 42);
    m_window->clearWorkspace(original);
    const QString text = original->toString();
    const QString path = m_dir->filePath(QStringLiteral("analysis.ccw"));
    QString filterSeen;
    XFileDialog::setSaveHook([&](QWidget*, QString const& filter) {
        filterSeen = filter;
        return path;
    });
    action(QStringLiteral("Export Workspace..."))->trigger();
    QCOMPARE(filterSeen, QStringLiteral("Workspace files (*.ccw)"));
    QCOMPARE(QString::fromUtf8(readAll(path)), text);
    QCOMPARE(m_window->statusBar()->currentMessage(),
             QStringLiteral("Workspace exported to ") + path);

    // Show something else, then import the file back.
    m_window->clearWorkspace(smallWorkspace(false, 10));
    XFileDialog::setOpenHook([&](QWidget*, QString const& filter) {
        filterSeen = filter;
        return path;
    });
    action(QStringLiteral("Import Workspace..."))->trigger();
    QCOMPARE(filterSeen, QStringLiteral("Workspace files (*.ccw)"));
    XWorkspace* imported = m_window->workspace();
    QVERIFY(imported);
    QCOMPARE(imported->toString(), text);
    QCOMPARE(slider()->value(), 42);
    QVERIFY(tabs()->isTabEnabled(XMainWindow::SourceTab));
    QCOMPARE(gridText(*m_window->shownCore()), gridText(*imported->result()->csv(42)));
    QCOMPARE(view(XMainWindow::InputTab)->model()->rowCount(), 3);
    QCOMPARE(imported->savePath(), QString());
}

void TestXMainWindow::exportKeepsSavePath()
{
    XWorkspace* workspace = smallWorkspace(false, 70);
    m_window->clearWorkspace(workspace);
    const QString core = m_dir->filePath(QStringLiteral("core.csv"));
    answerSave(core);
    action(QStringLiteral("Save..."))->trigger();
    answerSave(m_dir->filePath(QStringLiteral("w.ccw")));
    action(QStringLiteral("Export Workspace..."))->trigger();
    QCOMPARE(workspace->savePath(), core);
    action(QStringLiteral("Save..."))->trigger();
    QCOMPARE(m_saveQuestions, 2);
}

void TestXMainWindow::importReplaces()
{
    const QString path = m_dir->filePath(QStringLiteral("plain.ccw"));
    {
        QScopedPointer<XWorkspace> plain(smallWorkspace(false, 90));
        QVERIFY(writeText(path, plain->toString().toUtf8()));
    }
    QPointer<XWorkspace> shown = smallWorkspace(true, 20);
    m_window->clearWorkspace(shown);
    XFileDialog::setOpenHook([path](QWidget*, QString const&) { return path; });
    QTest::mouseClick(button(QStringLiteral("Import")), Qt::LeftButton);
    QVERIFY(shown.isNull());
    QVERIFY(m_window->workspace());
    QCOMPARE(slider()->value(), 90);
    QVERIFY(!tabs()->isTabEnabled(XMainWindow::SourceTab));
}

void TestXMainWindow::importRefusesIncomplete_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("why");
    const QString whole = QStringLiteral("is not a valid workspace file: it does not hold a whole "
                                         "analysis");
    QTest::newRow("empty file") << QByteArray() << whole;
    QTest::newRow("not a workspace") << QByteArray("Name,M\nA,1\n") << whole;
    QTest::newRow("truncated") << QByteArray("SliderValue=3\n\n#\n\"N\",\"M\"\n\"a\",1\n\n#\n1,1\n")
                               << whole;
    QTest::newRow("binary") << QByteArray::fromHex("d0cf11e0a1b11ae100ff00ff")
                            << "cannot be imported: is not a text file: it holds NUL bytes";
    // Damage that used to pass: made from a whole workspace of the small table.
    QScopedPointer<XWorkspace> small(smallWorkspace(false, 3));
    const QByteArray text = small->toString().toUtf8();
    // The result's first line is line 10: a settings line, an empty line and
    // "#", 4 table lines, an empty line and "#".
    QTest::newRow("count not a number")
        << QByteArray(text).replace("1,2,5\n", "1,2,x\n")
        << "is not a valid workspace file: line 60: a result line holds something other than "
           "row numbers and an allele count of 0 or more";
    QTest::newRow("negative count")
        << QByteArray(text).replace("1,2,5\n", "1,2,-5\n")
        << "is not a valid workspace file: line 60: a result line holds something other than "
           "row numbers and an allele count of 0 or more";
    QTest::newRow("row named 100000 times")
        << QByteArray(text).replace("1,3\n", QByteArray("1,").repeated(100000) + "3\n")
        << "is not a valid workspace file: line 10: the core lists 100000 accessions, and the "
           "input table has 3";
    QTest::newRow("text after the last section") << text + "\nrest of another file\n" << whole;
    // What no search writes.
    QTest::newRow("count above the total")
        << QByteArray(text).replace("1,2,5\n", "1,2,2147483647\n")
        << "is not a valid workspace file: line 60: the count 2147483647 is more than the 5 "
           "alleles the tables hold";
    QTest::newRow("an input cell of -1")
        << QByteArray(text).replace("\"A2\",3,4", "\"A2\",-1,4")
        << "is not a valid workspace file: line 6: \"-1\" under marker M is not an allele (a "
           "whole number of 0 or more, or * for a missing one)";
    QTest::newRow("unknown search") << QByteArray("Search=bogus\n") + text
                                    << "is not a valid workspace file: line 1: the search "
                                       "\"bogus\" is none that Vireon knows (reproducible or "
                                       "exact)";
}

void TestXMainWindow::importRefusesIncomplete()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, why);
    QPointer<XWorkspace> shown = smallWorkspace(false, 33);
    m_window->clearWorkspace(shown);
    const QString path = m_dir->filePath(QStringLiteral("bad.ccw"));
    QVERIFY(writeText(path, content));
    XFileDialog::setOpenHook([path](QWidget*, QString const&) { return path; });
    QString seen;
    whenModalOpens([&seen](QWidget* modal) {
        seen = messageOf(modal);
        modal->close();
    });
    action(QStringLiteral("Import Workspace..."))->trigger();
    QCOMPARE(seen, QStringLiteral("Error | The file %1 %2. The analysis shown stays as it is.")
                       .arg(path, why));
    QCOMPARE(m_window->workspace(), shown.data());
    QCOMPARE(slider()->value(), 33);
}

void TestXMainWindow::importFromLongPath()
{
    // Over 512 characters of path: still a path, never the workspace's text.
    QString folder = m_dir->path();
    while (folder.size() < 600) {
        folder += QLatin1Char('/') + QString(100, QLatin1Char('w'));
        QVERIFY(QDir().mkpath(folder));
    }
    const QString path = folder + QStringLiteral("/long.ccw");
    QScopedPointer<XWorkspace> written(smallWorkspace(true, 60));
    QVERIFY(writeText(path, written->toString().toUtf8()));
    XFileDialog::setOpenHook([path](QWidget*, QString const&) { return path; });
    action(QStringLiteral("Import Workspace..."))->trigger();
    QVERIFY(m_window->workspace());
    QCOMPARE(m_window->workspace()->toString(), written->toString());
    QCOMPARE(slider()->value(), 60);
}

void TestXMainWindow::importRefusesFifo()
{
    QPointer<XWorkspace> shown = smallWorkspace(false, 33);
    m_window->clearWorkspace(shown);
    const QString path = m_dir->filePath(QStringLiteral("pipe.ccw"));
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    XFileDialog::setOpenHook([path](QWidget*, QString const&) { return path; });
    QString seen;
    whenModalOpens([&seen](QWidget* modal) {
        seen = messageOf(modal);
        modal->close();
    });
    action(QStringLiteral("Import Workspace..."))->trigger();
    QCOMPARE(seen, QStringLiteral("Error | The file %1 cannot be imported: not a regular file. "
                                  "The analysis shown stays as it is.")
                       .arg(path));
    QCOMPARE(m_window->workspace(), shown.data());
}

void TestXMainWindow::cancelledDialogsDoNothing()
{
    XWorkspace* workspace = smallWorkspace(false, 70);
    m_window->clearWorkspace(workspace);
    answerSave(QString());
    action(QStringLiteral("Save..."))->trigger();
    action(QStringLiteral("Save As..."))->trigger();
    action(QStringLiteral("Export Workspace..."))->trigger();
    QCOMPARE(m_saveQuestions, 3);
    QCOMPARE(workspace->savePath(), QString());
    XFileDialog::setOpenHook([](QWidget*, QString const&) { return QString(); });
    action(QStringLiteral("Import Workspace..."))->trigger();
    QCOMPARE(m_window->workspace(), workspace);
    QVERIFY(QDir(m_dir->path()).entryList(QDir::Files).isEmpty());
}

void TestXMainWindow::engineErrorShown()
{
    QPointer<XWorkspace> shown = smallWorkspace(false, 50);
    m_window->clearWorkspace(shown);
    QPointer<XCsv> csv = new XCsv(examples + QStringLiteral("/microbov.csv"));
    QPointer<XCsv> src = new XCsv(QStringLiteral("Name,INRA63\nX,1\n"));
    QString seen;
    whenDialogOpens<QMessageBox>([&seen](QMessageBox* box) {
        seen = messageOf(box);
        box->close();
    });
    m_window->parseCsv(XAnalysisRequest(csv, src, XSearchSettings::reproducible(1, 1)));
    QTRY_COMPARE_WITH_TIMEOUT(seen, QStringLiteral("Error | Different headers."), 60000);
    // The failed run's tables are gone; the analysis shown stays.
    QVERIFY(csv.isNull());
    QVERIFY(src.isNull());
    QCOMPARE(m_window->workspace(), shown.data());
    QVERIFY(action(QStringLiteral("Save..."))->isEnabled());
}

void TestXMainWindow::emptyInputRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty table") << QString();
    QTest::newRow("header row only") << QStringLiteral("Name,M,M\n");
}

void TestXMainWindow::emptyInputRefused()
{
    QFETCH(QString, text);
    QPointer<XWorkspace> shown = smallWorkspace(false, 50);
    m_window->clearWorkspace(shown);
    QPointer<XCsv> csv = new XCsv(text);
    QPointer<XCsv> src = new XCsv(QStringLiteral("Name,M,M\n"));
    QString seen;
    whenModalOpens([&seen](QWidget* modal) {
        seen = messageOf(modal);
        modal->close();
    });
    m_window->parseCsv(XAnalysisRequest(csv, src, XSearchSettings::reproducible(1, 1)));
    QCOMPARE(seen, QStringLiteral("Error | The input table has no accessions: it needs at least "
                                  "one row below its header row."));
    QVERIFY(csv.isNull());
    QVERIFY(src.isNull());
    QCOMPARE(m_window->workspace(), shown.data());
}

void TestXMainWindow::fullDiskKeepsOldFiles()
{
    m_window->clearWorkspace(smallWorkspace(true, 70));
    const QString core = m_dir->filePath(QStringLiteral("core.csv"));
    const QString analysis = m_dir->filePath(QStringLiteral("analysis.ccw"));
    QVERIFY(writeText(core, "old core\n"));
    QVERIFY(writeText(analysis, "old analysis\n"));
    // A file-size limit makes writes fail part-way, as a full disk does.
    rlimit old{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &old), 0);
    const auto previousHandler = signal(SIGXFSZ, SIG_IGN);
    rlimit tiny{24, old.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &tiny), 0);
    answerSave(core);
    action(QStringLiteral("Save As..."))->trigger();
    const QString saveMessage = m_window->statusBar()->currentMessage();
    answerSave(analysis);
    action(QStringLiteral("Export Workspace..."))->trigger();
    const QString exportMessage = m_window->statusBar()->currentMessage();
    setrlimit(RLIMIT_FSIZE, &old);
    signal(SIGXFSZ, previousHandler);
    QCOMPARE(saveMessage,
             QStringLiteral("Could not write ") + core + QStringLiteral(": File too large"));
    QCOMPARE(exportMessage,
             QStringLiteral("Could not write ") + analysis + QStringLiteral(": File too large"));
    QCOMPARE(readAll(core), QByteArray("old core\n"));
    QCOMPARE(readAll(analysis), QByteArray("old analysis\n"));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files).size(), 2);
}

void TestXMainWindow::abortKeepsPreviousWorkspace_data()
{
    QTest::addColumn<int>("abortAt");
    QTest::newRow("right after start") << 0;
    QTest::newRow("mid-search") << 30;
}

void TestXMainWindow::abortKeepsPreviousWorkspace()
{
    QFETCH(int, abortAt);
    QPointer<XWorkspace> shown = smallWorkspace(false, 50);
    m_window->clearWorkspace(shown);
    // Large enough that the search is still running when Abort is pressed.
    XCsv::Grid grid{{QStringLiteral("Name")}};
    for (int c = 0; c < 400; ++c)
        grid[0] << QStringLiteral("M%1").arg(c / 2);
    for (int r = 1; r <= 1500; ++r) {
        XCsv::Row row{QStringLiteral("A%1").arg(r)};
        for (int c = 0; c < 400; ++c)
            row << (r * 7919 + c * 104729) % 23;
        grid << row;
    }
    QPointer<XCsv> csv = new XCsv(grid);
    bool aborted = false;
    QElapsedTimer sinceAbort;
    whenModalOpens([&](QWidget* modal) {
        auto* progress = qobject_cast<QProgressDialog*>(modal);
        QVERIFY(progress);
        QVERIFY(progress->labelText().startsWith(QStringLiteral("Working...")));
        QCOMPARE(progress->minimum(), 1);
        QCOMPARE(progress->maximum(), 100);
        QPushButton* abort = progress->findChild<QPushButton*>();
        QVERIFY(abort);
        QCOMPARE(abort->text(), QStringLiteral("Abort"));
        auto* poll = new QTimer(progress);
        connect(poll, &QTimer::timeout, progress, [&, progress, abort, poll] {
            if (progress->value() < abortAt)
                return;
            poll->stop();
            // Past 1 % the search has named a core size.
            if (abortAt > 0) {
                const QRegularExpression searching(QStringLiteral(
                    "^Working...\nSearching cores of [1-9][0-9]* of 1500 accessions$"));
                QVERIFY2(searching.match(progress->labelText()).hasMatch(),
                         qPrintable(progress->labelText()));
            }
            aborted = true;
            sinceAbort.start();
            abort->click();
        });
        poll->start(5);
    });
    m_window->parseCsv(XAnalysisRequest(csv, nullptr, XSearchSettings::reproducible(20, 3)));
    QVERIFY(aborted);
    // The run ends soon after Abort, and leaves nothing behind. The test
    // runs alone (RUN_SERIAL); sanitized code is several times slower.
#ifdef VIREON_SANITIZED
    const qint64 abortLimitMs = 10000;
#else
    const qint64 abortLimitMs = 2000;
#endif
    QVERIFY2(sinceAbort.elapsed() < abortLimitMs,
             qPrintable(QString::number(sinceAbort.elapsed())));
    QVERIFY(csv.isNull());
    QCoreApplication::processEvents();
    QCOMPARE(m_window->workspace(), shown.data());
    const QString path = m_dir->filePath(QStringLiteral("after.csv"));
    answerSave(path);
    action(QStringLiteral("Save..."))->trigger();
    QCOMPARE(QString::fromUtf8(readAll(path)), m_window->shownCore()->toString());
}

void TestXMainWindow::sampleDialogCloses()
{
    bool seen = false;
    whenModalOpens([&seen](QWidget* modal) {
        seen = qobject_cast<XSample*>(modal) != nullptr;
        int pictures = 0;
        for (QLabel* label : modal->findChildren<QLabel*>()) {
            if (label->pixmap(Qt::ReturnByValue).width() > 300)
                ++pictures;
        }
        QCOMPARE(pictures, 2);
        if (QAbstractButton* close = findButton(modal, QStringLiteral("Close")))
            close->click();
        else
            modal->close();
    });
    QTest::mouseClick(button(QStringLiteral("Sample")), Qt::LeftButton);
    QVERIFY(seen);
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QCOMPARE(m_window->workspace(), nullptr);
}

void TestXMainWindow::saveAsKeyWithoutDesktop()
{
    // Without a desktop environment the theme binds no keys to Save As.
    QCOMPARE(action(QStringLiteral("Save As..."))->shortcut().isEmpty(), false);
    importByClick(writeWorkspace(smallWorkspace(false, 100), QStringLiteral("a.ccw")));
    QVERIFY(m_window->workspace());
    answerSave(m_dir->filePath(QStringLiteral("core.csv")));
    activate();
    const QKeySequence keys = action(QStringLiteral("Save As..."))->shortcut();
    QTest::keySequence(m_window, keys);
    QCOMPARE(m_saveQuestions, 1);
    QCOMPARE(m_window->statusBar()->currentMessage(),
             QStringLiteral("Core collection saved to ") + m_dir->filePath("core.csv"));
    if (QKeySequence(QKeySequence::SaveAs).isEmpty())
        QCOMPARE(keys, QKeySequence(QStringLiteral("Ctrl+Shift+S")));
}

void TestXMainWindow::altFOpensFileMenu()
{
    activate();
    QTest::keyClick(m_window, Qt::Key_F, Qt::AltModifier);
    QMenu* file = m_window->menuBar()->actions().at(0)->menu();
    QTRY_VERIFY(file->isVisible());
    QCOMPARE(QApplication::activePopupWidget(), file);
    file->close();
    QTest::keyClick(m_window, Qt::Key_H, Qt::AltModifier);
    QTRY_VERIFY(m_window->menuBar()->actions().at(1)->menu()->isVisible());
    m_window->menuBar()->actions().at(1)->menu()->close();
}

void TestXMainWindow::quitAsksBeforeLosingAnalysis()
{
    const QString input = m_dir->filePath(QStringLiteral("small.csv"));
    QVERIFY(writeText(input, "Name,M,M\nA1,1,2\nA2,3,4\nA3,5,6\n"));
    runAnalysisByClicks(input);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Vireon"));

    // Cancel keeps the window and the analysis.
    QStringList seen;
    whenModalOpens(answerBox(QStringLiteral("Cancel"), &seen));
    clickMenuAction(Qt::Key_F, QStringLiteral("Quit"));
    QCOMPARE(seen.mid(0, 2), QStringList({"Quit", "Export the analysis before quitting?"}));
    QStringList buttons = seen.mid(2);
    buttons.sort();
    QCOMPARE(buttons, QStringList({"Cancel", "Discard", "Export..."}));
    QVERIFY(m_window->isVisible());
    QVERIFY(m_window->workspace());

    // Export... with the file dialog cancelled: still open.
    seen.clear();
    answerSave(QString());
    whenModalOpens(answerBox(QStringLiteral("Export..."), &seen));
    clickMenuAction(Qt::Key_F, QStringLiteral("Quit"));
    QCOMPARE(m_saveQuestions, 1);
    QVERIFY(m_window->isVisible());

    // Export... with a file name: written, then the window closes.
    const QString path = m_dir->filePath(QStringLiteral("small.ccw"));
    answerSave(path);
    whenModalOpens(answerBox(QStringLiteral("Export..."), &seen));
    clickMenuAction(Qt::Key_F, QStringLiteral("Quit"));
    QVERIFY(!m_window->isVisible());
    QCOMPARE(QString::fromUtf8(readAll(path)), m_window->workspace()->toString());

    // A second analysis, discarded: the window closes without writing.
    m_window->show();
    runAnalysisByClicks(input);
    seen.clear();
    whenModalOpens(answerBox(QStringLiteral("Discard"), &seen));
    activate();
    m_window->close();
    QCOMPARE(seen.value(1), QStringLiteral("Export the analysis before quitting?"));
    QVERIFY(!m_window->isVisible());
}

void TestXMainWindow::quitAfterExportOrImportAsksNothing()
{
    bool asked = false;
    auto watch = [&asked] {
        whenModalOpens(
            [&asked](QWidget* modal) {
                asked = true;
                modal->close();
            },
            300);
    };
    // The start page quits at once.
    watch();
    clickMenuAction(Qt::Key_F, QStringLiteral("Quit"));
    QVERIFY(!m_window->isVisible());
    // So does an analysis just imported.
    m_window->show();
    importByClick(writeWorkspace(smallWorkspace(false, 100), QStringLiteral("b.ccw")));
    QVERIFY(m_window->workspace());
    watch();
    clickMenuAction(Qt::Key_F, QStringLiteral("Quit"));
    QVERIFY(!m_window->isVisible());
    QTest::qWait(400);
    QVERIFY(!asked);
}

void TestXMainWindow::workspaceDialogTitlesStatusAndWindowTitle()
{
    const QString path = writeWorkspace(smallWorkspace(false, 100), QStringLiteral("microbov.ccw"));
    // The real file dialogs: their titles are read, the name typed in.
    QString openTitle, saveTitle;
    auto typeName = [](QString* title, QString const& name) {
        return [title, name](QWidget* modal) {
            *title = modal->windowTitle();
            auto* edit = modal->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            if (!edit) {
                modal->close();
                return;
            }
            edit->setFocus();
            QTest::keyClicks(edit, name);
            QTest::keyClick(edit, Qt::Key_Return);
        };
    };
    // Generous: the first file dialog reads its folder before it shows.
    whenModalOpens(typeName(&openTitle, path), 30000);
    tabs()->setCurrentIndex(XMainWindow::StartTab);
    clickButtonNow(button(QStringLiteral("Import")));
    QCOMPARE(openTitle, QStringLiteral("Import Workspace"));
    QVERIFY(m_window->workspace());
    QCOMPARE(m_window->statusBar()->currentMessage(), QStringLiteral("Imported ") + path);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("microbov.ccw \u2014 Vireon"));

    const QString exported = m_dir->filePath(QStringLiteral("copy.ccw"));
    whenModalOpens(typeName(&saveTitle, exported), 30000);
    clickMenuAction(Qt::Key_F, QStringLiteral("Export Workspace..."));
    QCOMPARE(saveTitle, QStringLiteral("Export Workspace"));
    QCOMPARE(m_window->statusBar()->currentMessage(),
             QStringLiteral("Workspace exported to ") + exported);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("copy.ccw \u2014 Vireon"));
}

void TestXMainWindow::graphWholeNumbersAndLabelsInside()
{
    // Cores of 1 and 2 accessions with 3 and 5 alleles: small ranges that
    // autoscaling divides in halves or fifths.
    importByClick(writeWorkspace(smallWorkspace(false, 100), QStringLiteral("small.ccw")));
    QVERIFY(m_window->workspace());
    QTabBar* bar = tabs()->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier,
                      bar->tabRect(XMainWindow::GraphTab).center());
    auto* graph = qobject_cast<XGraphWidget*>(tabs()->currentWidget());
    QVERIFY(graph);
    for (int width : {640, 700, 900, 1200, 660}) {
        m_window->resize(width, 480 + width / 10);
        QApplication::processEvents();
        graph->replot();
        for (int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
            const QList<double> ticks = graph->axisScaleDiv(axis).ticks(QwtScaleDiv::MajorTick);
            QVERIFY(ticks.size() >= 2);
            for (double tick : ticks)
                QVERIFY2(tick == std::round(tick), qPrintable(QString::number(tick)));
        }
        const QRectF canvas = graph->canvas()->contentsRect();
        const QList<QRectF> labels = graph->coreSizeLabelRects();
        QCOMPARE(labels.size(), 2);
        for (int i = 0; i < labels.size(); ++i) {
            QVERIFY2(canvas.contains(labels.at(i)), qPrintable(QString::number(width)));
            if (i > 0)
                QVERIFY(labels.at(i).left() > labels.at(i - 1).right());
        }
    }
}

void TestXMainWindow::graphAxesLaidOutForEachResult()
{
    QTabBar* bar = tabs()->tabBar();
    auto* graph = qobject_cast<XGraphWidget*>(tabs()->widget(XMainWindow::GraphTab));
    QwtScaleWidget* yAxis = graph->axisWidget(QwtPlot::yLeft);
    importByClick(writeWorkspace(smallWorkspace(false, 100), QStringLiteral("small.ccw")));
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier,
                      bar->tabRect(XMainWindow::GraphTab).center());
    QApplication::processEvents();
    const int narrow = yAxis->width();
    // The next result arrives while the graph is hidden behind the core tab.
    // Its six-digit counts are no search's (Import refuses them), so it is
    // shown directly.
    m_window->clearWorkspace(wideWorkspace());
    QCOMPARE(tabs()->currentIndex(), int(XMainWindow::CoreTab));
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier,
                      bar->tabRect(XMainWindow::GraphTab).center());
    QApplication::processEvents();
    QVERIFY(yAxis->width() > narrow);
    // Laying the plot out afresh changes nothing: it was laid out already.
    const QRect shown = yAxis->geometry();
    graph->updateLayout();
    QCOMPARE(yAxis->geometry(), shown);
    // The axis and its title stay left of the canvas.
    QVERIFY(yAxis->geometry().right() < graph->canvas()->geometry().left());
}

void TestXMainWindow::exactSearchLines()
{
    // The 100 % entry of microbov is proven within a second on this build;
    // the budget leaves a wide margin for a loaded or sanitized one.
#ifdef VIREON_SANITIZED
    const int budget = 40;
#else
    const int budget = 10;
#endif
    runExactAnalysis(examples + QStringLiteral("/microbov.csv"), budget);
    QTRY_VERIFY_WITH_TIMEOUT(m_window->workspace(), 120000);
    QCOMPARE(slider()->value(), 100);
    QCOMPARE(m_window->coverageLine(),
             QStringLiteral("72 accessions · they hold 373 of 373 alleles (100 %) · proven "
                            "smallest"));
    QVERIFY(m_window->findChild<QLabel*>(QStringLiteral("coverageLine"))->isVisible());
    const QRegularExpression run(
        QStringLiteral("^Exact search · ([0-9]+) of 100 cores proven smallest · [0-9.]+ s$"));
    const QRegularExpressionMatch match = run.match(m_window->runLine());
    QVERIFY2(match.hasMatch(), qPrintable(m_window->runLine()));
    XWorkspace* workspace = m_window->workspace();
    QCOMPARE(workspace->search(), QStringLiteral("exact"));
    QCOMPARE(workspace->budget(), budget);
    QCOMPARE(workspace->result()->lowerBounds().size(), 100);
    int proven = 0;
    int unproven = -1;
    for (int i = 0; i < 100; ++i) {
        const int size = workspace->result()->entries().at(i).second.size();
        if (workspace->result()->lowerBounds().at(i) == size)
            ++proven;
        else
            unproven = i + 1;
    }
    QCOMPARE(match.captured(1).toInt(), proven);

    // One curve of what the cores hold; the bounds dashed where not proven.
    QwtPlotCurve* held = curveTitled(*graph(), QStringLiteral("held by the core (smallest)"));
    QVERIFY(held);
    QCOMPARE(yAt(held, 72), 373.0);
    QVERIFY(!curveTitled(*graph(), QStringLiteral("held by the core")));
    QVERIFY(!curveTitled(*graph(), QStringLiteral("reported by the search")));
    QwtPlotCurve* bounds = curveTitled(*graph(), QStringLiteral("at least this many accessions"));
    QCOMPARE(bounds != nullptr, unproven > 0);
    if (unproven > 0) {
        QCOMPARE(bounds->pen().style(), Qt::DashLine);
        slider()->setValue(unproven);
        const int needed = workspace->result()->lowerBounds().at(unproven - 1);
        QVERIFY2(m_window->coverageLine().endsWith(
                     QStringLiteral(" · at least %1 accessions are needed").arg(needed)),
                 qPrintable(m_window->coverageLine()));
    }
}

void TestXMainWindow::reproducibleLines()
{
    runAnalysis(examples + QStringLiteral("/microbov.csv"), QString(), 1, 1);
    QTRY_VERIFY_WITH_TIMEOUT(m_window->workspace(), 120000);
    QCOMPARE(m_window->coverageLine(),
             QStringLiteral("54 accessions · the search reports 373 of 373 alleles · they hold "
                            "319 (85.5 %)"));
    QCOMPARE(m_window->runLine(), QStringLiteral("Reproducible search · seed 1 · 1 iteration"));
    slider()->setValue(50);
    QCOMPARE(m_window->coverageLine(),
             QStringLiteral("6 accessions · the search reports 214 of 373 alleles · they hold "
                            "167 (44.8 %)"));
    QCOMPARE(m_window->workspace()->search(), QStringLiteral("reproducible"));
    // At the window's smallest width the long line wraps rather than being cut.
    m_window->resize(640, 480);
    QApplication::processEvents();
    QCOMPARE(m_window->width(), 640);
    auto* line = m_window->findChild<QLabel*>(QStringLiteral("coverageLine"));
    QVERIFY2(
        line->minimumSizeHint().width() <= line->width(),
        qPrintable(
            QStringLiteral("%1 > %2").arg(line->minimumSizeHint().width()).arg(line->width())));

    // Both curves, the second in another colour, named by the legend.
    QwtPlotCurve* reported = curveTitled(*graph(), QStringLiteral("reported by the search"));
    QwtPlotCurve* held = curveTitled(*graph(), QStringLiteral("held by the core"));
    QVERIFY(reported && held);
    QVERIFY(held->pen().color() != reported->pen().color());
    QCOMPARE(yAt(reported, 54), 373.0);
    QCOMPARE(yAt(held, 54), 319.0);
    QCOMPARE(yAt(reported, 6), 214.0);
    QCOMPARE(yAt(held, 6), 167.0);
    auto* legend = qobject_cast<QwtLegend*>(graph()->legend());
    QVERIFY(legend);
    QStringList named;
    for (QwtPlotItem* item : graph()->itemList()) {
        if (item->testItemAttribute(QwtPlotItem::Legend))
            named << item->title().text();
    }
    named.sort();
    QCOMPARE(named, QStringList({QStringLiteral("held by the core"),
                                 QStringLiteral("reported by the search")}));
}

void TestXMainWindow::clockSeedKeptAndRepeated()
{
    runAnalysis(examples + QStringLiteral("/microbov.csv"), QString(), 1, 0);
    QTRY_VERIFY_WITH_TIMEOUT(m_window->workspace(), 120000);
    const QRegularExpressionMatch match =
        QRegularExpression(QStringLiteral("^Reproducible search · seed ([0-9]+) · 1 iteration$"))
            .match(m_window->runLine());
    QVERIFY2(match.hasMatch(), qPrintable(m_window->runLine()));
    const int seed = match.captured(1).toInt();
    QVERIFY(seed > 0);
    QCOMPARE(m_window->workspace()->seed(), seed);
    const QString result = m_window->workspace()->result()->toString();

    exportAndImport(QStringLiteral("clock.ccw"));
    const QString text = QString::fromUtf8(readAll(m_dir->filePath(QStringLiteral("clock.ccw"))));
    QVERIFY(text.contains(QStringLiteral("\nSeed=%1\n").arg(seed)));
    QCOMPARE(m_window->runLine(), match.captured(0));
    QCOMPARE(m_window->workspace()->seed(), seed);

    // The seed read back repeats the run.
    runAnalysis(examples + QStringLiteral("/microbov.csv"), QString(), 1,
                m_window->workspace()->seed());
    QTRY_VERIFY_WITH_TIMEOUT(m_window->runLine() == match.captured(0) &&
                                 m_window->workspace()->result()->toString() == result,
                             120000);
}

void TestXMainWindow::exportImportKeepsSearch_data()
{
    QTest::addColumn<bool>("exact");
    QTest::newRow("reproducible") << false;
    QTest::newRow("exact") << true;
}

void TestXMainWindow::exportImportKeepsSearch()
{
    QFETCH(bool, exact);
    if (exact)
        runExactAnalysis(examples + QStringLiteral("/microbov.csv"), 1);
    else
        runAnalysis(examples + QStringLiteral("/microbov.csv"),
                    examples + QStringLiteral("/microbov_start.csv"), 2, 5);
    QTRY_VERIFY_WITH_TIMEOUT(m_window->workspace(), 120000);
    slider()->setValue(60);
    const QString runLine = m_window->runLine();
    const QString coverageLine = m_window->coverageLine();
    // The import may reuse the address of the workspace it replaces.
    QPointer<XWorkspace> made = m_window->workspace();
    const QString search = made->search();
    const int seed = made->seed();
    const int iterations = made->iterations();
    const QList<int> bounds = made->result()->lowerBounds();
    QCOMPARE(search, exact ? QStringLiteral("exact") : QStringLiteral("reproducible"));
    QCOMPARE(bounds.size(), exact ? 100 : 0);
    if (!exact) {
        QCOMPARE(runLine, QStringLiteral("Reproducible search · seed 5 · 2 iterations"));
        QVERIFY2(coverageLine.contains(QStringLiteral(" (5 in the starting collection) · ")),
                 qPrintable(coverageLine));
    }

    exportAndImport(exact ? QStringLiteral("exact.ccw") : QStringLiteral("reproducible.ccw"));
    XWorkspace* imported = m_window->workspace();
    QVERIFY(!made || imported != made.data());
    QCOMPARE(imported->search(), search);
    QCOMPARE(imported->seed(), seed);
    QCOMPARE(imported->iterations(), iterations);
    QCOMPARE(imported->result()->lowerBounds(), bounds);
    QCOMPARE(slider()->value(), 60);
    QCOMPARE(m_window->runLine(), runLine);
    QCOMPARE(m_window->coverageLine(), coverageLine);
}

void TestXMainWindow::startingCollectionMarked()
{
    m_window->clearWorkspace(smallWorkspace(true, 100));
    QCOMPARE(m_window->coverageLine(),
             QStringLiteral("3 accessions (1 in the starting collection) · the search reports 6 "
                            "of 6 alleles · they hold 5 (83.3 %)"));
    // A workspace that records no settings says only what it knows.
    QCOMPARE(m_window->runLine(), QStringLiteral("Reproducible search"));
    QAbstractItemModel* model = view(XMainWindow::CoreTab)->model();
    QCOMPARE(model->headerData(0, Qt::Vertical).toString(), QStringLiteral("S1"));
    QVERIFY(model->headerData(0, Qt::Vertical, Qt::FontRole).value<QFont>().bold());
    QCOMPARE(model->headerData(0, Qt::Vertical, Qt::ToolTipRole).toString(),
             QStringLiteral("In the starting collection"));
    for (int row : {1, 2})
        QVERIFY(!model->headerData(row, Qt::Vertical, Qt::FontRole).value<QFont>().bold());
    QVERIFY(!view(XMainWindow::InputTab)
                 ->model()
                 ->headerData(0, Qt::Vertical, Qt::FontRole)
                 .value<QFont>()
                 .bold());
}

void TestXMainWindow::saveGraphPicture_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("signature");
    QTest::newRow("png") << QStringLiteral("graph.png") << QByteArray("\x89PNG\r\n\x1a\n");
    QTest::newRow("svg") << QStringLiteral("graph.svg") << QByteArray("<?xml");
    QTest::newRow("pdf") << QStringLiteral("graph.pdf") << QByteArray("%PDF-");
}

void TestXMainWindow::saveGraphPicture()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, signature);
    m_window->clearWorkspace(smallWorkspace(true, 100));
    const QString path = m_dir->filePath(name);
    QString filterSeen;
    XFileDialog::setSaveHook([&](QWidget*, QString const& filter) {
        filterSeen = filter;
        return path;
    });
    clickGraphMenu(QStringLiteral("Save Graph As..."));
    QTRY_COMPARE(m_window->statusBar()->currentMessage(), QStringLiteral("Graph saved to ") + path);
    QCOMPARE(filterSeen,
             QStringLiteral("PNG images (*.png);;SVG drawings (*.svg);;PDF documents (*.pdf)"));
    const QByteArray bytes = readAll(path);
    QVERIFY2(bytes.startsWith(signature), bytes.left(16).toHex().constData());
    QVERIFY2(bytes.size() > 2000, qPrintable(QString::number(bytes.size())));
    if (name.endsWith(QLatin1String(".png"))) {
        // 160 x 100 mm at 300 dpi.
        const QImage image(path);
        QCOMPARE(image.size(), QSize(1890, 1181));
        QCOMPARE(qRound(image.dotsPerMeterX() * 0.0254), 300);
    } else if (name.endsWith(QLatin1String(".svg"))) {
        QVERIFY(bytes.contains("<svg"));
        QVERIFY(bytes.contains("width=\"160mm\"") || bytes.contains("viewBox"));
    }
    // Nothing was added to the File menu.
    QStringList fileMenu;
    for (QAction* entry : m_window->menuBar()->actions().first()->menu()->actions())
        fileMenu << entry->text();
    QCOMPARE(fileMenu,
             QStringList({QStringLiteral("New..."), QStringLiteral("Save..."),
                          QStringLiteral("Save As..."), QStringLiteral("Import Workspace..."),
                          QStringLiteral("Export Workspace..."), QStringLiteral("Quit")}));
}

void TestXMainWindow::saveGraphRefusesOtherSuffix()
{
    m_window->clearWorkspace(smallWorkspace(false, 100));
    const QString path = m_dir->filePath(QStringLiteral("graph.txt"));
    answerSave(path);
    clickGraphMenu(QStringLiteral("Save Graph As..."));
    QTRY_COMPARE(
        m_window->statusBar()->currentMessage(),
        QStringLiteral("Could not write %1: the name must end in .png, .svg or .pdf").arg(path));
    QVERIFY(!QFile::exists(path));
}

void TestXMainWindow::exactAbortKeepsPreviousWorkspace()
{
    QPointer<XWorkspace> shown = smallWorkspace(false, 50);
    m_window->clearWorkspace(shown);
    const QString runLine = m_window->runLine();
    bool aborted = false;
    whenModalOpens([&aborted](QWidget* modal) {
        auto* progress = qobject_cast<QProgressDialog*>(modal);
        QVERIFY(progress);
        QCOMPARE(progress->labelText(), QStringLiteral("Working..."));
        QPushButton* abort = progress->findChild<QPushButton*>();
        QVERIFY(abort);
        aborted = true;
        abort->click();
    });
    // A budget far longer than the test: only Abort ends this run early.
    QPointer<XCsv> csv = new XCsv(examples + QStringLiteral("/microbov.csv"));
    m_window->parseCsv(XAnalysisRequest(csv, nullptr, XSearchSettings::exact(3600)));
    QVERIFY(aborted);
    QVERIFY(csv.isNull());
    QCoreApplication::processEvents();
    QCOMPARE(m_window->workspace(), shown.data());
    QCOMPARE(m_window->runLine(), runLine);

    // The next run is a reproducible one of its own.
    stopWatchingModals();
    m_window->parseCsv(XAnalysisRequest(new XCsv(examples + QStringLiteral("/microbov.csv")),
                                        nullptr, XSearchSettings::reproducible(1, 1)));
    QTRY_VERIFY_WITH_TIMEOUT(m_window->workspace() != shown.data(), 120000);
    QCOMPARE(m_window->workspace()->search(), QStringLiteral("reproducible"));
    QCOMPARE(m_window->runLine(), QStringLiteral("Reproducible search · seed 1 · 1 iteration"));
}

void TestXMainWindow::savesNeverReplaceInputs_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("role");
    QTest::newRow("Save As over the input") << "Save As..."
                                            << "in.csv"
                                            << "the input table";
    QTest::newRow("Save As over the start") << "Save As..."
                                            << "start.csv"
                                            << "the starting collection";
    QTest::newRow("Export over the input") << "Export Workspace..."
                                           << "in.csv"
                                           << "the input table";
    QTest::newRow("Export over a link to the start") << "Export Workspace..."
                                                     << "link.csv"
                                                     << "the starting collection";
}

void TestXMainWindow::savesNeverReplaceInputs()
{
    QFETCH(QString, action);
    QFETCH(QString, target);
    QFETCH(QString, role);
    // The window knows the files the wizard read the analysis from.
    const QByteArray inputBytes = readAll(examples + QStringLiteral("/microbov.csv"));
    const QByteArray startBytes = readAll(examples + QStringLiteral("/microbov_start.csv"));
    const QString input = m_dir->filePath(QStringLiteral("in.csv"));
    const QString start = m_dir->filePath(QStringLiteral("start.csv"));
    QVERIFY(writeText(input, inputBytes));
    QVERIFY(writeText(start, startBytes));
    QVERIFY(QFile::link(start, m_dir->filePath(QStringLiteral("link.csv"))));
    runAnalysis(input, start, 1, 3);
    QTRY_VERIFY_WITH_TIMEOUT(m_window->workspace(), 120000);
    const QString path = m_dir->filePath(target);
    const QString named = role == QLatin1String("the input table") ? input : start;
    answerSave(path);
    QString seen;
    whenModalOpens([&seen](QWidget* modal) {
        seen = messageOf(modal);
        modal->close();
    });
    this->action(action)->trigger();
    const QString which =
        path == named ? role : QStringLiteral("the same file as %1, %2").arg(named, role);
    QCOMPARE(seen, QStringLiteral("Error | %1 is %2 of this analysis, and an output never "
                                  "replaces a file the analysis reads. Nothing was written.")
                       .arg(path, which));
    QCOMPARE(readAll(input), inputBytes);
    QCOMPARE(readAll(start), startBytes);
    // Save goes on asking: nothing was chosen.
    QCOMPARE(m_window->workspace()->savePath(), QString());
    // Another name is written.
    answerSave(m_dir->filePath(QStringLiteral("out.ccw")));
    this->action(action)->trigger();
    QVERIFY(QFile::exists(m_dir->filePath(QStringLiteral("out.ccw"))));
}

void TestXMainWindow::xlsTooSmallRefusedBeforeWriting()
{
    // 300 allele columns: more than an .xls worksheet's 256.
    XCsv::Row header{QStringLiteral("Name")};
    XCsv::Row row{QStringLiteral("A")};
    for (int c = 0; c < 300; ++c) {
        header << QStringLiteral("M%1").arg(c);
        row << c + 1;
    }
    auto* csv = new XCsv(XCsv::Grid{header, row});
    XResult::Entries entries;
    for (int p = 1; p <= 100; ++p)
        entries << XResult::Entry(300, {1});
    m_window->clearWorkspace(new XWorkspace(csv, nullptr, new XResult(entries, csv, nullptr)));
    const QString path = m_dir->filePath(QStringLiteral("wide.xls"));
    answerSave(path);
    QString seen;
    whenModalOpens([&seen](QWidget* modal) {
        seen = messageOf(modal);
        modal->close();
    });
    action(QStringLiteral("Save As..."))->trigger();
    QCOMPARE(seen, QStringLiteral("Error | The core collection cannot be saved as %1: the table "
                                  "has 301 columns, and an .xls worksheet holds 256. Nothing was "
                                  "written.")
                       .arg(path));
    QVERIFY(!QFile::exists(path));
    // As text or .xlsx it is written.
    answerSave(m_dir->filePath(QStringLiteral("wide.xlsx")));
    action(QStringLiteral("Save As..."))->trigger();
    QVERIFY(QFile::exists(m_dir->filePath(QStringLiteral("wide.xlsx"))));
}

QTEST_MAIN(TestXMainWindow)
#include "tst_xmainwindow.moc"
