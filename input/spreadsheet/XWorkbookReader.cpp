#include "XWorkbookReader.h"

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
    const QString name = QStringLiteral("vireon-xls-reader");
    const QByteArray chosen = qgetenv("VIREON_XLS_READER");
    if (!chosen.isEmpty())
        return QFile::decodeName(chosen);
    if (QCoreApplication::instance()) {
        const QString installed =
            QDir(QCoreApplication::applicationDirPath())
                .filePath(QStringLiteral(VIREON_XLS_READER_FROM_BINDIR "/") + name);
        if (QFileInfo(installed).isExecutable())
            return QDir::cleanPath(installed);
    }
    return QStringLiteral(VIREON_XLS_READER_BUILT);
}

int XWorkbookReader::readingLimitMs()
{
    return readingLimit.load();
}

void XWorkbookReader::setReadingLimitMs(int ms)
{
    readingLimit.store(ms);
}

QString XWorkbookReader::parseErrorMessage(int row, int column)
{
    return QCoreApplication::translate(
               "XSpreadsheet",
               "Error while parsing the .xls file: cell at row %1 and column %2 does not "
               "appear to be a valid string or number.")
        .arg(row)
        .arg(column);
}

QString XWorkbookReader::unreadableMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet",
        "Error while parsing the .xls file: the file cannot be read as a workbook.");
}

QString XWorkbookReader::encryptedMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet",
        "Error while parsing the .xls file: the workbook is protected by a password.");
}

QString XWorkbookReader::noWorksheetMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet", "Error while parsing the .xls file: the workbook has no worksheet.");
}

QString XWorkbookReader::sparseSheetMessage(int rows, int columns)
{
    return QCoreApplication::translate(
               "XSpreadsheet",
               "Error while parsing the .xls file: the first worksheet reaches row %1 and column "
               "%2, but fewer than one cell in a hundred of that holds something. Copy the table "
               "to a new worksheet.")
        .arg(rows)
        .arg(columns);
}

QString XWorkbookReader::emptyWorksheetMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet", "Error while parsing the .xls file: the first worksheet is empty.");
}

QString XWorkbookReader::readerNotStartedMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet", "The .xls file cannot be read: the workbook reader could not be started.");
}

QString XWorkbookReader::readerStoppedMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet", "Error while parsing the .xls file: the workbook reader stopped on this "
                        "file.");
}

XCsv* XWorkbookReader::read(QString const& fileName, QString* error)
{
    auto fail = [error](QString const& message) -> XCsv* {
        if (error)
            *error = message;
        return nullptr;
    };

    bool started = false;
    bool finished = false;
    const QByteArray frame = runReader(fileName, started, finished);
    if (!started)
        return fail(readerNotStartedMessage());
    XWorkbookContent content;
    if (!finished || !XWorkbookContent::decode(frame, content))
        return fail(readerStoppedMessage());
    switch (content.code) {
    case XWorkbookContent::Read:
        return new XCsv(content.grid, nullptr);
    case XWorkbookContent::Encrypted:
        return fail(encryptedMessage());
    case XWorkbookContent::NoWorksheet:
        return fail(noWorksheetMessage());
    case XWorkbookContent::EmptyWorksheet:
        return fail(emptyWorksheetMessage());
    case XWorkbookContent::BadCell:
        return fail(parseErrorMessage(content.row, content.column));
    case XWorkbookContent::SparseSheet:
        return fail(sparseSheetMessage(content.row, content.column));
    default:
        return fail(unreadableMessage());
    }
}
