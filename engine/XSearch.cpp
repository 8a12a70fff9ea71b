#include "XSearch.h"

#include "XCore.h"
#include "XExactCore.h"

XSearch::~XSearch() = default;

std::unique_ptr<XSearch> XSearch::create(XCsv const* input, XCsv const* start,
                                         XSearchSettings const& settings)
{
    switch (settings.kind) {
    case XSearchKind::Exact:
        return std::make_unique<XExactCore>(input, start, settings.budgetSeconds);
    case XSearchKind::Reproducible:
        break;
    }
    auto core = std::make_unique<XCore>(input, start, settings.iterations, settings.seed);
    core->setThreadCount(settings.threads);
    return core;
}

void XSearch::stop()
{
    stopping();
    m_stop.store(true);
}

QString XSearch::invalidValueMessage()
{
    return XCore::tr("Invalid value in csv.");
}

qint64 XSearch::target(int percent, int total)
{
    return static_cast<qint64>(static_cast<long double>(percent) * 0.01 * total * 100000.0);
}

int XSearch::leastCoverage(int percent, int total)
{
    return int((target(percent, total) + 99999) / 100000);
}
