#include "ScaleTables.h"

#include "XCellValue.h"

#include <QFile>
#include <QMap>

#include <htslib/bgzf.h>

#include <cmath>
#include <cstdio>
#include <string>

namespace ScaleTables {
namespace {

uint64_t mix(uint64_t x)
{
    x += 0x9e3779b97f4a7c15ull;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ull;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebull;
    return x ^ (x >> 31);
}

// A random 64-bit word for one cell and one purpose.
uint64_t word(uint32_t seed, uint64_t a, uint64_t b, uint64_t purpose)
{
    return mix(mix(mix(uint64_t(seed) ^ (purpose << 56)) ^ a) ^ (b * 0x632be59bd9b4e019ull));
}

// Uniform in [0, 1).
double uniform(uint64_t w)
{
    return double(w >> 11) * (1.0 / 9007199254740992.0);
}

// Uniform in (0, 1].
double positive(uint64_t w)
{
    return 1.0 - uniform(w);
}

} // namespace

QString accession(int row)
{
    return QStringLiteral("ACC%1").arg(row + 1);
}

bool Ssr::load(QString const& microbov, QString* error)
{
    XCsv table(microbov);
    if (table.rows() < 2 || table.columns() < 2) {
        *error = QStringLiteral("%1: not a table of accessions").arg(microbov);
        return false;
    }
    m_markers = table.headers().mid(1);
    m_cumulative.clear();
    m_values.clear();
    for (int c = 1; c < table.columns(); ++c) {
        QMap<int, int> counts;
        for (int r = 1; r < table.rows(); ++r) {
            bool ok = false;
            const int value = XCellValue::alleleNumber(table.at(r, c), &ok);
            if (ok)
                ++counts[value];
        }
        QList<int> cumulative;
        QList<int> values;
        int sum = 0;
        for (auto it = counts.constBegin(); it != counts.constEnd(); ++it) {
            sum += it.value();
            cumulative << sum;
            values << it.key();
        }
        if (values.isEmpty()) {
            *error = QStringLiteral("%1: column %2 holds no allele").arg(microbov).arg(c);
            return false;
        }
        m_cumulative << cumulative;
        m_values << values;
    }
    return true;
}

int Ssr::allele(uint32_t seed, int row, int column) const
{
    const uint64_t w = word(seed, uint64_t(row), uint64_t(column), 1);
    const unsigned hundredth = unsigned(w % 10000); // in units of 0.01 %
    if (hundredth < 200)
        return 0;
    if (hundredth < 300) // a value no other cell of the column can hold
        return 10000 + 2 * row + (column % 2);
    QList<int> const& cumulative = m_cumulative.at(column);
    const int pick = int((w >> 16) % uint64_t(cumulative.last()));
    const int at =
        int(std::upper_bound(cumulative.begin(), cumulative.end(), pick) - cumulative.begin());
    return m_values.at(column).at(at);
}

XCsv::Grid Ssr::grid(int accessions, uint32_t seed) const
{
    XCsv::Grid grid;
    XCsv::Row header{QStringLiteral("Name")};
    for (QString const& m : m_markers)
        header << m;
    grid << header;
    for (int r = 0; r < accessions; ++r) {
        XCsv::Row row{accession(r)};
        for (int c = 0; c < alleleColumns(); ++c) {
            const int a = allele(seed, r, c);
            row << (a == 0 ? QVariant(XCellValue::missingMark()) : QVariant(a));
        }
        grid << row;
    }
    return grid;
}

namespace Snp {

double minorFrequency(uint32_t seed, int snp)
{
    // Beta(0.5, 2) as X / (X + Y): X ~ Gamma(0.5) is half a squared normal,
    // Y ~ Gamma(2) the sum of two exponentials.
    const double u1 = positive(word(seed, uint64_t(snp), 0, 2));
    const double u2 = uniform(word(seed, uint64_t(snp), 1, 2));
    const double z = std::sqrt(-2.0 * std::log(u1)) * std::cos(2.0 * M_PI * u2);
    const double x = 0.5 * z * z;
    const double y = -std::log(positive(word(seed, uint64_t(snp), 2, 2))) -
                     std::log(positive(word(seed, uint64_t(snp), 3, 2)));
    const double beta = x + y > 0 ? x / (x + y) : 0.0;
    return 0.5 * beta;
}

void genotype(uint32_t seed, int row, int snp, double maf, int* first, int* second)
{
    const uint64_t w = word(seed, uint64_t(row), uint64_t(snp), 3);
    if (w % 100 < 2) {
        *first = *second = 0;
        return;
    }
    const int a = uniform(mix(w)) < maf ? 2 : 1;
    const int b = uniform(mix(w ^ 0x5bd1e995ull)) < maf ? 2 : 1;
    *first = std::min(a, b);
    *second = std::max(a, b);
}

QString name(int snp)
{
    return QStringLiteral("SNP%1").arg(snp + 1);
}

XCsv::Grid grid(int accessions, int snps, uint32_t seed)
{
    std::vector<double> maf(size_t(std::max(0, snps)));
    for (int s = 0; s < snps; ++s)
        maf[size_t(s)] = minorFrequency(seed, s);
    XCsv::Grid grid;
    XCsv::Row header{QStringLiteral("Name")};
    for (int s = 0; s < snps; ++s)
        header << name(s) << name(s);
    grid << header;
    for (int r = 0; r < accessions; ++r) {
        XCsv::Row row{accession(r)};
        for (int s = 0; s < snps; ++s) {
            int a = 0;
            int b = 0;
            genotype(seed, r, s, maf[size_t(s)], &a, &b);
            for (int v : {a, b})
                row << (v == 0 ? QVariant(XCellValue::missingMark()) : QVariant(v));
        }
        grid << row;
    }
    return grid;
}

} // namespace Snp

namespace {

// Buffered writing of plain text, with the failure reported once.
class TextOut
{
public:
    explicit TextOut(QString const& path) : m_file(path) {}
    bool open(QString* error)
    {
        if (m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return true;
        *error = QStringLiteral("%1: %2").arg(m_file.fileName(), m_file.errorString());
        return false;
    }
    void add(std::string const& text)
    {
        m_buffer += text;
        if (m_buffer.size() > (1u << 20))
            flush();
    }
    void flush()
    {
        if (m_file.write(m_buffer.data(), qint64(m_buffer.size())) != qint64(m_buffer.size()))
            m_failed = true;
        m_buffer.clear();
    }
    bool close(QString* error)
    {
        flush();
        m_file.close();
        if (!m_failed && m_file.error() == QFileDevice::NoError)
            return true;
        *error = QStringLiteral("%1: %2").arg(m_file.fileName(), m_file.errorString());
        return false;
    }

private:
    QFile m_file;
    std::string m_buffer;
    bool m_failed = false;
};

void addCell(std::string& line, int value)
{
    line += ',';
    if (value == 0)
        line += '*';
    else
        line += std::to_string(value);
}

} // namespace

bool writeSsrCsv(Ssr const& ssr, int accessions, uint32_t seed, QString const& path, QString* error)
{
    TextOut out(path);
    if (!out.open(error))
        return false;
    std::string line = "Name";
    for (int c = 0; c < ssr.alleleColumns(); ++c)
        line += ',' + ssr.marker(c).toStdString();
    out.add(line + '\n');
    for (int r = 0; r < accessions; ++r) {
        line = accession(r).toStdString();
        for (int c = 0; c < ssr.alleleColumns(); ++c)
            addCell(line, ssr.allele(seed, r, c));
        out.add(line + '\n');
    }
    return out.close(error);
}

bool writeSnpCsv(int accessions, int snps, uint32_t seed, QString const& path, QString* error)
{
    TextOut out(path);
    if (!out.open(error))
        return false;
    std::vector<double> maf(size_t(std::max(0, snps)));
    std::string line = "Name";
    for (int s = 0; s < snps; ++s) {
        maf[size_t(s)] = Snp::minorFrequency(seed, s);
        const std::string n = Snp::name(s).toStdString();
        line += ',' + n + ',' + n;
    }
    out.add(line + '\n');
    for (int r = 0; r < accessions; ++r) {
        line = accession(r).toStdString();
        for (int s = 0; s < snps; ++s) {
            int a = 0;
            int b = 0;
            Snp::genotype(seed, r, s, maf[size_t(s)], &a, &b);
            addCell(line, a);
            addCell(line, b);
        }
        out.add(line + '\n');
    }
    return out.close(error);
}

bool writeSnpVcf(int accessions, int snps, uint32_t seed, QString const& path, QString* error)
{
    BGZF* out = bgzf_open(QFile::encodeName(path).constData(), "w");
    if (!out) {
        *error = QStringLiteral("%1: cannot be written").arg(path);
        return false;
    }
    bool ok = true;
    auto write = [&](std::string const& text) {
        if (ok && bgzf_write(out, text.data(), text.size()) != ssize_t(text.size()))
            ok = false;
    };
    std::string line = "##fileformat=VCFv4.2\n##contig=<ID=1>\n"
                       "##FORMAT=<ID=GT,Number=1,Type=String,Description=\"Genotype\">\n"
                       "#CHROM\tPOS\tID\tREF\tALT\tQUAL\tFILTER\tINFO\tFORMAT";
    for (int r = 0; r < accessions; ++r)
        line += '\t' + accession(r).toStdString();
    write(line + '\n');
    for (int s = 0; s < snps && ok; ++s) {
        const double maf = Snp::minorFrequency(seed, s);
        line = "1\t" + std::to_string(1000 * (s + 1)) + '\t' + Snp::name(s).toStdString() +
               "\tA\tG\t.\tPASS\t.\tGT";
        for (int r = 0; r < accessions; ++r) {
            int a = 0;
            int b = 0;
            Snp::genotype(seed, r, s, maf, &a, &b);
            if (a == 0)
                line += "\t./.";
            else {
                line += '\t';
                line += char('0' + a - 1);
                line += '/';
                line += char('0' + b - 1);
            }
        }
        write(line + '\n');
    }
    if (bgzf_close(out) != 0)
        ok = false;
    if (!ok)
        *error = QStringLiteral("%1: writing failed").arg(path);
    return ok;
}

} // namespace ScaleTables
