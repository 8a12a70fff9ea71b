// vireon-workbook-reader FILE: reads one workbook (.xls, .xlsx or .ods, told by
// the name) and writes what it holds on standard output in the framed form
// of XWorkbookContent. The programs
// start it for every workbook they open, so that a file that crashes,
// stalls or exhausts the workbook library ends this process only. They
// also have it die with them (XWorkbookReader).
#include "FileFormats.h"
#include "XOdsParser.h"
#include "XWorkbookParser.h"
#include "XXlsxParser.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <cstdio>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// The parser of a format read here; null for one read in process.
XWorkbookContent (*parserOf(WorkbookKind kind))(QString const&)
{
    switch (kind) {
#define VIREON_FILE_FORMAT(id, suffix, parser, ...)                                                \
    case WorkbookKind::id:                                                                         \
        return parser;
#include "FileFormats.def"
#undef VIREON_FILE_FORMAT
    case WorkbookKind::None:
        break;
    }
    return nullptr;
}

void limit(int resource, rlim_t soft, rlim_t hard)
{
    const rlimit value{soft, hard};
    setrlimit(resource, &value);
}

} // namespace

int main(int argc, char** argv)
{
    // Its crashes on damaged files are expected and reported by the
    // programs: a core file would only litter the user's folder.
    limit(RLIMIT_CORE, 0, 0);
    // A time limit of its own, a little past the one the programs keep, for
    // a reader whose program no longer waits: a stalled read ends by the
    // alarm, a spinning one by the processor time.
    const unsigned ownLimit = XWorkbookContent::readingSeconds + 5;
    alarm(ownLimit);
    limit(RLIMIT_CPU, ownLimit, ownLimit + 5);
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::fputs("usage: vireon-workbook-reader FILE\n", stderr);
        return 2;
    }
#ifndef VIREON_SANITIZED
    // A damaged file must not make the library take all memory; an
    // address-space cap would break the sanitizers' shadow memory.
    limit(RLIMIT_AS, rlim_t(8) << 30, rlim_t(8) << 30);
#endif
    const QString fileName = arguments.at(1);
    // A name no workbook format claims is handed to the .xls parser, which
    // refuses what is not an .xls workbook.
    auto parse = parserOf(workbookKind(fileName));
    const XWorkbookContent content = parse ? parse(fileName) : XWorkbookParser::parse(fileName);
    const QByteArray frame = content.encode();
    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly) || out.write(frame) != frame.size() || !out.flush())
        return 1;
    return 0;
}
