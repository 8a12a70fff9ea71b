// .ods spreadsheets through the reading function of the workbook reader
// program: the zip limits, repeated rows and columns and the cell mapping.

#include "FuzzWorkbook.h"
#include "XOdsParser.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzzworkbook::initialize("input.ods");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    return fuzzworkbook::testOneInput(data, size, &XOdsParser::parse);
}
