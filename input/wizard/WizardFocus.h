#pragma once

class QWizard;

// After a modal editor closes, Enter must lead forward: the focus and the
// default go to Next (or Finish on the last page) when it can be pressed.
void focusForward(QWizard* wizard);
