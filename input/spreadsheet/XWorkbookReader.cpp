#include "XWorkbookReader.h"

#include "XBiffWriter.h"
#include "XCompoundFileCheck.h"
#include "XCsv.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDataStream>
#include <QElapsedTimer>
#include <QFile>

#include <freexl.h>

#include <cerrno>
#include <climits>
#include <cmath>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef VIREON_SANITIZED
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

// Closes the workbook on every path; FreeXL wants a close even after a
// failed open.
class Workbook
{
public:
    Workbook(Workbook const&) = delete;
    Workbook& operator=(Workbook const&) = delete;
    explicit Workbook(QString const& fileName)
    {
        m_status = freexl_open(QFile::encodeName(fileName).constData(), &m_handle);
    }
    ~Workbook()
    {
        if (m_handle)
            freexl_close(m_handle);
    }
    bool isOpen() const { return m_status == FREEXL_OK && m_handle; }
    void const* handle() const { return m_handle; }

    unsigned info(unsigned short what) const
    {
        unsigned value = FREEXL_UNKNOWN;
        if (freexl_get_info(m_handle, what, &value) != FREEXL_OK)
            return FREEXL_UNKNOWN;
        return value;
    }

private:
    void const* m_handle = nullptr;
    int m_status = FREEXL_UNKNOWN;
};

// A cell as the table holds it, or an invalid variant when the cell is
// neither text nor a whole number.
QVariant cellValue(FreeXL_CellValue const& cell)
{
    switch (cell.type) {
    case FREEXL_CELL_NULL:
        return QString(QLatin1String(""));
    case FREEXL_CELL_INT:
        return cell.value.int_value;
    case FREEXL_CELL_DOUBLE: {
        const double v = cell.value.double_value;
        if (std::isfinite(v) && std::floor(v) == v && v >= double(INT_MIN) && v <= double(INT_MAX))
            return int(v);
        return QVariant();
    }
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT:
        return QString::fromUtf8(cell.value.text_value);
    default:
        return QVariant();
    }
}

} // namespace

QString XWorkbookReader::parseErrorMessage(int row, int column)
{
    return QCoreApplication::translate(
               "XCsvSelectionPage",
               "Error while parsing the .xls file: cell at row %1 and column %2 does not appear to "
               "be a valid string or number.")
        .arg(row)
        .arg(column);
}

QString XWorkbookReader::unreadableMessage()
{
    return QCoreApplication::translate(
        "XCsvSelectionPage",
        "Error while parsing the .xls file: the file cannot be read as a workbook.");
}

QString XWorkbookReader::encryptedMessage()
{
    return QCoreApplication::translate(
        "XCsvSelectionPage",
        "Error while parsing the .xls file: the workbook is protected by a password.");
}

QString XWorkbookReader::noWorksheetMessage()
{
    return QCoreApplication::translate(
        "XCsvSelectionPage", "Error while parsing the .xls file: the workbook has no worksheet.");
}

QString XWorkbookReader::emptyWorksheetMessage()
{
    return QCoreApplication::translate(
        "XCsvSelectionPage", "Error while parsing the .xls file: the first worksheet is empty.");
}

namespace {

// What reading a workbook came to. Messages are made from it in the calling
// process: the reading itself runs in a child, where nothing that may take
// a lock (translations, say) is touched.
struct Outcome
{
    enum Code : qint32 { Read, Unreadable, Encrypted, NoWorksheet, EmptyWorksheet, BadCell };
    qint32 code = Unreadable;
    qint32 row = 0;
    qint32 column = 0;
    XCsv::Grid grid;
};

// The used extent of the active worksheet: up to the last row and column
// that hold a cell. A sheet may declare more (formatted blank cells, or
// damage: a few bytes can declare millions of empty cells). False when the
// declared size is past the largest worksheet of the format, which only a
// damaged file claims.
bool usedExtent(void const* handle, unsigned& rows, unsigned short& columns)
{
    unsigned declaredRows = 0;
    unsigned short declaredColumns = 0;
    if (freexl_worksheet_dimensions(handle, &declaredRows, &declaredColumns) != FREEXL_OK ||
        declaredRows > unsigned(XBiffWriter::maxRows) || declaredColumns > XBiffWriter::maxColumns)
        return false;
    rows = 0;
    columns = 0;
    for (unsigned r = 0; r < declaredRows; ++r) {
        for (unsigned short c = 0; c < declaredColumns; ++c) {
            FreeXL_CellValue cell;
            if (freexl_get_cell_value(handle, r, c, &cell) == FREEXL_OK &&
                cell.type == FREEXL_CELL_NULL)
                continue;
            rows = r + 1;
            columns = qMax<unsigned short>(columns, c + 1);
        }
    }
    return true;
}

Outcome readWorkbook(QString const& fileName)
{
    Outcome outcome;
    Workbook book(fileName);
    if (!book.isOpen())
        return outcome;
    if (book.info(FREEXL_BIFF_PASSWORD) == FREEXL_BIFF_OBFUSCATED) {
        outcome.code = Outcome::Encrypted;
        return outcome;
    }
    if (book.info(FREEXL_BIFF_SHEET_COUNT) == 0 ||
        freexl_select_active_worksheet(book.handle(), 0) != FREEXL_OK) {
        outcome.code = Outcome::NoWorksheet;
        return outcome;
    }
    unsigned rows = 0;
    unsigned short columns = 0;
    if (!usedExtent(book.handle(), rows, columns))
        return outcome;
    if (rows == 0 || columns == 0) {
        outcome.code = Outcome::EmptyWorksheet;
        return outcome;
    }
    outcome.grid.reserve(int(rows));
    for (unsigned r = 0; r < rows; ++r) {
        XCsv::Row row;
        row.reserve(columns);
        for (unsigned short c = 0; c < columns; ++c) {
            FreeXL_CellValue cell;
            QVariant value;
            if (freexl_get_cell_value(book.handle(), r, c, &cell) == FREEXL_OK)
                value = cellValue(cell);
            if (!value.isValid()) {
                outcome = Outcome();
                outcome.code = Outcome::BadCell;
                outcome.row = qint32(r);
                outcome.column = qint32(c);
                return outcome;
            }
            row << value;
        }
        outcome.grid << row;
    }
    outcome.code = Outcome::Read;
    return outcome;
}

QByteArray encode(Outcome const& outcome)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << outcome.code << outcome.row << outcome.column << outcome.grid;
    return bytes;
}

