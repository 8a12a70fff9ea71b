#include "TextFile.h"

#include "TableMemory.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextCodec>

#include <algorithm>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Measured with bench_model: 50,000 accessions x 100 allele columns (19 MiB
// of text) read in under a second at 250 MiB of memory; 650,000 x 100
// (249 MiB) took 18 s and 3.2 GiB to read and 8.9 GiB to write back as a
// workspace. 128 MiB of text (about 330,000 x 100) keeps a whole analysis
// within the memory of an ordinary desktop machine.
constexpr qint64 limitBytes = qint64(128) * 1024 * 1024;

// The texts of this file, translated in the context of TextFile.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(TextFile)
};

QString megabytes(qint64 bytes)
{
    return QString::number(double(bytes) / (1024.0 * 1024.0), 'f', 1);
}

} // namespace

qint64 TextFile::sizeLimit()
{
    return limitBytes;
}

QString TextFile::windows1252Note()
{
    return Msg::tr("This file is not UTF-8; it was read as Windows-1252.");
}

namespace {

QString problemOf(struct stat const& info)
{
    if (S_ISDIR(info.st_mode))
        return Msg::tr("is a folder");
    if (!S_ISREG(info.st_mode))
        return Msg::tr("not a regular file");
    if (qint64(info.st_size) > limitBytes)
        return Msg::tr("is too large: %1 MB, and Vireon reads files of up to %2 MB")
            .arg(megabytes(info.st_size), megabytes(limitBytes));
    return QString();
}

} // namespace

QString TextFile::problem(QString const& path)
{
    struct stat info;
    const QByteArray native = QFile::encodeName(path);
    if (path.isEmpty() || ::stat(native.constData(), &info) != 0)
        return Msg::tr("no such file");
    if (::access(native.constData(), R_OK) != 0)
        return Msg::tr("cannot be read");
    return problemOf(info);
}

QString TextFile::encodingNote(Encoding encoding)
{
    switch (encoding) {
    case Encoding::Windows1252:
        return windows1252Note();
    case Encoding::Utf16LeUnmarked:
        return Msg::tr("This file is UTF-16 (little-endian) without a byte-order mark; it was read "
                       "that way.");
    case Encoding::Utf16BeUnmarked:
        return Msg::tr(
            "This file is UTF-16 (big-endian) without a byte-order mark; it was read that "
            "way.");
    case Encoding::Utf32LeUnmarked:
        return Msg::tr("This file is UTF-32 (little-endian) without a byte-order mark; it was read "
                       "that way.");
    case Encoding::Utf32BeUnmarked:
        return Msg::tr(
            "This file is UTF-32 (big-endian) without a byte-order mark; it was read that "
            "way.");
    default:
        return QString();
    }
}

