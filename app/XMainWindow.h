#pragma once

#include "XAnalysisFile.h"
#include "XAnalysisRequest.h"

#include <QElapsedTimer>
#include <QMainWindow>

#include <memory>

class QAction;
class QLabel;
class QMessageBox;
class QPushButton;
class QSlider;
class QTabWidget;
class XCsv;
class XCoreReport;
class XCsvTableWidget;
class XGraphWidget;
class XResult;
class XSearchRunner;
class XWorkspace;

// The application shell: menus, the start page, and the tabs that show the
// current analysis. It coordinates: the wizard collects the input, the
// engine computes, the workspace holds the result, the views show it.
class XMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    enum Tab { StartTab = 0, CoreTab = 1, GraphTab = 2, InputTab = 3, SourceTab = 4 };

    explicit XMainWindow(QWidget* parent = nullptr);
    ~XMainWindow() override;

    // Shows a workspace and takes ownership of it; the previous one is deleted.
    void clearWorkspace(XWorkspace* workspace);
    // Writes the core collection now shown; returns whether it was written,
    // and if not sets *error to the reason.
    bool saveCurrent(QString const& fileName, QString* error = nullptr) const;

    XWorkspace* workspace() const { return m_workspace; }
    XCsv* shownCore() const { return m_shown; }
    // The two lines under the slider: the shown core's coverage, and the run.
    QString coverageLine() const;
    QString runLine() const;

    // Runs the search the request asks for under the progress dialog, and
    // shows the result in a new workspace that takes the request's tables.
    // Ignored while a run is under way.
    void parseCsv(XAnalysisRequest request);

public slots:
    void sample();
    void wizard();
    void csvParseSucceeded(XResult* result);
    void csvParseFailed(QString error);
    void csvParseCanceled();
    void save();
    void saveAs();
    void importWorkspace();
    void exportWorkspace();
    void update(int value);

protected:
    // Asks before an analysis that was never exported is lost.
    void closeEvent(QCloseEvent* event) override;

private:
    // The actions' keys and connections, and the File and Help menus.
    void buildMenus();
    QWidget* buildStartPage();
    QWidget* buildCorePage();
    // Runs the search under the progress dialog until it ends.
    void runSearch(XSearchRunner& runner);
    void reportWrite(bool written, QString const& done, QString const& fileName,
                     QString const& reason);
    // Says in a message box why a save or export to fileName is refused
    // before anything is written, and returns true then: it would replace a
    // file the analysis reads, or the core does not fit the file's format.
    bool refuseTarget(QString const& fileName, XCsv const* core);

    QAction* m_newAction;
    QAction* m_saveAction;
    QAction* m_saveAsAction;
    QAction* m_importAction;
    QAction* m_exportAction;
    QAction* m_quitAction;
    QAction* m_aboutAction;
    QAction* m_aboutQtAction;
    std::unique_ptr<QMessageBox> m_about;
    QTabWidget* m_tabs;
    QPushButton* m_newButton;
    QPushButton* m_importButton;
    QPushButton* m_sampleButton;
    QSlider* m_slider;
    QLabel* m_sliderValue;
    QLabel* m_coverageLine;
    QLabel* m_runLine;
    XCsvTableWidget* m_coreView;
    XGraphWidget* m_graph;
    XCsvTableWidget* m_inputView;
    XCsvTableWidget* m_sourceView;
    XCsv* m_shown = nullptr;
    XWorkspace* m_workspace = nullptr;
    std::unique_ptr<XCoreReport> m_report;
    // The analysis whose search is under way: set from the start of a run
    // until its outcome is known.
    std::unique_ptr<XAnalysisRequest> m_pending;
    QElapsedTimer m_runClock;
    XAnalysisFile m_file;
};
