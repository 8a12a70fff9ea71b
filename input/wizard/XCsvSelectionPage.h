#pragma once

#include "EditedTable.h"

#include <QStringList>
#include <QWizardPage>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class XCsv;

// Reads the input table and, optionally, a starting collection from files,
// and lets the user repair them in the table editor. Owns both tables until
// the wizard hands them on.
class XCsvSelectionPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit XCsvSelectionPage(QWidget* parent = nullptr);
    ~XCsvSelectionPage() override;

    int nextId() const override;
    void initializePage() override;
    bool isComplete() const override;

    XCsv* csv() const { return m_csv.table(); }
    XCsv* src() const { return m_src.table(); }
    // Hand the tables over: the page forgets them without deleting them.
    XCsv* takeCsv();
    XCsv* takeSrc();
    // The files the tables were last read from; empty for none.
    QString csvFile() const;
    QString srcFile() const;

    // Reads a table by suffix; on failure shows why and returns null.
    // *notes receives what the reader says about a table it read.
    XCsv* parseFile(QString const& fileName, QStringList* notes = nullptr) const;

public slots:
    void csvBrowseButtonClicked();
    void csvEditButtonClicked();
    void srcCheckboxToggled(bool checked);
    void srcBrowseButtonClicked();
    void srcEditButtonClicked();

private:
    // Checks both tables again and shows what is wrong before Finish.
    void refresh();
    void switchSrcSection(bool const& on);
    // Asks for a file and reads it; null when cancelled or unreadable.
    XCsv* browse(QString& fileName, QStringList* notes);

    EditedTable m_csv;
    EditedTable m_src;
    QLineEdit* m_csvFile;
    QPushButton* m_csvBrowse;
    QLabel* m_csvStatus;
    QPushButton* m_csvEdit;
    QLabel* m_csvNote;
    QCheckBox* m_srcCheckbox;
    QLineEdit* m_srcFile;
    QPushButton* m_srcBrowse;
    QLabel* m_srcStatus;
    QPushButton* m_srcEdit;
    QLabel* m_srcNote;
    // What blocks Next, found by refresh(); empty when nothing does.
    QString m_csvProblem;
    QString m_srcProblem;
    QStringList m_csvReadNotes;
    QStringList m_srcReadNotes;
};
