#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>

// Owns the watchers below, so that a test's cleanup can stop those whose
// dialog never came before they catch the next test's dialog.
inline QObject& modalWatchers()
{
    static QObject owner;
    return owner;
}

inline void stopWatchingModals()
{
    qDeleteAll(modalWatchers().children());
}

// Answers the next modal dialog that opens: as soon as one (other than
// notThis) is active, runs handle on it, which must close it. Gives up after
// timeoutMs, so a dialog that never comes fails the test instead of hanging it.
inline void whenModalOpens(std::function<void(QWidget*)> handle, int timeoutMs = 5000,
                           QWidget* notThis = nullptr,
                           std::function<bool(QWidget*)> wanted = nullptr)
{
    auto* timer = new QTimer(&modalWatchers());
    QPointer<QWidget> skip(notThis);
    QElapsedTimer clock;
    clock.start();
    timer->setInterval(10);
    QObject::connect(
        timer, &QTimer::timeout, timer, [timer, clock, handle, timeoutMs, skip, wanted] {
            QWidget* modal = QApplication::activeModalWidget();
            if (modal && (modal == skip.data() || (wanted && !wanted(modal))))
                modal = nullptr;
            // A slow read's progress comes and goes before the
            // dialog a test waits for, unless it is the one.
            if (modal && !wanted && modal->objectName() == QLatin1String("readingProgress"))
                modal = nullptr;
            if (modal || clock.elapsed() > timeoutMs) {
                timer->stop();
                timer->deleteLater();
                if (modal)
                    handle(modal);
            }
        });
    timer->start();
}

// As whenModalOpens, waiting for a dialog of class T; other modal dialogs
// (a progress dialog that comes first, say) are left alone.
template <typename T> void whenDialogOpens(std::function<void(T*)> handle, int timeoutMs = 60000)
{
    whenModalOpens([handle](QWidget* modal) { handle(qobject_cast<T*>(modal)); }, timeoutMs,
                   nullptr, [](QWidget* modal) { return qobject_cast<T*>(modal) != nullptr; });
}

// As whenModalOpens, for dialogs opened one after the other.
inline void whenModalsOpen(QList<std::function<void(QWidget*)>> handlers,
                           QWidget* notThis = nullptr)
{
    if (handlers.isEmpty())
        return;
    auto first = handlers.takeFirst();
    whenModalOpens(
        [first, handlers](QWidget* modal) {
            whenModalsOpen(handlers, modal);
            first(modal);
        },
        5000, notThis);
}
