#include "XMainWindow.h"

#include "CenterResize.h"
#include "FileFormats.h"
#include "TableRules.h"
#include "XCoreReport.h"
#include "XCsv.h"
#include "XCsvTableWidget.h"
#include "XFileDialog.h"
#include "XGraphWidget.h"
#include "XResult.h"
#include "XSample.h"
#include "XSaveFile.h"
#include "XSearchRunner.h"
#include "XSpreadsheet.h"
#include "XWizard.h"
#include "XWorkspace.h"
#include "XWorkspaceCheck.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QSlider>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

const int statusTimeoutMs = 10000;

QString aboutText()
{
    return QStringLiteral(
               "Vireon 1.0d\n\n"
               "Selects core collections that keep as many distinct alleles as possible.\n\n"
               "Authors: The Vireon developers\n\n"
               "Built with Qt %1 (The Qt Company, LGPL), Qwt 6 (Uwe Rathmann and Josef Wilgen, "
               "Qwt License), FreeXL (Alessandro Furieri, MPL) and libgsf (The GNOME Project, "
               "LGPL).")
        .arg(QString::fromLatin1(qVersion()));
}

// Some platform themes bind no keys to a standard action (SaveAs without a
// desktop environment, say); the usual keys stand in for it there.
QKeySequence standardOr(QKeySequence::StandardKey key, QKeySequence const& fallback)
{
    const QKeySequence standard(key);
    return standard.isEmpty() ? fallback : standard;
}

} // namespace

XMainWindow::XMainWindow(QWidget* parent)
    : QMainWindow(parent), m_newAction(new QAction(tr("New..."), this)),
      m_saveAction(new QAction(tr("Save..."), this)),
      m_saveAsAction(new QAction(tr("Save As..."), this)),
      m_importAction(new QAction(tr("Import Workspace..."), this)),
      m_exportAction(new QAction(tr("Export Workspace..."), this)),
      m_quitAction(new QAction(tr("Quit"), this)), m_aboutAction(new QAction(tr("About"), this)),
      m_aboutQtAction(new QAction(tr("About Qt"), this)),
      m_about(new QMessageBox(QMessageBox::Information, tr("About"), aboutText(),
                              QMessageBox::NoButton, nullptr)),
      m_tabs(nullptr), m_newButton(nullptr), m_importButton(nullptr), m_sampleButton(nullptr),
      m_slider(nullptr), m_sliderValue(nullptr), m_coverageLine(nullptr), m_runLine(nullptr),
      m_coreView(nullptr), m_graph(nullptr), m_inputView(nullptr), m_sourceView(nullptr)
{
    buildMenus();

    setMinimumSize(640, 480);

    m_newButton = new QPushButton(tr("New"), this);
    m_importButton = new QPushButton(tr("Import"), this);
    m_sampleButton = new QPushButton(tr("Sample"), this);
    m_tabs = new QTabWidget(this);
    m_slider = new QSlider(Qt::Horizontal, this);
    m_sliderValue = new QLabel(this);
    m_coverageLine = new QLabel(this);
    m_runLine = new QLabel(this);
    m_coreView = new XCsvTableWidget(true, this);
    m_graph = new XGraphWidget(this);
    m_inputView = new XCsvTableWidget(true, this);
    m_sourceView = new XCsvTableWidget(true, this);

    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_newButton->setObjectName(QStringLiteral("newButton"));
    m_importButton->setObjectName(QStringLiteral("importButton"));
    m_sampleButton->setObjectName(QStringLiteral("sampleButton"));
    m_slider->setObjectName(QStringLiteral("slider"));
    m_sliderValue->setObjectName(QStringLiteral("sliderValue"));
    m_coverageLine->setObjectName(QStringLiteral("coverageLine"));
    m_runLine->setObjectName(QStringLiteral("runLine"));
    // Long lines wrap rather than widen the window past its minimum size.
    for (QLabel* line : {m_coverageLine, m_runLine}) {
        line->setTextInteractionFlags(Qt::TextSelectableByMouse);
        line->setWordWrap(true);
    }
    m_coreView->setObjectName(QStringLiteral("coreView"));
    m_graph->setObjectName(QStringLiteral("graph"));
    m_inputView->setObjectName(QStringLiteral("inputView"));
    m_sourceView->setObjectName(QStringLiteral("sourceView"));

    // Tracking off: a drag shows its number live but picks the core on release.
    m_slider->setRange(1, 100);
    m_slider->setSingleStep(1);
    m_slider->setPageStep(1);
    m_slider->setTracking(false);

    connect(m_newButton, &QPushButton::clicked, this, &XMainWindow::wizard);
    connect(m_importButton, &QPushButton::clicked, this, &XMainWindow::importWorkspace);
    connect(m_sampleButton, &QPushButton::clicked, this, &XMainWindow::sample);
    connect(m_slider, &QSlider::sliderMoved, m_sliderValue, qOverload<int>(&QLabel::setNum));
    connect(m_slider, &QSlider::valueChanged, m_sliderValue, qOverload<int>(&QLabel::setNum));
    connect(m_slider, &QSlider::valueChanged, this, &XMainWindow::update);
    connect(m_graph, &XGraphWidget::imageSaved, this,
            [this](bool written, QString const& fileName, QString const& reason) {
                reportWrite(written, tr("Graph saved to %1"), fileName, reason);
            });

    m_tabs->addTab(buildStartPage(), tr("Start"));
    m_tabs->addTab(buildCorePage(), tr("Core collection"));
    m_tabs->addTab(m_graph, tr("Graph"));
    m_tabs->addTab(m_inputView, tr("Input file"));
    m_tabs->addTab(m_sourceView, tr("Starting collection"));
    for (int tab = CoreTab; tab <= SourceTab; ++tab)
        m_tabs->setTabEnabled(tab, false);
    setCentralWidget(m_tabs);

    // Every write is reported here, so a failed save is never silent.
    setStatusBar(new QStatusBar(this));

    setWindowIcon(QIcon(QStringLiteral(":/img/dna")));
    setWindowTitle(m_file.windowTitle());
}

