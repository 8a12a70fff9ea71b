#pragma once

#include "XAnalysisRequest.h"

#include <QCoreApplication>
#include <QString>

// vireon-cli's search, either kind: runs it with a progress bar, prints its
// summary (or the result's text form), writes the core of one percentage and
// the workspace.
class XSearchCommand
{
    Q_DECLARE_TR_FUNCTIONS(XSearchCommand)

public:
    struct Options
    {
        int percent = 100;
        bool printResult = false;
        bool progress = false;
        QString output;
        QString workspace;
    };

    // Exit status as vireon-cli's: 0, 1 when the search or a write failed.
    static int run(XAnalysisRequest request, Options const& options);
};
