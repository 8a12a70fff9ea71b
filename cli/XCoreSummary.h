#pragma once

#include <QString>

class XResult;

// The command line's summary of a result: one line per distinct core with
// the percentages it serves, its accessions (starting collection included),
// the alleles the search reports and the alleles its accessions hold,
// recounted from the tables; then the total and the seed.
class XCoreSummary
{
public:
    static QString text(XResult& result, int const& total, int const& seed);
};
