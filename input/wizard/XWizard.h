#pragma once

#include "XAnalysisRequest.h"

#include <QWizard>

class XCsvSelectionPage;
class XManualEditingPage;

// Collects an analysis: the input table (from a file or built by hand), an
// optional starting collection, the search and its settings. On acceptance
// it hands them over as one request in finished(XAnalysisRequest&).
class XWizard : public QWizard
{
    Q_OBJECT

public:
    enum PageId { FirstPage = 0, SelectionPage = 1, ManualPage = 2, SettingsPage = 3 };

    explicit XWizard(QWidget* parent = nullptr);

signals:
    // Emitted once on acceptance. The receiver, connected directly, takes
    // the tables by moving the request; whatever it leaves in it is deleted
    // when the signal returns.
    void finished(XAnalysisRequest& request);

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
