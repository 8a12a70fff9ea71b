#include "XWorkbookReader.h"

#include "WorkbookKind.h"
#include "XCsv.h"
#include "XWorkbookContent.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <atomic>

namespace {

std::atomic<int> readingLimit{30000};

// Starting a program takes milliseconds; this only bounds a stuck exec.
const int startLimitMs = 10000;

// Runs the reader on one file and returns what it wrote, or sets `started`
// / `finished` false when it could not start or did not end well.
QByteArray runReader(QString const& fileName, bool& started, bool& finished)
{
    QProcess process;
    // Its diagnostics (a sanitizer report, say) belong in our own.
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(XWorkbookReader::program(), {fileName}, QIODevice::ReadOnly);
    started = process.waitForStarted(startLimitMs);
    finished = false;
    if (!started) {
        process.kill();
        process.waitForFinished(-1);
        return QByteArray();
    }
    process.closeWriteChannel();
    const int limit = XWorkbookReader::readingLimitMs();
    if (QCoreApplication::instance()) {
        // Waiting in an event loop keeps windows painted; user input stays
        // queued, so nothing can start another action meanwhile.
        QEventLoop loop;
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        QObject::connect(&process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &loop,
                         &QEventLoop::quit);
        timer.start(limit);
        if (process.state() != QProcess::NotRunning)
            loop.exec(QEventLoop::ExcludeUserInputEvents);
    } else {
        process.waitForFinished(limit);
    }
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished(-1);
        return QByteArray();
    }
    finished = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return process.readAllStandardOutput();
}

} // namespace

QString XWorkbookReader::program()
{
    const QString name = QStringLiteral("vireon-workbook-reader");
    const QByteArray chosen = qgetenv("VIREON_WORKBOOK_READER");
    if (!chosen.isEmpty())
        return QFile::decodeName(chosen);
    if (QCoreApplication::instance()) {
        const QString installed =
            QDir(QCoreApplication::applicationDirPath())
                .filePath(QStringLiteral(VIREON_WORKBOOK_READER_FROM_BINDIR "/") + name);
        if (QFileInfo(installed).isExecutable())
            return QDir::cleanPath(installed);
    }
    return QStringLiteral(VIREON_WORKBOOK_READER_BUILT);
}

int XWorkbookReader::readingLimitMs()
{
    return readingLimit.load();
}

void XWorkbookReader::setReadingLimitMs(int ms)
{
    readingLimit.store(ms);
}

namespace {

QString tr(char const* text)
{
    return QCoreApplication::translate("XSpreadsheet", text);
}

} // namespace

QString XWorkbookReader::parseErrorMessage(int row, int column, QString const& suffix)
{
    return tr("Error while parsing the %3 file: cell at row %1 and column %2 does not appear to "
              "be a valid string or number.")
        .arg(row)
        .arg(column)
        .arg(suffix);
}

QString XWorkbookReader::unreadableMessage(QString const& suffix)
{
    return tr("Error while parsing the %1 file: the file cannot be read as a workbook.")
        .arg(suffix);
}

QString XWorkbookReader::encryptedMessage(QString const& suffix)
{
    return tr("Error while parsing the %1 file: the workbook is protected by a password.")
        .arg(suffix);
}

QString XWorkbookReader::noWorksheetMessage(QString const& suffix)
{
    return tr("Error while parsing the %1 file: the workbook has no worksheet.").arg(suffix);
}

QString XWorkbookReader::sparseSheetMessage(int rows, int columns, QString const& suffix)
{
    return tr("Error while parsing the %3 file: the first worksheet reaches row %1 and column "
              "%2, but fewer than one cell in a hundred of that holds something. Copy the table "
              "to a new worksheet.")
        .arg(rows)
        .arg(columns)
        .arg(suffix);
}

QString XWorkbookReader::tooLargeMessage(int rows, int columns, QString const& suffix)
{
    return tr("Error while parsing the %3 file: the first worksheet reaches row %1 and column "
              "%2, more cells than Vireon reads.")
        .arg(rows)
        .arg(columns)
        .arg(suffix);
}

QString XWorkbookReader::oversizedPartMessage(QString const& suffix)
{
    return tr("Error while parsing the %1 file: a part of the workbook would unpack to more than "
              "%2 MB; it was not unpacked.")
        .arg(suffix)
        .arg(XWorkbookContent::maxPartBytes / (1024 * 1024));
}

QString XWorkbookReader::emptyFileMessage(QString const& suffix)
{
    return tr("Error while parsing the %1 file: the file is empty.").arg(suffix);
}

QString XWorkbookReader::notWorkbookMessage(QString const& suffix)
{
    return tr("Error while parsing the %1 file: the file is not a %1 workbook but another kind of "
              "file.")
        .arg(suffix);
}

QString XWorkbookReader::emptyWorksheetMessage(QString const& suffix)
{
    return tr("Error while parsing the %1 file: the first worksheet is empty.").arg(suffix);
}

QString XWorkbookReader::readerNotStartedMessage(QString const& suffix)
{
    return tr("The %1 file cannot be read: the workbook reader could not be started.").arg(suffix);
}

QString XWorkbookReader::readerStoppedMessage(QString const& suffix)
{
    return tr("Error while parsing the %1 file: the workbook reader stopped on this file.")
        .arg(suffix);
}

XCsv* XWorkbookReader::read(QString const& fileName, QString* error)
{
    auto fail = [error](QString const& message) -> XCsv* {
        if (error)
            *error = message;
        return nullptr;
    };

    // Every message names the kind of file; a name the reader program
    // takes for no workbook is read as .xls.
    QString suffix = workbookSuffix(workbookKind(fileName));
    if (!isWorkbook(workbookKind(fileName)))
        suffix = workbookSuffix(WorkbookKind::Xls);
    bool started = false;
    bool finished = false;
    const QByteArray frame = runReader(fileName, started, finished);
    if (!started)
        return fail(readerNotStartedMessage(suffix));
    XWorkbookContent content;
    if (!finished || !XWorkbookContent::decode(frame, content))
        return fail(readerStoppedMessage(suffix));
    switch (content.code) {
    case XWorkbookContent::Read:
        return new XCsv(content.grid, nullptr);
    case XWorkbookContent::Encrypted:
        return fail(encryptedMessage(suffix));
    case XWorkbookContent::NoWorksheet:
        return fail(noWorksheetMessage(suffix));
    case XWorkbookContent::EmptyWorksheet:
        return fail(emptyWorksheetMessage(suffix));
    case XWorkbookContent::BadCell:
        return fail(parseErrorMessage(content.row, content.column, suffix));
    case XWorkbookContent::SparseSheet:
        return fail(sparseSheetMessage(content.row, content.column, suffix));
    case XWorkbookContent::TooLarge:
        return fail(tooLargeMessage(content.row, content.column, suffix));
    case XWorkbookContent::OversizedPart:
        return fail(oversizedPartMessage(suffix));
    case XWorkbookContent::EmptyFile:
        return fail(emptyFileMessage(suffix));
    case XWorkbookContent::NotWorkbook:
        return fail(notWorkbookMessage(suffix));
    default:
        return fail(unreadableMessage(suffix));
    }
}
