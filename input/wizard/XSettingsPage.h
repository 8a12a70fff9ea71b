#pragma once

#include <QWizardPage>

class QRadioButton;
class QSpinBox;

// The search's settings: which search, attempts per core size and the random
// seed for the reproducible one, the time budget for the exact one.
class XSettingsPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit XSettingsPage(QWidget* parent = nullptr);
    int nextId() const override { return -1; }
    void initializePage() override;

private:
    // Each search enables only the settings that it reads.
    void searchToggled();

    QSpinBox* m_iterations;
    QSpinBox* m_seed;
    QRadioButton* m_reproducible;
    QRadioButton* m_exact;
    QSpinBox* m_budget;
};
