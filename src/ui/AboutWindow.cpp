#include "ui/AboutWindow.h"

#include "controls/Desktop.h"

namespace Main {

void frmAbout_Load(const KillLedger& ledger, frmAbout& about, const Desktop& desktop) {
    about.Picture1.Picture =
        desktop.LoadPicture(ledger.ApplicationPath / "graphics" / "marrowquill.gif");
}

void frmAbout_Unload(Slaying_Tallies& window) {
    if (!window.Window.Enabled) {
        window.Window.Enabled = true;
    }
}

} // namespace Main
