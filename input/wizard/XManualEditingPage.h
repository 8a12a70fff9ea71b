#pragma once

#include "EditedTable.h"

#include <QWizardPage>

class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class XCsv;

// Builds an input table of a chosen size, every data cell holding the fill
// text, and opens it in the table editor.
class XManualEditingPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit XManualEditingPage(QWidget* parent = nullptr);
    ~XManualEditingPage() override;

    int nextId() const override;
    void initializePage() override;
    bool isComplete() const override;

    XCsv* csv() const { return m_csv.table(); }
    // Hands the table over: the page forgets it without deleting it.
    XCsv* takeCsv();

public slots:
    void createButtonClicked();
    void editButtonClicked();

private:
    void switchState(bool const& hasErrors);

    EditedTable m_csv;
    QSpinBox* m_rows;
    QSpinBox* m_columns;
    QLineEdit* m_fill;
    QLabel* m_hint;
    QPushButton* m_create;
    QLabel* m_status;
    QPushButton* m_edit;
};
