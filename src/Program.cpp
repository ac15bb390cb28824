#include "Program.h"

#include "app/Events.h"
#include "skin/DesktopServices.h"

Program::Program() : Services(RealDesktop()) {
    Main::WireEvents(Ledger, MainWindow, AboutWindow, Services);
}
