#pragma once

#include "controls/Desktop.h"

class QWidget;

// Returns the services of the real desktop. Boxes and dialogs belong to the window that `owner`
// returns, whichever is active. Needs a QApplication.
Desktop RealDesktop(const std::function<QWidget*()>& owner);
