#pragma once

#include "XCsv.h"

#include <QString>

#include <cstdint>

// Seeded tables in the shape of a genebank's, for benchmarks and tests at
// scale. Every cell is a pure function of (seed, row, column), so a table can
// be written accession by accession (allele tables) or site by site (VCF)
// without ever holding it, and two writers of one table agree cell for cell.
namespace ScaleTables {

// Tall microsatellite tables: 30 markers (60 allele columns) named as in
// microbov, each column's alleles drawn from microbov's frequencies for that
// column; 1 % of cells hold a rare allele of their own (found nowhere else in
// the table), 2 % are missing.
class Ssr
{
public:
    // `microbov`: the path of microbov.csv, whose column frequencies are used.
    // False (with *error) when it cannot be read.
    bool load(QString const& microbov, QString* error);
    int alleleColumns() const { return int(m_markers.size()); }
    QString const& marker(int column) const { return m_markers.at(column); }
    // The allele of accession `row` (0-based) in allele column `column`
    // (0-based); 0 for missing.
    int allele(uint32_t seed, int row, int column) const;
    XCsv::Grid grid(int accessions, uint32_t seed) const;

private:
    QStringList m_markers;
    // Per column, the cumulative counts of its alleles and the alleles.
    QList<QList<int>> m_cumulative;
    QList<QList<int>> m_values;
};

// Wide biallelic SNP tables, diploid: per SNP a minor-allele frequency drawn
// from Beta(0.5, 2) scaled to 0.5; each copy is the minor allele with that
// probability. A genotype is missing (both copies) with probability 2 %.
// Alleles are numbered as a VCF's are read: REF (major) 1, ALT 2.
namespace Snp {
double minorFrequency(uint32_t seed, int snp);
// The two copies of accession `row` at SNP `snp`, ascending; 0 0 for missing.
void genotype(uint32_t seed, int row, int snp, double maf, int* first, int* second);
QString name(int snp);
XCsv::Grid grid(int accessions, int snps, uint32_t seed);
} // namespace Snp

// The accession names the tables use: ACC1, ACC2, ...
QString accession(int row);

// Writes a table as comma-separated text, a row at a time; "*" for missing.
bool writeSsrCsv(Ssr const& ssr, int accessions, uint32_t seed, QString const& path,
                 QString* error);
bool writeSnpCsv(int accessions, int snps, uint32_t seed, QString const& path, QString* error);
// Writes the SNP table as a bgzip-compressed VCF 4.2, a site at a time: one
// chromosome "1", positions 1000, 2000, ..., IDs as the table's marker names,
// REF A, ALT G, GT only, unphased; missing genotypes "./.".
bool writeSnpVcf(int accessions, int snps, uint32_t seed, QString const& path, QString* error);

} // namespace ScaleTables
