#include "XXlsxParser.h"

#include "XSheetCells.h"
#include "XZipArchive.h"
#include "XmlRoot.h"

#include <QDir>
#include <QHash>
#include <QLocale>
#include <QVector>
#include <QXmlStreamReader>

namespace {

struct Relationship
{
    QString id;
    QString type;
    QString target;
};

// The part that a relationship target names, from the part that holds it.
QString partPath(QString const& source, QString const& target)
{
    if (target.startsWith(QLatin1Char('/')))
        return QDir::cleanPath(target.mid(1));
    const int slash = source.lastIndexOf(QLatin1Char('/'));
    return QDir::cleanPath(source.left(slash + 1) + target);
}

// Where the relationships of a part are kept: "xl/workbook.xml" has
// "xl/_rels/workbook.xml.rels"; the package's own are "_rels/.rels".
QString relationshipsPath(QString const& part)
{
    const int slash = part.lastIndexOf(QLatin1Char('/'));
    return part.left(slash + 1) + QStringLiteral("_rels/") + part.mid(slash + 1) +
           QStringLiteral(".rels");
}

bool endsType(Relationship const& r, char const* type)
{
    return r.type.endsWith(QLatin1Char('/') + QLatin1String(type));
}

// A password-protected .xlsx is not a zip but a compound document that
// holds the encrypted package.
bool isEncryptedPackage(QByteArray const& file)
{
    static const QByteArray compoundMagic("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
    if (!file.startsWith(compoundMagic))
        return false;
    QByteArray name;
    for (char c : QByteArray("EncryptedPackage"))
        name.append(c).append('\0');
    return file.contains(name);
}

// The zero-based row and column of a reference such as "AB12"; false when
// it is not one. Numbers past the largest worksheet are kept (as the limit
// plus one) so that the caller can report them.
bool cellReference(QStringRef ref, qint64* row, qint64* column)
{
    int i = 0;
    qint64 c = 0;
    while (i < ref.size() && ref.at(i).isUpper() && ref.at(i).unicode() < 128) {
        c = qMin<qint64>(c * 26 + (ref.at(i).unicode() - 'A' + 1),
                         XWorkbookContent::maxColumns + 1);
        ++i;
    }
    qint64 r = 0;
    const int digits = i;
    while (i < ref.size() && ref.at(i).isDigit() && ref.at(i).unicode() < 128) {
        r = qMin<qint64>(r * 10 + (ref.at(i).unicode() - '0'), XWorkbookContent::maxRows + 1);
        ++i;
    }
    if (digits == 0 || i == digits || i != ref.size() || r == 0)
        return false;
    *row = r - 1;
    *column = c - 1;
    return true;
}

const QVector<int> builtInDateFormats = {14, 15, 16, 17, 18, 19, 20, 21, 22, 27, 28, 29, 30, 31,
                                         32, 33, 34, 35, 36, 45, 46, 47, 50, 51, 52, 53, 54, 55,
                                         56, 57, 58, 71, 72, 73, 74, 75, 76, 77, 78, 79, 80, 81};

class Reading
{
public:
    explicit Reading(QString const& fileName) : m_zip(fileName) {}

    XWorkbookContent run();

private:
    // Unpacks a part; a missing part fails with ifMissing, or is empty when
    // that is Read.
    bool part(QString const& name, QByteArray* bytes,
              XWorkbookContent::Code ifMissing = XWorkbookContent::Unreadable);
    bool relationships(QString const& part, QList<Relationship>* out);
    bool firstWorksheet(QString const& workbook, QString* sheet);
    bool sharedStrings(QString const& name);
    bool styles(QString const& name);
    bool sheet(QString const& name, XSheetCells& cells);
    bool cell(QXmlStreamReader& xml, qint64 row, qint64& column, XSheetCells& cells);
    QString text(QXmlStreamReader& xml);

    bool fail(XWorkbookContent::Code code, qint64 row = 0, qint64 column = 0)
    {
        m_failure.code = code;
        m_failure.row = qint32(qMin<qint64>(row, XWorkbookContent::maxRows + 1));
        m_failure.column = qint32(qMin<qint64>(column, XWorkbookContent::maxColumns + 1));
        return false;
    }

    XZipArchive m_zip;
    XWorkbookContent m_failure;
    QVector<QString> m_strings;
    QVector<bool> m_dateStyles;
};

bool Reading::part(QString const& name, QByteArray* bytes, XWorkbookContent::Code ifMissing)
{
    switch (m_zip.read(name, bytes)) {
    case XZipArchive::Status::Read:
        return true;
    case XZipArchive::Status::Missing:
        return ifMissing == XWorkbookContent::Read || fail(ifMissing);
    case XZipArchive::Status::Encrypted:
        return fail(XWorkbookContent::Encrypted);
    case XZipArchive::Status::Oversized:
        return fail(XWorkbookContent::OversizedPart);
    case XZipArchive::Status::Broken:
        break;
    }
    return fail(XWorkbookContent::Unreadable);
}

bool Reading::relationships(QString const& source, QList<Relationship>* out)
{
    QByteArray bytes;
    if (!part(relationshipsPath(source), &bytes, XWorkbookContent::Read))
        return false;
    if (bytes.isEmpty())
        return true;
    QXmlStreamReader xml(bytes);
    if (!readXmlRoot(xml))
        return fail(XWorkbookContent::Unreadable);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement ||
            xml.name() != QLatin1String("Relationship"))
            continue;
        const QXmlStreamAttributes a = xml.attributes();
        if (a.value(QLatin1String("TargetMode")) == QLatin1String("External"))
            continue;
        *out << Relationship{a.value(QLatin1String("Id")).toString(),
                             a.value(QLatin1String("Type")).toString(),
                             partPath(source, a.value(QLatin1String("Target")).toString())};
    }
    return !xml.hasError() || fail(XWorkbookContent::Unreadable);
}

