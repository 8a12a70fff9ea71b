#pragma once

#include <QWizard>

class XCsv;
class XCsvSelectionPage;
class XManualEditingPage;

// Collects an analysis: the input table (from a file or built by hand), an
// optional starting collection, the search, iterations and seed. On
// acceptance searchChosen() tells the search, then the tables pass to
// whoever receives finished(XCsv*, XCsv*, int, int).
class XWizard : public QWizard
{
    Q_OBJECT

public:
    enum PageId { FirstPage = 0, SelectionPage = 1, ManualPage = 2, SettingsPage = 3 };

    explicit XWizard(QWidget* parent = nullptr);

signals:
    // Emitted on acceptance just before finished(XCsv*, XCsv*, int, int):
    // whether the exact search was chosen, and its time budget in seconds.
    void searchChosen(bool exact, int budgetSeconds);
    // Emitted on acceptance just before finished(XCsv*, XCsv*, int, int):
    // the files the two tables were read from (empty for a table built by
    // hand or no starting collection), which no output may replace.
    void filesChosen(QString const& inputFile, QString const& startFile);
    void finished(XCsv* csv, XCsv* src, int iterations, int seed);

public slots:
    void finished(int result);
    // Cancel, Escape and the window's close button: asks before tables a
    // user has loaded, built or repaired are thrown away.
    void reject() override;

private:
    bool holdsTables() const;

    XCsvSelectionPage* m_selection;
    XManualEditingPage* m_manual;
};
