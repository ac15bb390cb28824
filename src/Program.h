#pragma once

#include "ledger/KillLedger.h"
#include "skin/FormRenderer.h"
#include "ui/Slaying_Tallies.h"
#include "ui/frmAbout.h"

// The whole program but for the event loop. It belongs on the heap, since the ledger takes 5 MB,
// and needs a QApplication.
struct Program {
    Program();

    KillLedger Ledger;
    Desktop Services;
    Slaying_Tallies MainWindow;
    frmAbout AboutWindow;
    FormRenderer MainRenderer{MainWindow.Window};
    FormRenderer AboutRenderer{AboutWindow.Window};
};
