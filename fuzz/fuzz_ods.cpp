// .ods spreadsheets through the reading function of the workbook reader
// program: the zip limits, repeated rows and columns and the cell mapping.
// An input that is not a zip archive is content.xml, then optionally the
// manifest, separated by "<!--part-->".

#include "FuzzArchive.h"
#include "XOdsParser.h"

namespace {

const char* const manifest =
    "<manifest:manifest "
    "xmlns:manifest=\"urn:oasis:names:tc:opendocument:xmlns:manifest:1.0\">"
    "<manifest:file-entry manifest:full-path=\"/\" "
    "manifest:media-type=\"application/vnd.oasis.opendocument.spreadsheet\"/>"
    "<manifest:file-entry manifest:full-path=\"content.xml\" "
    "manifest:media-type=\"text/xml\"/></manifest:manifest>";

fuzzworkbook::Entries frame(QList<QByteArray> const& parts)
{
    return {{QStringLiteral("mimetype"), "application/vnd.oasis.opendocument.spreadsheet"},
            {QStringLiteral("META-INF/manifest.xml"),
             parts.size() > 1 ? parts.at(1) : QByteArray(manifest)},
            {QStringLiteral("content.xml"), parts.value(0)}};
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzzworkbook::initialize("input.ods");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    return fuzzworkbook::testZippedInput(data, size, &XOdsParser::parse, &frame);
}