XMainWindow::~XMainWindow()
{
    // The views let go of the tables before the workspace deletes them.
    clearWorkspace(nullptr);
}

void XMainWindow::buildMenus()
{
    auto* menuBar = new QMenuBar(this);

    m_exportAction->setEnabled(false);
    m_saveAction->setEnabled(false);
    m_saveAsAction->setEnabled(false);

    m_newAction->setShortcut(QKeySequence::New);
    m_saveAction->setShortcut(QKeySequence::Save);
    m_saveAsAction->setShortcut(standardOr(QKeySequence::SaveAs, QKeySequence(tr("Ctrl+Shift+S"))));
    m_quitAction->setShortcut(QKeySequence::Quit);

    connect(m_newAction, &QAction::triggered, this, &XMainWindow::wizard);
    connect(m_saveAction, &QAction::triggered, this, &XMainWindow::save);
    connect(m_saveAsAction, &QAction::triggered, this, &XMainWindow::saveAs);
    connect(m_importAction, &QAction::triggered, this, &XMainWindow::importWorkspace);
    connect(m_exportAction, &QAction::triggered, this, &XMainWindow::exportWorkspace);
    connect(m_quitAction, &QAction::triggered, this, &QWidget::close);
    connect(m_aboutAction, &QAction::triggered, m_about.get(), &QMessageBox::exec);
    connect(m_aboutQtAction, &QAction::triggered, qApp, &QApplication::aboutQt);

    QMenu* file = menuBar->addMenu(tr("&File"));
    file->addAction(m_newAction);
    file->addAction(m_saveAction);
    file->addAction(m_saveAsAction);
    file->addAction(m_importAction);
    file->addAction(m_exportAction);
    file->addAction(m_quitAction);
    QMenu* help = menuBar->addMenu(tr("&Help"));
    help->addAction(m_aboutAction);
    help->addAction(m_aboutQtAction);
    setMenuBar(menuBar);
}

