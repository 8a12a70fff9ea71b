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

QString XFileDialog::openFileName(QWidget* parent, QString const& filter)
{
    if (openHook())
        return openHook()(parent, filter);
    return QFileDialog::getOpenFileName(parent, QString(), QString(), filter);
}

QString XFileDialog::saveFileName(QWidget* parent, QString const& filter)
{
    if (saveHook())
        return saveHook()(parent, filter);
    return QFileDialog::getSaveFileName(parent, QString(), QString(), filter);
}

void XFileDialog::setOpenHook(Hook hook)
{
    openHook() = std::move(hook);
}

void XFileDialog::setSaveHook(Hook hook)
{
    saveHook() = std::move(hook);
}
