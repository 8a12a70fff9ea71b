#include "XAnalysisRequest.h"

#include "XCsv.h"

XSearchSettings XSearchSettings::reproducible(int iterations, int seed)
{
    XSearchSettings settings;
    settings.kind = XSearchKind::Reproducible;
    settings.iterations = iterations;
    settings.seed = seed;
    return settings;
}

XSearchSettings XSearchSettings::exact(int budgetSeconds)
{
    XSearchSettings settings;
    settings.kind = XSearchKind::Exact;
    settings.budgetSeconds = budgetSeconds;
    return settings;
}

XAnalysisRequest::XAnalysisRequest() = default;

XAnalysisRequest::XAnalysisRequest(XCsv* input_, XCsv* start_, XSearchSettings const& settings_)
    : input(input_), start(start_), settings(settings_)
{
}

XAnalysisRequest::XAnalysisRequest(XAnalysisRequest&&) noexcept = default;
XAnalysisRequest& XAnalysisRequest::operator=(XAnalysisRequest&&) noexcept = default;
XAnalysisRequest::~XAnalysisRequest() = default;
