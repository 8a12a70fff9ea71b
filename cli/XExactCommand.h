#pragma once

#include <QCoreApplication>
#include <QString>

#include <memory>

class XCsv;
class XResult;

// vireon-cli's exact search: runs it, prints its summary (or the result's
// text form), writes the core of one percentage and the workspace. The
// summary adds, per core, "minimal" or the lower bound "≥ B" (in accessions,
// starting collection included), then the alleles and the (marker, 0) pairs
// left out of them, and a last line with the entries proven and the time.
class XExactCommand
{
    Q_DECLARE_TR_FUNCTIONS(XExactCommand)

public:
    struct Options
    {
        int budget = 60;
        int percent = 100;
        bool printResult = false;
        bool progress = false;
        QString output;
        QString workspace;
    };

    // Exit status as vireon-cli's: 0, 1 when the engine or a write failed.
    static int run(std::unique_ptr<XCsv> input, std::unique_ptr<XCsv> source,
                   Options const& options);

    static QString summary(XResult& result, int const& total, int const& zeroPairs,
                           double const& seconds);
};