bool Reading::firstWorksheet(QString const& workbook, QString* sheet)
{
    QByteArray bytes;
    QList<Relationship> links;
    // A zip archive without a workbook is some other kind of file.
    if (!part(workbook, &bytes, XWorkbookContent::NotWorkbook) || !relationships(workbook, &links))
        return false;
    // Only the first list of strings and of styles counts: a damaged file
    // that named one part a thousand times would unpack it a thousand times.
    QHash<QString, QString> worksheets;
    bool stringsRead = false;
    bool stylesRead = false;
    for (Relationship const& link : links) {
        if (endsType(link, "worksheet")) {
            worksheets.insert(link.id, link.target);
        } else if (!stringsRead && endsType(link, "sharedStrings")) {
            if (!sharedStrings(link.target))
                return false;
            stringsRead = true;
        } else if (!stylesRead && endsType(link, "styles")) {
            if (!styles(link.target))
                return false;
            stylesRead = true;
        }
    }
    QXmlStreamReader xml(bytes);
    if (!readXmlRoot(xml))
        return fail(XWorkbookContent::Unreadable);
    // Chart sheets come in the same list; the first worksheet is the table.
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement ||
            xml.name() != QLatin1String("sheet"))
            continue;
        for (QXmlStreamAttribute const& a : xml.attributes()) {
            if (a.name() == QLatin1String("id") && !a.namespaceUri().isEmpty() &&
                worksheets.contains(a.value().toString())) {
                *sheet = worksheets.value(a.value().toString());
                return true;
            }
        }
    }
    return fail(xml.hasError() ? XWorkbookContent::Unreadable : XWorkbookContent::NoWorksheet);
}

// The text of a shared or inline string: its runs in order, without the
// phonetic guides some East Asian texts carry.
QString Reading::text(QXmlStreamReader& xml)
{
    const QString element = xml.name().toString();
    QString text;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && xml.name() == element)
            break;
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("t"))
            text += xml.readElementText();
        else if (xml.name() == QLatin1String("rPh"))
            xml.skipCurrentElement();
    }
    return text;
}

bool Reading::sharedStrings(QString const& name)
{
    QByteArray bytes;
    if (!part(name, &bytes))
        return false;
    QXmlStreamReader xml(bytes);
    if (!readXmlRoot(xml))
        return fail(XWorkbookContent::Unreadable);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("si"))
            m_strings << text(xml);
    }
    return !xml.hasError() || fail(XWorkbookContent::Unreadable);
}

bool Reading::styles(QString const& name)
{
    QByteArray bytes;
    if (!part(name, &bytes))
        return false;
    QXmlStreamReader xml(bytes);
    if (!readXmlRoot(xml))
        return fail(XWorkbookContent::Unreadable);
    QHash<int, bool> customDates;
    bool inCellFormats = false;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && xml.name() == QLatin1String("cellXfs"))
            inCellFormats = false;
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes a = xml.attributes();
        const int id = a.value(QLatin1String("numFmtId")).toInt();
        if (xml.name() == QLatin1String("numFmt"))
            customDates.insert(
                id, XXlsxParser::isDateFormat(id, a.value(QLatin1String("formatCode")).toString()));
        else if (xml.name() == QLatin1String("cellXfs"))
            inCellFormats = true;
        else if (inCellFormats && xml.name() == QLatin1String("xf"))
            m_dateStyles << customDates.value(id, XXlsxParser::isDateFormat(id, QString()));
    }
    return !xml.hasError() || fail(XWorkbookContent::Unreadable);
}

