#include "WizardFocus.h"

#include <QPushButton>
#include <QWizard>

void focusForward(QWizard* wizard)
{
    if (!wizard)
        return;
    for (QWizard::WizardButton which : {QWizard::NextButton, QWizard::FinishButton}) {
        auto* button = qobject_cast<QPushButton*>(wizard->button(which));
        if (button && button->isVisible() && button->isEnabled()) {
            button->setDefault(true);
            button->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}
