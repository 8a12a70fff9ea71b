// .xls workbooks through the reading function of the workbook reader
// program, so that coverage reaches the workbook library and the cell
// mapping.

#include "FuzzWorkbook.h"
#include "XWorkbookParser.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzzworkbook::initialize("input.xls");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    return fuzzworkbook::testOneInput(data, size, &XWorkbookParser::parse);
}
