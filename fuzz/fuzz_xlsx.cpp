// .xlsx workbooks through the reading function of the workbook reader
// program: the zip limits, the XML parts and the cell mapping. An input
// that is not a zip archive is the worksheet, then optionally the shared
// strings, the styles and the workbook part, separated by "<!--part-->".

#include "FuzzArchive.h"
#include "XXlsxParser.h"

namespace {

const char* const contentTypes =
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"/>";
const char* const packageRelationships =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" Target=\"xl/workbook.xml\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
    "officeDocument\"/></Relationships>";
const char* const workbook =
    "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
    "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
    "<sheets><sheet name=\"T\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>";
const char* const workbookRelationships =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" Target=\"worksheets/sheet1.xml\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\"/>"
    "<Relationship Id=\"rId2\" Target=\"sharedStrings.xml\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
    "sharedStrings\"/>"
    "<Relationship Id=\"rId3\" Target=\"styles.xml\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles\"/>"
    "</Relationships>";

fuzzworkbook::Entries frame(QList<QByteArray> const& parts)
{
    auto part = [&parts](int i, char const* otherwise) {
        return i < parts.size() ? parts.at(i) : QByteArray(otherwise);
    };
    return {{QStringLiteral("[Content_Types].xml"), contentTypes},
            {QStringLiteral("_rels/.rels"), packageRelationships},
            {QStringLiteral("xl/workbook.xml"), part(3, workbook)},
            {QStringLiteral("xl/_rels/workbook.xml.rels"), workbookRelationships},
            {QStringLiteral("xl/worksheets/sheet1.xml"), parts.value(0)},
            {QStringLiteral("xl/sharedStrings.xml"), part(1, "<sst/>")},
            {QStringLiteral("xl/styles.xml"), part(2, "<styleSheet/>")}};
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzzworkbook::initialize("input.xlsx");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    return fuzzworkbook::testZippedInput(data, size, &XXlsxParser::parse, &frame);
}
