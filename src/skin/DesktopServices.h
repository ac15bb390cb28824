#pragma once

#include "platform/Desktop.h"

// Returns the services of the real desktop. Needs a QApplication.
Desktop RealDesktop();