bool decode(QByteArray const& bytes, Outcome& outcome)
{
    QDataStream in(bytes);
    in >> outcome.code >> outcome.row >> outcome.column >> outcome.grid;
    return in.status() == QDataStream::Ok && outcome.code >= Outcome::Read &&
           outcome.code <= Outcome::BadCell;
}

bool writeAll(int fd, QByteArray const& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += n;
    }
    return true;
}

// The workbook library crashes, loops or allocates without bound on some
// damaged files. Reading in a child process keeps all of that away from the
// program: a child that dies, runs too long or sends nothing usable means
// the file is unreadable.
#ifndef VIREON_XLS_READING_LIMIT_MS
// The largest sheet a workbook can hold reads in a few seconds.
#define VIREON_XLS_READING_LIMIT_MS 30000
#endif
const int readingLimitMs = VIREON_XLS_READING_LIMIT_MS;

Outcome readIsolated(QString const& fileName)
{
    int fds[2];
    if (::pipe(fds) != 0)
        return readWorkbook(fileName);
    const pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        return readWorkbook(fileName);
    }
    if (pid == 0) {
        ::close(fds[0]);
        // A crash here ends this child only, quietly, whatever crash
        // handlers the program installed.
        for (int sig : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
            ::signal(sig, SIG_DFL);
#ifdef VIREON_SANITIZED
        // Under a fuzzer, a memory error of the library in this child would
        // otherwise be filed as the fuzzer's own crash.
        __sanitizer_set_death_callback(nullptr);
#endif
#ifndef VIREON_SANITIZED
        // An address-space cap would break the sanitizers' shadow memory.
        rlimit limit{rlim_t(8) << 30, rlim_t(8) << 30};
        ::setrlimit(RLIMIT_AS, &limit);
#endif
        const bool sent = writeAll(fds[1], encode(readWorkbook(fileName)));
        ::close(fds[1]);
        ::_exit(sent ? 0 : 1);
    }

    ::close(fds[1]);
    QByteArray bytes;
    QElapsedTimer clock;
    clock.start();
    bool timedOut = false;
    char buffer[65536];
    for (;;) {
        const qint64 left = readingLimitMs - clock.elapsed();
        if (left <= 0) {
            timedOut = true;
            break;
        }
        pollfd ready{fds[0], POLLIN, 0};
        const int polled = ::poll(&ready, 1, int(qMin<qint64>(left, 1000)));
        if (polled < 0 && errno != EINTR)
            break;
        if (polled <= 0)
            continue;
        const ssize_t n = ::read(fds[0], buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        bytes.append(buffer, int(n));
    }
    ::close(fds[0]);
    if (timedOut)
        ::kill(pid, SIGKILL);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    Outcome outcome;
    if (timedOut || !WIFEXITED(status) || WEXITSTATUS(status) != 0 || !decode(bytes, outcome))
        return Outcome();
    return outcome;
}

} // namespace

XCsv* XWorkbookReader::read(QString const& fileName, QString* error)
{
    auto fail = [error](QString const& message) -> XCsv* {
        if (error)
            *error = message;
        return nullptr;
    };

    if (!XCompoundFileCheck::directoryIsSound(fileName))
        return fail(unreadableMessage());
    Outcome outcome = readIsolated(fileName);
    switch (outcome.code) {
    case Outcome::Read:
        return new XCsv(outcome.grid, nullptr);
    case Outcome::Encrypted:
        return fail(encryptedMessage());
    case Outcome::NoWorksheet:
        return fail(noWorksheetMessage());
    case Outcome::EmptyWorksheet:
        return fail(emptyWorksheetMessage());
    case Outcome::BadCell:
        return fail(parseErrorMessage(outcome.row, outcome.column));
    default:
        return fail(unreadableMessage());
    }
}
