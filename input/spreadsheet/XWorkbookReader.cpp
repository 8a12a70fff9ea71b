#include "XWorkbookReader.h"

#include "FileFormats.h"
#include "XCsv.h"
#include "XWorkbookContent.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

std::atomic<int> readingLimit{XWorkbookContent::readingSeconds * 1000};

// Starting a program takes milliseconds; this only bounds a stuck exec.
const int startLimitMs = 10000;
// How often a wait looks at the cancel flag: well within the tenth of a
// second in which Cancel must end the reader.
const int pollMs = 10;

// The reader program, set up to die with the thread that starts it: a
// window or command line killed while a workbook is read would otherwise
// leave the reader running for nobody.
class ReaderProcess : public QProcess
{
public:
    ReaderProcess() : m_parent(getpid()) {}

protected:
    // Runs in the child, between fork and exec; the signal survives exec.
    void setupChildProcess() override
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        // A parent that died before the signal was asked for has already
        // handed the child to another process, whose death it would wait
        // for instead.
        if (getppid() != m_parent)
            _exit(127);
    }

private:
    const pid_t m_parent;
};

enum class Ending { Answered, Failed, NotStarted, Cancelled };

// Runs the reader on one file and returns what it wrote, with how it ended.
QByteArray runReader(QString const& fileName, std::atomic<bool> const* cancel, Ending& ending)
{
    ReaderProcess process;
    // Its diagnostics (a sanitizer report, say) belong in our own.
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(XWorkbookReader::program(), {fileName}, QIODevice::ReadOnly);
    if (!process.waitForStarted(startLimitMs)) {
        process.kill();
        process.waitForFinished(-1);
        ending = Ending::NotStarted;
        return QByteArray();
    }
    process.closeWriteChannel();
    bool cancelled = false;
    // Cancelled, or sent more than any content within the limits encodes
    // to: what is read is never larger than the cell and text budgets.
    auto mustStop = [&] {
        cancelled = cancelled || (cancel && cancel->load());
        return cancelled || process.bytesAvailable() > XWorkbookContent::maxFrameBytes;
    };
    const int limit = XWorkbookReader::readingLimitMs();
    // Waits without an event loop: the wizard calls this on a thread of its
    // own, which must not run one.
    QElapsedTimer clock;
    clock.start();
    while (process.state() != QProcess::NotRunning && !mustStop() && clock.elapsed() < limit)
        process.waitForFinished(pollMs);
    if (process.state() != QProcess::NotRunning || mustStop()) {
        process.kill();
        process.waitForFinished(-1);
        ending = cancelled ? Ending::Cancelled : Ending::Failed;
        return QByteArray();
    }
    ending = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0
                 ? Ending::Answered
                 : Ending::Failed;
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

// The texts of this file, translated in the context of XSpreadsheet.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(XSpreadsheet)
};

} // namespace

namespace {

// The .xls cell message keeps the zero-based position it has always shown;
// every other position is counted from 1.
int shown(int position, QString const& suffix)
{
    return suffix == workbookSuffix(WorkbookKind::Xls) ? position : position + 1;
}

// Large counts with their thousands apart, whatever the user's language.
QString count(qint64 n)
{
    return QLocale(QLocale::English).toString(n);
}

} // namespace

QString XWorkbookReader::parseErrorMessage(int row, int column, QString const& suffix)
{
    return Msg::tr(
               "Error while parsing the %3 file: cell at row %1 and column %2 does not appear to "
               "be a valid string or number.")
        .arg(shown(row, suffix))
        .arg(shown(column, suffix))
        .arg(suffix);
}

QString XWorkbookReader::longCellMessage(int row, int column, QString const& suffix)
{
    return Msg::tr(
               "Error while parsing the %3 file: the cell at row %1 and column %2 holds more than "
               "%4 characters, more than a spreadsheet cell holds.")
        .arg(row + 1)
        .arg(column + 1)
        .arg(suffix, count(XWorkbookContent::maxCellText));
}

