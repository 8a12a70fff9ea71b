// Writes the seeded tables of bench/scale to files.
// Usage: scale_tables ssr ACCESSIONS FILE.csv [SEED]
//        scale_tables snp ACCESSIONS SNPS FILE.csv|FILE.vcf.gz [SEED]
#include "ScaleTables.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    QTextStream err(stderr);
    const QString usage = QStringLiteral("usage: scale_tables ssr ACCESSIONS FILE.csv [SEED]\n"
                                         "       scale_tables snp ACCESSIONS SNPS "
                                         "FILE.csv|FILE.vcf.gz [SEED]\n");
    QString error;
    bool ok = false;
    if (args.value(1) == QLatin1String("ssr") && (args.size() == 4 || args.size() == 5)) {
        const int n = args.value(2).toInt();
        const uint32_t seed = args.size() == 5 ? args.value(4).toUInt() : 1;
        ScaleTables::Ssr ssr;
        ok = n > 0 && ssr.load(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"), &error) &&
             ScaleTables::writeSsrCsv(ssr, n, seed, args.value(3), &error);
    } else if (args.value(1) == QLatin1String("snp") && (args.size() == 5 || args.size() == 6)) {
        const int n = args.value(2).toInt();
        const int m = args.value(3).toInt();
        const QString path = args.value(4);
        const uint32_t seed = args.size() == 6 ? args.value(5).toUInt() : 1;
        if (n > 0 && m > 0) {
            ok = path.endsWith(QLatin1String(".vcf.gz"))
                     ? ScaleTables::writeSnpVcf(n, m, seed, path, &error)
                     : ScaleTables::writeSnpCsv(n, m, seed, path, &error);
        }
    } else {
        err << usage;
        return 2;
    }
    if (!ok) {
        err << (error.isEmpty() ? usage : error + QLatin1Char('\n'));
        return 1;
    }
    return 0;
}
