#include "XWorkbookContent.h"

#include <QDataStream>

namespace {

const quint32 openingMagic = 0x56584c53; // "VXLS"
const quint32 closingMagic = 0x454e4421; // "END!"
const qint32 version = 2;
const quint8 intTag = 'i';
const quint8 textTag = 's';

} // namespace

QByteArray XWorkbookContent::encode() const
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_5_15);
    const qint32 rows = code == Read ? qint32(grid.size()) : 0;
    const qint32 columns = rows > 0 ? qint32(grid.first().size()) : 0;
    out << openingMagic << version << qint32(code) << row << column << rows << columns;
    for (int r = 0; r < rows; ++r) {
        for (QVariant const& cell : grid.at(r)) {
            if (cell.userType() == QMetaType::Int)
                out << intTag << qint32(cell.toInt());
            else
                out << textTag << cell.toString();
        }
    }
    out << closingMagic;
    return bytes;
}

bool XWorkbookContent::decode(QByteArray const& bytes, XWorkbookContent& content)
{
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_5_15);
    quint32 magic = 0;
    qint32 frameVersion = 0, code = 0, rows = 0, columns = 0;
    content = XWorkbookContent();
    in >> magic >> frameVersion >> code >> content.row >> content.column >> rows >> columns;
    if (in.status() != QDataStream::Ok || magic != openingMagic || frameVersion != version ||
        code < Read || code > TooMuchText || rows < 0 || columns < 0 || rows > maxRows ||
        columns > maxColumns || qint64(rows) * columns > maxCells ||
        (rows == 0) != (columns == 0) || (code != Read && rows != 0))
        return false;
    content.code = Code(code);
    content.grid.reserve(rows);
    qint64 characters = 0;
    for (int r = 0; r < rows; ++r) {
        XCsv::Row row;
        row.reserve(columns);
        for (int c = 0; c < columns; ++c) {
            quint8 tag = 0;
            in >> tag;
            if (tag == intTag) {
                qint32 value = 0;
                in >> value;
                row << int(value);
            } else if (tag == textTag) {
                QString text;
                in >> text;
                characters += text.size();
                if (text.size() > maxCellText || characters > maxTextCharacters)
                    return false;
                // A null string would read back as a different cell.
                row << (text.isNull() ? QString(QLatin1String("")) : text);
            } else {
                return false;
            }
            if (in.status() != QDataStream::Ok)
                return false;
        }
        content.grid << row;
    }
    in >> magic;
    return in.status() == QDataStream::Ok && magic == closingMagic && in.atEnd() &&
           (content.code != Read || rows > 0);
}
