#include "XCompoundFileCheck.h"

#include <QFile>
#include <QVector>

#include <cstring>

namespace {

const unsigned char magic[8] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
const quint32 lastRegularSector = 0xFFFFFFF9;
const int entrySize = 128;
const int nameLengthOffset = 0x40;
const int typeOffset = 0x42;
const int streamSizeOffset = 0x78;
const int maxNameLength = 64;
const uchar streamType = 2;
const uchar rootType = 5;

class Bytes
{
public:
    Bytes(uchar const* data, qint64 size) : m_data(data), m_size(size) {}
    qint64 size() const { return m_size; }
    bool has(qint64 offset, qint64 length) const
    {
        return offset >= 0 && length >= 0 && offset <= m_size - length;
    }
    quint16 u16(qint64 offset) const { return quint16(m_data[offset] | m_data[offset + 1] << 8); }
    quint32 u32(qint64 offset) const
    {
        return quint32(m_data[offset]) | quint32(m_data[offset + 1]) << 8 |
               quint32(m_data[offset + 2]) << 16 | quint32(m_data[offset + 3]) << 24;
    }

private:
    uchar const* m_data;
    qint64 m_size;
};

// The sectors that hold the allocation table: 109 listed in the header, the
// rest in a chain of extra sectors whose last slot points to the next one.
bool fatSectors(Bytes const& bytes, int sectorSize, QVector<quint32>& sectors)
{
    const quint32 count = bytes.u32(0x2C);
    const qint64 totalSectors = bytes.size() / sectorSize;
    if (count > totalSectors)
        return false;
    for (int i = 0; i < 109 && quint32(sectors.size()) < count; ++i)
        sectors << bytes.u32(0x4C + 4 * i);
    quint32 next = bytes.u32(0x44);
    const int perSector = sectorSize / 4 - 1;
    for (qint64 steps = 0; quint32(sectors.size()) < count; ++steps) {
        const qint64 offset = (qint64(next) + 1) * sectorSize;
        if (next > lastRegularSector || steps > totalSectors || !bytes.has(offset, sectorSize))
            return false;
        for (int i = 0; i < perSector && quint32(sectors.size()) < count; ++i)
            sectors << bytes.u32(offset + 4 * i);
        next = bytes.u32(offset + 4 * perSector);
    }
    return true;
}

} // namespace

bool XCompoundFileCheck::directoryIsSound(QString const& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return true;
    const qint64 size = file.size();
    uchar const* data = size >= 512 ? file.map(0, size) : nullptr;
    if (!data || std::memcmp(data, magic, sizeof magic) != 0)
        return true;
    const Bytes bytes(data, size);

    const quint16 shift = bytes.u16(0x1E);
    if (shift != 9 && shift != 12)
        return false;
    const int sectorSize = 1 << shift;
    QVector<quint32> fat;
    if (!fatSectors(bytes, sectorSize, fat))
        return false;
    const quint32 perFatSector = quint32(sectorSize / 4);

    const qint64 totalSectors = size / sectorSize + 1;
    // Every workbook has a directory; FreeXL would take a missing one to
    // start at the header.
    quint32 sector = bytes.u32(0x30);
    if (sector > lastRegularSector)
        return false;
    for (qint64 steps = 0; sector <= lastRegularSector; ++steps) {
        const qint64 offset = (qint64(sector) + 1) * sectorSize;
        if (steps > totalSectors || !bytes.has(offset, 0) || offset == size)
            return false;
        // A last sector cut short by the end of the file keeps its whole entries.
        for (qint64 entry = offset; entry < offset + sectorSize && bytes.has(entry, entrySize);
             entry += entrySize) {
            if (bytes.u16(entry + nameLengthOffset) > maxNameLength)
                return false;
            // A stream cannot be larger than the file that holds it; FreeXL
            // would follow a looping chain until it had read that much.
            const uchar type = data[entry + typeOffset];
            if ((type == streamType || type == rootType) &&
                bytes.u32(entry + streamSizeOffset) > quint64(size))
                return false;
        }
        const quint32 fatIndex = sector / perFatSector;
        if (fatIndex >= quint32(fat.size()))
            return false;
        const qint64 fatOffset =
            (qint64(fat.at(int(fatIndex))) + 1) * sectorSize + 4 * qint64(sector % perFatSector);
        if (fat.at(int(fatIndex)) > lastRegularSector || !bytes.has(fatOffset, 4))
            return false;
        sector = bytes.u32(fatOffset);
    }
    return true;
}
