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
                           QWidget* notThis = nullptr)
{
    auto* timer = new QTimer(&modalWatchers());
    QPointer<QWidget> skip(notThis);
    QElapsedTimer clock;
    clock.start();
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, clock, handle, timeoutMs, skip] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal && modal == skip.data())
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
