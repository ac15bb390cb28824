#include "ui/StatusRule.h"

#include <string>

namespace Main {

void ShowStatus(Slaying_Tallies& window, std::string_view text) {
    window.lblStatus.Caption = std::string(text);
    window.lblStatus.Refresh();
    window.Window.MousePointer = Pointer::Hourglass;
}

void ClearStatus(Slaying_Tallies& window) {
    window.Window.MousePointer = Pointer::Default;
    window.lblStatus.Caption = std::string();
    window.lblStatus.Refresh();
}

} // namespace Main