bool Reading::cell(QXmlStreamReader& xml, qint64 row, qint64& column, XSheetCells& cells)
{
    const QXmlStreamAttributes a = xml.attributes();
    const QStringRef reference = a.value(QLatin1String("r"));
    qint64 at = row;
    if (reference.isEmpty())
        ++column;
    else if (!cellReference(reference, &at, &column))
        return fail(XWorkbookContent::Unreadable);
    const QString type = a.value(QLatin1String("t")).toString();
    const int style = a.value(QLatin1String("s")).toInt();
    QString saved;
    bool hasValue = false;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && xml.name() == QLatin1String("c"))
            break;
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("v")) {
            saved = xml.readElementText();
            hasValue = true;
        } else if (xml.name() == QLatin1String("is")) {
            saved = text(xml);
            hasValue = true;
        } else {
            xml.skipCurrentElement();
        }
    }
    if (xml.hasError())
        return fail(XWorkbookContent::Unreadable);
    if (at >= XWorkbookContent::maxRows || column >= XWorkbookContent::maxColumns)
        return fail(XWorkbookContent::TooLarge, at + 1, column + 1);

    QVariant value = QString(QLatin1String(""));
    if (!hasValue || saved.isEmpty()) {
        // An empty cell, or a formula whose value was never saved (some
        // writers save it as an empty value).
    } else if (type == QLatin1String("s")) {
        bool ok = false;
        const int index = saved.toInt(&ok);
        if (!ok || index < 0 || index >= m_strings.size())
            return fail(XWorkbookContent::Unreadable);
        value = m_strings.at(index);
    } else if (type == QLatin1String("inlineStr") || type == QLatin1String("str")) {
        value = saved;
    } else if (type.isEmpty() || type == QLatin1String("n")) {
        bool ok = false;
        const double number = QLocale::c().toDouble(saved.trimmed(), &ok);
        if (!ok)
            return fail(XWorkbookContent::Unreadable);
        const bool date = style >= 0 && style < m_dateStyles.size() && m_dateStyles.at(style);
        value = date ? QVariant() : XSheetCells::numberCell(number);
    } else {
        // Truth values, errors and ISO dates are no alleles.
        value = QVariant();
    }
    if (!cells.add(at, column, value)) {
        m_failure = cells.refusal();
        return false;
    }
    return true;
}

bool Reading::sheet(QString const& name, XSheetCells& cells)
{
    QByteArray bytes;
    if (!part(name, &bytes))
        return false;
    QXmlStreamReader xml(bytes);
    if (!readXmlRoot(xml))
        return fail(XWorkbookContent::Unreadable);
    if (xml.name() != QLatin1String("worksheet"))
        return fail(XWorkbookContent::NoWorksheet);
    qint64 row = -1;
    qint64 column = -1;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("row")) {
            const QStringRef number = xml.attributes().value(QLatin1String("r"));
            if (number.isEmpty()) {
                ++row;
            } else {
                bool ok = false;
                row = number.toLongLong(&ok) - 1;
                if (!ok || row < 0)
                    return fail(XWorkbookContent::Unreadable);
            }
            column = -1;
        } else if (xml.name() == QLatin1String("c")) {
            if (!cell(xml, qMax<qint64>(row, 0), column, cells))
                return false;
        }
    }
    return !xml.hasError() || fail(XWorkbookContent::Unreadable);
}

XWorkbookContent Reading::run()
{
    if (!m_zip.isOpen()) {
        m_failure.code =
            isEncryptedPackage(m_zip.bytes()) ? XWorkbookContent::Encrypted : m_zip.openFailure();
        return m_failure;
    }
    QList<Relationship> package;
    if (!relationships(QString(), &package))
        return m_failure;
    QString workbook = QStringLiteral("xl/workbook.xml");
    for (Relationship const& link : package) {
        if (endsType(link, "officeDocument"))
            workbook = link.target;
    }
    QString name;
    XSheetCells cells;
    if (!firstWorksheet(workbook, &name) || !sheet(name, cells))
        return m_failure;
    return cells.content();
}

} // namespace

bool XXlsxParser::isDateFormat(int id, QString const& code)
{
    if (builtInDateFormats.contains(id))
        return true;
    for (int i = 0; i < code.size(); ++i) {
        const QChar c = code.at(i).toLower();
        if (c == QLatin1Char('"')) {
            const int close = code.indexOf(QLatin1Char('"'), i + 1);
            i = close < 0 ? code.size() : close;
        } else if (c == QLatin1Char('\\') || c == QLatin1Char('_') || c == QLatin1Char('*')) {
            ++i; // the next character is shown as it is, or pads
        } else if (c == QLatin1Char('[')) {
            const int close = code.indexOf(QLatin1Char(']'), i + 1);
            const QString inside = code.mid(i + 1, close < 0 ? -1 : close - i - 1).toLower();
            // [h], [mm], [ss]: elapsed time; [Red], [$-409]: colours, locales.
            if (!inside.isEmpty() && inside.count(inside.at(0)) == inside.size() &&
                QStringLiteral("hms").contains(inside.at(0)))
                return true;
            i = close < 0 ? code.size() : close;
        } else if (QStringLiteral("ymdhs").contains(c)) {
            return true;
        }
    }
    return false;
}

XWorkbookContent XXlsxParser::parse(QString const& fileName)
{
    Reading reading(fileName);
    return reading.run();
}
