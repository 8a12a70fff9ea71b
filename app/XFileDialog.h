#pragma once

#include <QString>

#include <functional>

class QWidget;

// Asks the user for file names through QFileDialog's static functions.
// Tests replace the question with a function that answers it, so that no
// real dialog opens; production code never touches the hooks.
class XFileDialog
{
public:
    using Hook = std::function<QString(QWidget* parent, QString const& filter)>;

    // An empty title leaves the dialog's own ("Open", "Save As").
    static QString openFileName(QWidget* parent, QString const& filter,
                                QString const& title = QString());
    static QString saveFileName(QWidget* parent, QString const& filter,
                                QString const& title = QString());

    // An empty hook restores the real dialog.
    static void setOpenHook(Hook hook);
    static void setSaveHook(Hook hook);
};
