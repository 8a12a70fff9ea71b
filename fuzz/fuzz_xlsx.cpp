// .xlsx workbooks through the reading function of the workbook reader
// program: the zip limits, the XML parts and the cell mapping.

#include "FuzzWorkbook.h"
#include "XXlsxParser.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzzworkbook::initialize("input.xlsx");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    return fuzzworkbook::testOneInput(data, size, &XXlsxParser::parse);
}
