#pragma once

#include "platform/Desktop.h"

// The services of the real desktop: message boxes, file dialogs and the rest.
Desktop RealDesktop();