namespace {

struct Unmarked
{
    TextFile::Encoding encoding;
    char const* codec;
    char const* name;
};

// Where the NUL bytes of a sample stand tells UTF-16 and UTF-32 without a
// byte-order mark: in mostly-ASCII text every character's high bytes are 0.
// Null when the pattern is none of the four.
Unmarked const* unmarkedKind(QByteArray const& bytes)
{
    static const Unmarked kinds[] = {
        {TextFile::Encoding::Utf32LeUnmarked, "UTF-32LE", "UTF-32 (little-endian)"},
        {TextFile::Encoding::Utf32BeUnmarked, "UTF-32BE", "UTF-32 (big-endian)"},
        {TextFile::Encoding::Utf16LeUnmarked, "UTF-16LE", "UTF-16 (little-endian)"},
        {TextFile::Encoding::Utf16BeUnmarked, "UTF-16BE", "UTF-16 (big-endian)"},
    };
    const int sample = int(std::min<qint64>(bytes.size(), 65536)) & ~3;
    qint64 zeros[4] = {0, 0, 0, 0};
    for (int i = 0; i < sample; ++i)
        zeros[i % 4] += bytes.at(i) == '\0';
    const qint64 each = sample / 4;
    if (each == 0)
        return nullptr;
    // High bytes are 0 for every Latin letter, digit and separator, so at
    // least half of them even in a table of other scripts' names; low bytes
    // are 0 only for the rare characters U+xx00.
    auto mostly = [each](qint64 n) { return n * 2 >= each; };
    auto seldom = [each](qint64 n) { return n * 10 <= each; };
    // UTF-32 keeps its top byte 0 always, the next one below U+10000.
    if (zeros[3] == each && mostly(zeros[2]) && seldom(zeros[0]))
        return &kinds[0];
    if (zeros[0] == each && mostly(zeros[1]) && seldom(zeros[3]))
        return &kinds[1];
    if (mostly(zeros[1]) && mostly(zeros[3]) && seldom(zeros[0]) && seldom(zeros[2]))
        return &kinds[2];
    if (mostly(zeros[0]) && mostly(zeros[2]) && seldom(zeros[1]) && seldom(zeros[3]))
        return &kinds[3];
    return nullptr;
}

// Old Mac text: carriage returns alone end its lines.
void readReturnsAsLineEnds(QString& text)
{
    if (!text.contains(QLatin1Char('\n')) && text.contains(QLatin1Char('\r')))
        text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

bool failed(QString* error, QString const& why)
{
    if (error)
        *error = why;
    return false;
}

} // namespace

bool TextFile::decode(QByteArray const& bytes, QString* text, QString* error, Encoding* encoding)
{
    QTextCodec* utf8 = QTextCodec::codecForName("UTF-8");
    QTextCodec* codec = QTextCodec::codecForUtfText(bytes, utf8);
    Encoding found = Encoding::Utf8;
    if (codec != utf8) {
        // The byte-order mark itself is dropped by the codec.
        const int mib = codec->mibEnum();
        found = mib == 106 ? Encoding::Utf8
                           : (mib >= 1017 && mib <= 1019 ? Encoding::Utf32 : Encoding::Utf16);
        *text = codec->toUnicode(bytes);
    } else if (bytes.contains('\0')) {
        Unmarked const* kind = unmarkedKind(bytes);
        if (!kind)
            return failed(error, Msg::tr("is not a text file: it holds NUL bytes"));
        QTextCodec::ConverterState state;
        *text = QTextCodec::codecForName(kind->codec)
                    ->toUnicode(bytes.constData(), bytes.size(), &state);
        // A byte left over, a code point past U+10FFFF, a lone surrogate.
        if (state.invalidChars > 0 || state.remainingChars > 0 || !text->isValidUtf16())
            return failed(error,
                          Msg::tr("looks like %1 without a byte-order mark, but is not valid "
                                  "%1")
                              .arg(QLatin1String(kind->name)));
        found = kind->encoding;
    } else {
        QTextCodec::ConverterState state;
        *text = utf8->toUnicode(bytes.constData(), bytes.size(), &state);
        if (state.invalidChars > 0 || state.remainingChars > 0) {
            found = Encoding::Windows1252;
            *text = QTextCodec::codecForName("Windows-1252")->toUnicode(bytes);
        } else if (text->startsWith(QChar(0xFEFF))) {
            text->remove(0, 1);
        }
    }
    readReturnsAsLineEnds(*text);
    if (encoding)
        *encoding = found;
    return true;
}

bool TextFile::read(QString const& path, QString* text, QString* error, Encoding* encoding)
{
    const QString why = problem(path);
    if (!why.isEmpty()) {
        if (error)
            *error = why;
        return false;
    }
    // Opened without blocking and checked again on the open file: the path
    // may have become a FIFO in between, whose open() would wait for a writer.
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat info;
    if (fd < 0 || ::fstat(fd, &info) != 0 || !problemOf(info).isEmpty()) {
        if (error)
            *error = fd < 0 ? Msg::tr("cannot be read") : problemOf(info);
        if (error && error->isEmpty())
            *error = Msg::tr("cannot be read");
        if (fd >= 0)
            ::close(fd);
        return false;
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    QFile file;
    if (!file.open(fd, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        if (error)
            *error = Msg::tr("cannot be read");
        return false;
    }
    // A file that grows while it is read is cut at the limit plus one byte.
    try {
        const QByteArray bytes = file.read(limitBytes + 1);
        if (bytes.size() > limitBytes) {
            if (error)
                *error =
                    Msg::tr("is too large: more than %1 MB, and Vireon reads files of up to %1 MB")
                        .arg(megabytes(limitBytes));
            return false;
        }
        if (file.error() != QFileDevice::NoError) {
            if (error)
                *error = Msg::tr("cannot be read");
            return false;
        }
        const QString tooMuch = TableMemory::problem(TableMemory::estimate(bytes));
        if (!tooMuch.isEmpty()) {
            if (error)
                *error = tooMuch;
            return false;
        }
        if (!decode(bytes, text, error, encoding))
            return false;
    } catch (std::bad_alloc const&) {
        if (error)
            *error = Msg::tr("is too large to read in the memory available");
        return false;
    }
    return true;
}
