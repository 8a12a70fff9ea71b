#include "TableReading.h"

#include "XCsv.h"
#include "XSpreadsheet.h"

#include <QApplication>
#include <QEvent>
#include <QEventLoop>
#include <QFileInfo>
#include <QPointer>
#include <QProgressDialog>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include <atomic>
#include <memory>

namespace {

std::atomic<int> runningReads{0};

// What the reading thread hands back. Shared with the thread, so that a
// cancelled read can end on its own and drop its table then.
struct Reading
{
    QString fileName;
    QThread* home = nullptr;
    XCsv* table = nullptr;
    QString error;
    QStringList notes;
    // Set by Cancel: a workbook's reader program is ended at once.
    std::atomic<bool> cancel{false};

    ~Reading() { delete table; }
};

// Swallows the user's input everywhere but in the progress dialog.
class InputHold : public QObject
{
public:
    explicit InputHold(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }
    ~InputHold() override { qApp->removeEventFilter(this); }
    void allow(QWidget* dialog) { m_allowed = dialog; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Wheel:
        case QEvent::Close:
        case QEvent::ShortcutOverride:
            break;
        default:
            return false;
        }
        return !isAllowed(watched);
    }

private:
    bool isAllowed(QObject* watched) const
    {
        if (!m_allowed)
            return false;
        // The window system hands a click to the dialog's window first,
        // which passes it on to the button: held back at the window, a
        // click never reached Cancel.
        if (watched->isWindowType())
            return watched == m_allowed->windowHandle();
        auto* widget = qobject_cast<QWidget*>(watched);
        return widget && (widget == m_allowed || m_allowed->isAncestorOf(widget));
    }

    QPointer<QWidget> m_allowed;
};

} // namespace

TableReading::Outcome TableReading::read(QWidget* parent, QString const& fileName, XCsv** table,
                                         QString* error, QStringList* notes)
{
    auto reading = std::make_shared<Reading>();
    reading->fileName = fileName;
    reading->home = QThread::currentThread();
    ++runningReads;
    QThread* thread = QThread::create([reading] {
        XCsv* read = XSpreadsheet::read(reading->fileName, &reading->error, &reading->notes,
                                        &reading->cancel);
        // Handed to the thread that asked, which will own it.
        if (read)
            read->moveToThread(reading->home);
        reading->table = read;
        --runningReads;
    });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);

    QEventLoop loop;
    InputHold hold(&loop);
    bool cancelled = false;
    std::unique_ptr<QProgressDialog> progress;
    QObject::connect(thread, &QThread::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(dialogDelayMs, &loop, [&] {
        progress = std::make_unique<QProgressDialog>(
            QCoreApplication::translate("TableReading", "Reading %1...")
                .arg(QFileInfo(fileName).fileName()),
            QCoreApplication::translate("TableReading", "Cancel"), 0, 0, parent);
        progress->setObjectName(QStringLiteral("readingProgress"));
        progress->setWindowTitle(QCoreApplication::translate("TableReading", "Reading"));
        progress->setWindowModality(Qt::WindowModal);
        progress->setAutoClose(false);
        progress->setAutoReset(false);
        hold.allow(progress.get());
        QObject::connect(progress.get(), &QProgressDialog::canceled, &loop, [&] {
            cancelled = true;
            reading->cancel = true;
            loop.quit();
        });
        progress->show();
    });
    thread->start();
    loop.exec();
    progress.reset();
    if (cancelled)
        return Cancelled;
    // The thread has ended (and may be deleted already): its results are in.
    *table = reading->table;
    reading->table = nullptr;
    if (notes)
        *notes = reading->notes;
    if (!*table) {
        if (error)
            *error = reading->error;
        return Failed;
    }
    return Read;
}

int TableReading::running()
{
    return runningReads.load();
}
