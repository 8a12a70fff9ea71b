#include "XOdsParser.h"

#include "XSheetCells.h"
#include "XZipArchive.h"
#include "XmlRoot.h"

#include <QLocale>
#include <QXmlStreamReader>

namespace {

const QLatin1String tableNs("urn:oasis:names:tc:opendocument:xmlns:table:1.0");
const QLatin1String officeNs("urn:oasis:names:tc:opendocument:xmlns:office:1.0");
const QLatin1String textNs("urn:oasis:names:tc:opendocument:xmlns:text:1.0");
const QLatin1String manifestNs("urn:oasis:names:tc:opendocument:xmlns:manifest:1.0");

bool isElement(QXmlStreamReader const& xml, QLatin1String const& ns, char const* name)
{
    return xml.namespaceUri() == ns && xml.name() == QLatin1String(name);
}

// A repetition count; absent or nonsense counts once. Counts past the
// largest worksheet are cut there, which is enough to report them.
qint64 repeat(QXmlStreamAttributes const& a, char const* name)
{
    bool ok = false;
    const qint64 n = a.value(tableNs, QLatin1String(name)).toLongLong(&ok);
    if (!ok || n < 1)
        return 1;
    return qMin<qint64>(n, XWorkbookContent::maxRows + 1);
}

// Whether the manifest says that the content is encrypted (a password).
bool contentIsEncrypted(QByteArray const& manifest)
{
    QXmlStreamReader xml(manifest);
    if (!readXmlRoot(xml))
        return false;
    bool inContent = false;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && isElement(xml, manifestNs, "file-entry"))
            inContent = false;
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (isElement(xml, manifestNs, "file-entry"))
            inContent = xml.attributes().value(manifestNs, QLatin1String("full-path")) ==
                        QLatin1String("content.xml");
        else if (inContent && isElement(xml, manifestNs, "encryption-data"))
            return true;
    }
    return false;
}

// The text of a cell: its paragraphs one per line, with the spaces, tabs
// and line breaks written as elements; notes attached to the cell are not
// part of it. Text that would pass what a cell holds is not made: a count
// of spaces is weighed before a space is added, and *overLong is set.
QString cellText(QXmlStreamReader& xml, bool* overLong)
{
    QString text;
    *overLong = false;
    // Whether `more` characters still fit in the cell.
    auto fits = [&text, overLong](qint64 more) {
        if (!*overLong && text.size() + more > XWorkbookContent::maxCellText)
            *overLong = true;
        return !*overLong;
    };
    int paragraphs = 0;
    int depth = 1;
    int paragraph = 0; // the depth inside the paragraph being read, or 0
    while (depth > 0 && !xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (isElement(xml, officeNs, "annotation")) {
                xml.skipCurrentElement();
                break;
            }
            ++depth;
            if (paragraph == 0 && (isElement(xml, textNs, "p") || isElement(xml, textNs, "h"))) {
                if (paragraphs++ > 0 && fits(1))
                    text += QLatin1Char('\n');
                paragraph = depth;
            } else if (paragraph > 0 && isElement(xml, textNs, "s")) {
                bool ok = false;
                const qint64 n = xml.attributes().value(textNs, QLatin1String("c")).toLongLong(&ok);
                const qint64 spaces = ok && n > 0 ? n : 1;
                if (fits(spaces))
                    text += QString(int(spaces), QLatin1Char(' '));
            } else if (paragraph > 0 && isElement(xml, textNs, "tab")) {
                if (fits(1))
                    text += QLatin1Char('\t');
            } else if (paragraph > 0 && isElement(xml, textNs, "line-break")) {
                if (fits(1))
                    text += QLatin1Char('\n');
            }
            break;
        case QXmlStreamReader::EndElement:
            if (depth == paragraph)
                paragraph = 0;
            --depth;
            break;
        case QXmlStreamReader::Characters:
            if (paragraph > 0 && fits(xml.text().size()))
                text += xml.text();
            break;
        default:
            break;
        }
    }
    return *overLong ? QString() : text;
}

// The value of a cell as the table holds it; an invalid variant for a
// value that is no allele. The reader ends past the cell. *overLong is set
// for a string cell whose text passes what a cell holds.
QVariant cellValue(QXmlStreamReader& xml, bool* overLong)
{
    const QXmlStreamAttributes a = xml.attributes();
    const QStringRef type = a.value(officeNs, QLatin1String("value-type"));
    const bool number = type == QLatin1String("float") || type == QLatin1String("percentage") ||
                        type == QLatin1String("currency");
    const QStringRef stringValue = a.value(officeNs, QLatin1String("string-value"));
    bool textOverLong = false;
    const QString text = cellText(xml, &textOverLong);
    *overLong = false;
    if (type.isEmpty())
        return QString(QLatin1String(""));
    if (type == QLatin1String("string")) {
        if (!stringValue.isNull())
            return stringValue.toString();
        *overLong = textOverLong;
        return text;
    }
    if (!number)
        return QVariant(); // date, time, boolean
    // A number without its value is a formula never computed, as in .xlsx.
    const QStringRef saved = a.value(officeNs, QLatin1String("value"));
    if (saved.isEmpty())
        return QString(QLatin1String(""));
    bool ok = false;
    const double value = QLocale::c().toDouble(saved, &ok);
    return ok ? XSheetCells::numberCell(value) : QVariant();
}

