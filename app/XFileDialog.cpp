#include "XFileDialog.h"

#include <QFileDialog>

namespace {

XFileDialog::Hook& openHook()
{
    static XFileDialog::Hook hook;
    return hook;
}

XFileDialog::Hook& saveHook()
{
    static XFileDialog::Hook hook;
    return hook;
}

} // namespace

QString XFileDialog::openFileName(QWidget* parent, QString const& filter, QString const& title)
{
    if (openHook())
        return openHook()(parent, filter);
    return QFileDialog::getOpenFileName(parent, title, QString(), filter);
}

QString XFileDialog::saveFileName(QWidget* parent, QString const& filter, QString const& title)
{
    if (saveHook())
        return saveHook()(parent, filter);
    return QFileDialog::getSaveFileName(parent, title, QString(), filter);
}

void XFileDialog::setOpenHook(Hook hook)
{
    openHook() = std::move(hook);
}

void XFileDialog::setSaveHook(Hook hook)
{
    saveHook() = std::move(hook);
}
