#include "ui/AboutWindow.h"

namespace Main {

void frmAbout_Load(const KillLedger& ledger, frmAbout& about, const Desktop& desktop) {
    const auto picture =
        desktop.LoadPicture(ledger.ApplicationPath / "graphics" / "marrowquill.gif");
    about.Picture1.Picture = picture.value_or(frmAbout::OwnPicture());
}

void frmAbout_Unload(Slaying_Tallies& window) {
    if (!window.Window.Enabled) {
        window.Window.Enabled = true;
    }
}

} // namespace Main