class Reading
{
public:
    explicit Reading(QString const& fileName) : m_zip(fileName) {}
    XWorkbookContent run();

private:
    bool table(QXmlStreamReader& xml, XSheetCells& cells);
    bool row(QXmlStreamReader& xml, qint64 at, qint64 rows, XSheetCells& cells);

    bool fail(XWorkbookContent::Code code, qint64 row = 0, qint64 column = 0)
    {
        m_failure.code = code;
        m_failure.row = qint32(qMin<qint64>(row, XWorkbookContent::maxRows + 1));
        m_failure.column = qint32(qMin<qint64>(column, XWorkbookContent::maxColumns + 1));
        return false;
    }

    XZipArchive m_zip;
    XWorkbookContent m_failure;
};

bool Reading::row(QXmlStreamReader& xml, qint64 at, qint64 rows, XSheetCells& cells)
{
    qint64 column = 0;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement)
            return true; // the row's own end: cells are read whole
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (!isElement(xml, tableNs, "table-cell") &&
            !isElement(xml, tableNs, "covered-table-cell")) {
            xml.skipCurrentElement();
            continue;
        }
        const qint64 columns = repeat(xml.attributes(), "number-columns-repeated");
        bool overLong = false;
        const QVariant value = cellValue(xml, &overLong);
        if (overLong)
            return fail(XWorkbookContent::LongCell, at, column);
        const bool empty =
            value.isValid() && value.userType() == QMetaType::QString && value.toString().isEmpty();
        // Empty runs only move on: a row of empty cells repeated to the
        // last column of the sheet is usual and costs nothing.
        if (!empty && !cells.add(at, column, value, rows, columns)) {
            m_failure = cells.refusal();
            return false;
        }
        column = qMin<qint64>(column + columns, XWorkbookContent::maxColumns + 1);
    }
    return false;
}

bool Reading::table(QXmlStreamReader& xml, XSheetCells& cells)
{
    qint64 at = 0;
    int depth = 1;
    while (depth > 0 && !xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement) {
            if (isElement(xml, tableNs, "table-row")) {
                const qint64 rows = repeat(xml.attributes(), "number-rows-repeated");
                if (!row(xml, at, rows, cells))
                    return xml.hasError() ? fail(XWorkbookContent::Unreadable) : false;
                at = qMin<qint64>(at + rows, XWorkbookContent::maxRows + 1);
            } else if (isElement(xml, tableNs, "table-row-group") ||
                       isElement(xml, tableNs, "table-header-rows") ||
                       isElement(xml, tableNs, "table-rows")) {
                ++depth; // rows inside groups count in order
            } else {
                xml.skipCurrentElement();
            }
        }
    }
    return !xml.hasError() || fail(XWorkbookContent::Unreadable);
}

XWorkbookContent Reading::run()
{
    if (!m_zip.isOpen()) {
        m_failure.code = m_zip.openFailure();
        return m_failure;
    }
    QByteArray manifest;
    if (m_zip.read(QStringLiteral("META-INF/manifest.xml"), &manifest) ==
            XZipArchive::Status::Read &&
        contentIsEncrypted(manifest)) {
        m_failure.code = XWorkbookContent::Encrypted;
        return m_failure;
    }
    QByteArray content;
    switch (m_zip.read(QStringLiteral("content.xml"), &content)) {
    case XZipArchive::Status::Read:
        break;
    case XZipArchive::Status::Encrypted:
        m_failure.code = XWorkbookContent::Encrypted;
        return m_failure;
    case XZipArchive::Status::Oversized:
        m_failure.code = XWorkbookContent::OversizedPart;
        return m_failure;
    case XZipArchive::Status::Missing:
        // A zip archive without spreadsheet content is some other kind of
        // file.
        m_failure.code = XWorkbookContent::NotWorkbook;
        return m_failure;
    case XZipArchive::Status::Broken:
        return m_failure;
    }
    QXmlStreamReader xml(content);
    if (!readXmlRoot(xml))
        return m_failure;
    XSheetCells cells;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && isElement(xml, tableNs, "table")) {
            if (!table(xml, cells))
                return m_failure;
            return cells.content();
        }
    }
    if (xml.hasError())
        return m_failure;
    m_failure.code = XWorkbookContent::NoWorksheet;
    return m_failure;
}

} // namespace

XWorkbookContent XOdsParser::parse(QString const& fileName)
{
    Reading reading(fileName);
    return reading.run();
}
