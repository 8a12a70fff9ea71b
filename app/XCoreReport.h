#pragma once

#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QVector>

class XCsv;
class XWorkspace;

// What the window says about the cores of one workspace: the alleles each
// core table really holds, recounted the way the engine reads them (the
// search's own count can be higher than what its core holds), and the
// coverage and run lines. Recounts once per core table.
class XCoreReport
{
    Q_DECLARE_TR_FUNCTIONS(XCoreReport)

public:
    // The workspace must outlive this report; null gives empty lines.
    explicit XCoreReport(XWorkspace* workspace = nullptr);

    // Distinct alleles of the input and the starting collection together.
    int total() const { return m_total; }
    // Alleles the core of slider value 1..100 holds; -1 when unknown.
    int held(int const& percent);
    // held() for each slider value 1..100, in order.
    QVector<int> heldPerPercent();

    QString coverageLine(int const& percent);
    QString runLine() const;

    // A share of the alleles as the lines write it: one decimal, none when
    // it is whole ("85.5", "100"), with the decimal mark of the locale.
    static QString percentText(int const& part, int const& whole);

private:
    // "1 accession", "27 accessions".
    static QString accessions(int const& count);

    XWorkspace* m_workspace;
    int m_total = -1;
    QHash<XCsv const*, int> m_held;
};