QWidget* XMainWindow::buildStartPage()
{
    auto* page = new QWidget(this);
    auto* grid = new QGridLayout(page);
    grid->setAlignment(Qt::AlignCenter);
    auto hint = [page](QString const& text, char const* name) {
        auto* label = new QLabel(text, page);
        label->setObjectName(QLatin1String(name));
        return label;
    };
    grid->addWidget(hint(tr("Open a file or create a new table"), "newHint"), 0, 0);
    grid->addWidget(m_newButton, 0, 1);
    grid->addWidget(hint(tr("Import an existing workspace"), "importHint"), 1, 0);
    grid->addWidget(m_importButton, 1, 1);
    grid->addWidget(hint(tr("Show an input file sample"), "sampleHint"), 2, 0);
    grid->addWidget(m_sampleButton, 2, 1);
    return page;
}

QWidget* XMainWindow::buildCorePage()
{
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    // The slider row, and under it the lines about the core it shows.
    auto* top = new QGridLayout;
    top->addWidget(m_slider, 0, 0);
    top->addWidget(m_sliderValue, 0, 1);
    auto* percent = new QLabel(QStringLiteral("%"), page);
    percent->setObjectName(QStringLiteral("percentSign"));
    top->addWidget(percent, 0, 2);
    top->addWidget(m_coverageLine, 1, 0, 1, 3);
    top->addWidget(m_runLine, 2, 0, 1, 3);
    top->setColumnStretch(0, 1);
    layout->addLayout(top);
    layout->addWidget(m_coreView);
    return page;
}

void XMainWindow::clearWorkspace(XWorkspace* workspace)
{
    if (m_workspace) {
        m_shown = nullptr;
        m_coreView->setCsv(nullptr);
        m_inputView->setCsv(nullptr);
        m_sourceView->setCsv(nullptr);
        m_report.reset();
        m_coverageLine->clear();
        m_runLine->clear();
        delete m_workspace;
        m_workspace = nullptr;
    }
    if (!workspace)
        return;

    m_workspace = workspace;
    for (int tab : {CoreTab, GraphTab, InputTab})
        m_tabs->setTabEnabled(tab, true);
    m_tabs->setCurrentIndex(CoreTab);
    m_report = std::make_unique<XCoreReport>(m_workspace);
    m_graph->showResult(m_workspace->result(), m_report->heldPerPercent());
    m_runLine->setText(m_report->runLine());
    m_inputView->setCsv(m_workspace->csv());
    if (m_workspace->src()) {
        m_sourceView->setCsv(m_workspace->src());
        m_tabs->setTabEnabled(SourceTab, true);
    } else {
        m_tabs->setTabEnabled(SourceTab, false);
    }

    int value = m_workspace->slider();
    if (value < 1 || value > 100)
        value = 100;
    m_slider->setValue(value);
    // setValue is silent when the value does not change; show the core anyway.
    update(value);

    m_exportAction->setEnabled(true);
    m_saveAction->setEnabled(true);
    m_saveAsAction->setEnabled(true);
}

void XMainWindow::update(int value)
{
    if (!m_workspace)
        return;
    XCsv* table = m_workspace->result() ? m_workspace->result()->csv(value) : nullptr;
    if (table && table != m_shown) {
        m_shown = table;
        // The starting collection's accessions lead every core table.
        m_coreView->setCsv(table, m_workspace->src() ? m_workspace->src()->rows() - 1 : 0);
    }
    m_workspace->setSlider(value);
    if (m_report)
        m_coverageLine->setText(m_report->coverageLine(value));
}

QString XMainWindow::coverageLine() const
{
    return m_coverageLine->text();
}

QString XMainWindow::runLine() const
{
    return m_runLine->text();
}

