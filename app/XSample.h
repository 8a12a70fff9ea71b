#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

// Shows what an input file looks like, as comma-separated text and as a
// spreadsheet.
class XSample : public QDialog
{
    Q_OBJECT

public:
    explicit XSample(QWidget* parent = nullptr);

private:
    QLabel* m_csvPicture;
    QLabel* m_excelPicture;
    QPushButton* m_close;
};
