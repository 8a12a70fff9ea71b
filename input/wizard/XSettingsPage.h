#pragma once

#include <QWizardPage>

class QSpinBox;

// The search's settings: attempts per core size and the random seed.
class XSettingsPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit XSettingsPage(QWidget* parent = nullptr);
    int nextId() const override { return -1; }
    void initializePage() override;

private:
    QSpinBox* m_iterations;
    QSpinBox* m_seed;
};
