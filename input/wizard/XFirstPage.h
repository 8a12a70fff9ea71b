#pragma once

#include <QWizardPage>

class QRadioButton;

// Chooses between reading the input table from a file and building it by hand.
class XFirstPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit XFirstPage(QWidget* parent = nullptr);
    int nextId() const override;

private:
    QRadioButton* m_file;
    QRadioButton* m_manual;
};