QString XWorkbookReader::tooMuchTextMessage(int row, int column, QString const& suffix)
{
    return Msg::tr(
               "Error while parsing the %3 file: by the cell at row %1 and column %2, the cells "
               "of the first worksheet hold more than %4 characters of text, more than Vireon "
               "reads.")
        .arg(row + 1)
        .arg(column + 1)
        .arg(suffix, count(XWorkbookContent::maxTextCharacters));
}

QString XWorkbookReader::unreadableMessage(QString const& suffix)
{
    return Msg::tr("Error while parsing the %1 file: the file cannot be read as a workbook.")
        .arg(suffix);
}

QString XWorkbookReader::encryptedMessage(QString const& suffix)
{
    return Msg::tr("Error while parsing the %1 file: the workbook is protected by a password.")
        .arg(suffix);
}

QString XWorkbookReader::noWorksheetMessage(QString const& suffix)
{
    return Msg::tr("Error while parsing the %1 file: the workbook has no worksheet.").arg(suffix);
}

QString XWorkbookReader::sparseSheetMessage(int rows, int columns, QString const& suffix)
{
    return Msg::tr(
               "Error while parsing the %3 file: the first worksheet reaches row %1 and column "
               "%2, but fewer than one cell in a hundred of that holds something. Copy the table "
               "to a new worksheet.")
        .arg(rows)
        .arg(columns)
        .arg(suffix);
}

QString XWorkbookReader::tooLargeMessage(int rows, int columns, QString const& suffix)
{
    return Msg::tr("Error while parsing the %3 file: the first worksheet reaches row %1 and column "
                   "%2, more cells than Vireon reads.")
        .arg(rows)
        .arg(columns)
        .arg(suffix);
}

QString XWorkbookReader::oversizedPartMessage(QString const& suffix)
{
    return Msg::tr(
               "Error while parsing the %1 file: a part of the workbook would unpack to more than "
               "%2 MB; it was not unpacked.")
        .arg(suffix)
        .arg(XWorkbookContent::maxPartBytes / (1024 * 1024));
}

QString XWorkbookReader::emptyFileMessage(QString const& suffix)
{
    return Msg::tr("Error while parsing the %1 file: the file is empty.").arg(suffix);
}

QString XWorkbookReader::notWorkbookMessage(QString const& suffix)
{
    return Msg::tr(
               "Error while parsing the %1 file: the file is not a %1 workbook but another kind of "
               "file.")
        .arg(suffix);
}

QString XWorkbookReader::emptyWorksheetMessage(QString const& suffix)
{
    return Msg::tr("Error while parsing the %1 file: the first worksheet is empty.").arg(suffix);
}

QString XWorkbookReader::readerNotStartedMessage(QString const& suffix)
{
    return Msg::tr("The %1 file cannot be read: the workbook reader could not be started.")
        .arg(suffix);
}

QString XWorkbookReader::readerStoppedMessage(QString const& suffix)
{
    return Msg::tr("Error while parsing the %1 file: the workbook reader stopped on this file.")
        .arg(suffix);
}

XCsv* XWorkbookReader::read(QString const& fileName, QString* error,
                            std::atomic<bool> const* cancel)
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
    Ending ending = Ending::Failed;
    const QByteArray frame = runReader(fileName, cancel, ending);
    if (ending == Ending::NotStarted)
        return fail(readerNotStartedMessage(suffix));
    if (ending == Ending::Cancelled)
        return fail(QString());
    XWorkbookContent content;
    if (ending != Ending::Answered || !XWorkbookContent::decode(frame, content))
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
    case XWorkbookContent::LongCell:
        return fail(longCellMessage(content.row, content.column, suffix));
    case XWorkbookContent::TooMuchText:
        return fail(tooMuchTextMessage(content.row, content.column, suffix));
    default:
        return fail(unreadableMessage(suffix));
    }
}
