#pragma once

#include "controls/Desktop.h"

// Returns the services of the real desktop. Needs a QApplication.
Desktop RealDesktop();
