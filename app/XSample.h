#pragma once

#include <QDialog>

class QPushButton;

// Shows what an input file looks like in each format that has a sample
// (FileFormats.def): as comma-separated text and as a spreadsheet.
class XSample : public QDialog
{
    Q_OBJECT

public:
    explicit XSample(QWidget* parent = nullptr);

private:
    QPushButton* m_close;
};
