#include "ui/frmAbout.h"

#include "controls/Desktop.h"

frmAbout::frmAbout() {
    Window.Caption = "About Marrowquill Slaying Tallies";
    Window.ClientWidth = 5970;
    Window.ClientHeight = 6600;
    Window.Controls = {
        {&Frame1},          {&Picture1, &Frame1}, {&Label1, &Frame1},
        {&Label2, &Frame1}, {&Label4, &Frame1},   {&Label3, &Frame1},
    };
}

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