void XMainWindow::sample()
{
    XSample dialog(nullptr);
    centerResize(dialog, 0);
    dialog.exec();
}

void XMainWindow::wizard()
{
    if (m_pending)
        return;
    XWizard wizard(this);
    connect(&wizard, qOverload<XAnalysisRequest&>(&XWizard::finished), this,
            [this](XAnalysisRequest& request) { parseCsv(std::move(request)); });
    wizard.exec();
}

void XMainWindow::parseCsv(XAnalysisRequest request)
{
    if (m_pending)
        return;
    // The search needs accessions; a header row alone is refused here,
    // before a thread is started for nothing.
    if (!request.input || !TableRules::hasAccessions(*request.input)) {
        QMessageBox::critical(this, tr("Error"),
                              tr("The input table has no accessions: it needs at least one row "
                                 "below its header row."));
        return;
    }
    m_pending = std::make_unique<XAnalysisRequest>(std::move(request));
    m_runClock.start();
    XSearchRunner runner(m_pending->input.get(), m_pending->start.get(), m_pending->settings);
    // A clock seed is kept as the number it became, so the run can be repeated.
    m_pending->settings = runner.search().settings();
    runSearch(runner);
}

void XMainWindow::runSearch(XSearchRunner& runner)
{
    QProgressDialog progress(tr("Working..."), tr("Abort"), 1, 100, this);
    connect(&runner, &XSearchRunner::percentChanged, &progress, &QProgressDialog::setValue);
    connect(&runner, &XSearchRunner::searching, &progress, [&progress](int size, int accessions) {
        progress.setLabelText(
            tr("Working...\nSearching cores of %1 of %n accessions", nullptr, accessions)
                .arg(size));
    });
    connect(&runner, &XSearchRunner::error, &progress, &QWidget::close);
    connect(&runner, &XSearchRunner::finished, &progress, &QWidget::close);
    connect(&runner, &XSearchRunner::completed, this, &XMainWindow::csvParseSucceeded);
    connect(&runner, &XSearchRunner::error, this, &XMainWindow::csvParseFailed);
    connect(&progress, &QProgressDialog::canceled, this, &XMainWindow::csvParseCanceled);
    connect(&progress, &QProgressDialog::canceled, &runner, &XSearchRunner::stopIterating);
    runner.start();
    progress.exec();
    runner.wait();
    // The outcome was posted to this window before the thread ended: take it
    // now, so that no result is left queued for a window that may go first.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

void XMainWindow::csvParseSucceeded(XResult* result)
{
    // An abort that came in after the result was sent has taken the tables.
    if (!m_pending) {
        delete result;
        return;
    }
    const std::unique_ptr<XAnalysisRequest> done = std::move(m_pending);
    auto* workspace = new XWorkspace(done->input.release(), done->start.release(), result, nullptr);
    workspace->setInputs(done->files);
    workspace->setRun(done->settings, m_runClock.nsecsElapsed() / 1e9);
    clearWorkspace(workspace);
    m_file.made();
    setWindowTitle(m_file.windowTitle());
}

void XMainWindow::csvParseFailed(QString error)
{
    m_pending.reset();
    QMessageBox::critical(this, tr("Error"), error, QMessageBox::Ok, QMessageBox::NoButton);
}

void XMainWindow::csvParseCanceled()
{
    m_pending.reset();
}

bool XMainWindow::saveCurrent(QString const& fileName, QString* error) const
{
    return m_shown && XSpreadsheet::write(*m_shown, fileName, error);
}

void XMainWindow::reportWrite(bool written, QString const& done, QString const& fileName,
                              QString const& reason)
{
    statusBar()->showMessage(written ? done.arg(fileName)
                                     : tr("Could not write %1: %2").arg(fileName, reason),
                             statusTimeoutMs);
}

bool XMainWindow::refuseTarget(QString const& fileName, XCsv const* core)
{
    QString why = m_workspace->inputs().replacedBy(fileName);
    if (why.isEmpty() && core) {
        const QString tooLarge = XSpreadsheet::fitProblem(fileName, core->rows(), core->columns());
        if (!tooLarge.isEmpty())
            why = tr("The core collection cannot be saved as %1: %2.").arg(fileName, tooLarge);
    }
    if (why.isEmpty())
        return false;
    QMessageBox::critical(this, tr("Error"), why + QLatin1Char(' ') + tr("Nothing was written."));
    return true;
}

void XMainWindow::save()
{
    if (!m_workspace)
        return;
    const QString path = m_workspace->savePath();
    if (path.isEmpty()) {
        saveAs();
        return;
    }
    if (refuseTarget(path, m_shown))
        return;
    QString reason;
    const bool written = saveCurrent(path, &reason);
    reportWrite(written, tr("Core collection saved to %1"), path, reason);
}

void XMainWindow::saveAs()
{
    if (!m_workspace)
        return;
    QStringList filters;
    for (FileFormat const& format : fileFormats()) {
        if (format.saveFilter)
            filters << tr(format.saveFilter).arg(QStringLiteral("(*%1)").arg(format.suffix));
    }
    const QString name = XFileDialog::saveFileName(this, filters.join(QStringLiteral(";;")));
    if (name.isEmpty() || refuseTarget(name, m_shown))
        return;
    m_workspace->setSavePath(name);
    QString reason;
    const bool written = saveCurrent(name, &reason);
    reportWrite(written, tr("Core collection saved to %1"), name, reason);
}

void XMainWindow::exportWorkspace()
{
    if (!m_workspace)
        return;
    const QString name = XFileDialog::saveFileName(
        this, tr("Workspace files %1").arg(QStringLiteral("(*.ccw)")), tr("Export Workspace"));
    if (name.isEmpty() || refuseTarget(name, nullptr))
        return;
    QString reason;
    const bool written = XSaveFile::writeText(name, m_workspace->toString(), &reason);
    reportWrite(written, tr("Workspace exported to %1"), name, reason);
    if (written) {
        m_file.exported(name);
        setWindowTitle(m_file.windowTitle());
    }
}

void XMainWindow::importWorkspace()
{
    const QString name = XFileDialog::openFileName(
        this, tr("Workspace files %1").arg(QStringLiteral("(*.ccw)")), tr("Import Workspace"));
    if (name.isEmpty())
        return;
    XWorkspaceCheck::Reading reading = XWorkspaceCheck::read(name);
    if (!reading.unreadable.isEmpty()) {
        QMessageBox::critical(this, tr("Error"),
                              tr("The file %1 cannot be imported: %2. The analysis shown stays "
                                 "as it is.")
                                  .arg(name, reading.unreadable));
        return;
    }
    if (!reading.workspace) {
        QMessageBox::critical(this, tr("Error"),
                              tr("The file %1 is not a valid workspace file: %2. The analysis "
                                 "shown stays as it is.")
                                  .arg(name, reading.invalid));
        return;
    }
    XWorkspace* workspace = reading.workspace.release();
    clearWorkspace(workspace);
    m_file.imported(name);
    setWindowTitle(m_file.windowTitle());
    statusBar()->showMessage(tr("Imported %1").arg(name), statusTimeoutMs);
}

void XMainWindow::closeEvent(QCloseEvent* event)
{
    if (m_workspace && m_file.isUnexported()) {
        switch (XAnalysisFile::askBeforeQuit(this)) {
        case XAnalysisFile::ExportFirst:
            exportWorkspace();
            // A cancelled or failed export keeps the window open.
            if (m_file.isUnexported()) {
                event->ignore();
                return;
            }
            break;
        case XAnalysisFile::Discard:
            break;
        case XAnalysisFile::StayOpen:
            event->ignore();
            return;
        }
    }
    QMainWindow::closeEvent(event);
}
