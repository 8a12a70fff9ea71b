#pragma once

#include <QApplication>
#include <QInputDialog>
#include <QPointer>
#include <QTimer>

// Answers the next modal text input dialog from inside its own event loop:
// records what it showed, then types the answer and accepts, or cancels.
struct InputDialogAnswer
{
    bool seen = false;
    QString title, label, initial;
    QLineEdit::EchoMode echo = QLineEdit::Normal;
    QPointer<QWidget> parent;
    // Polling stops when the answer goes out of scope.
    QObject guard;

    void arm(QString const& answer, bool accept, int attempts = 200)
    {
        QTimer::singleShot(5, &guard, [this, answer, accept, attempts]() {
            auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            if (!dialog) {
                if (attempts > 0)
                    arm(answer, accept, attempts - 1);
                return;
            }
            seen = true;
            title = dialog->windowTitle();
            label = dialog->labelText();
            initial = dialog->textValue();
            echo = dialog->textEchoMode();
            parent = dialog->parentWidget();
            dialog->setTextValue(answer);
            if (accept)
                dialog->accept();
            else
                dialog->reject();
        });
    }
};
