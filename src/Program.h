#pragma once

#include "controls/Desktop.h"
#include "ledger/KillLedger.h"
#include "skin/FormRenderer.h"
#include "ui/Slaying_Tallies.h"
#include "ui/frmAbout.h"

// The whole program but the event loop. Large: allocate it on the heap. Needs a QApplication.
struct Program {
    Program();

    KillLedger Ledger;
    Desktop Services;
    Slaying_Tallies MainWindow;
    frmAbout AboutWindow;
    FormRenderer MainRenderer{MainWindow.Window};
    FormRenderer AboutRenderer{AboutWindow.Window};
};
