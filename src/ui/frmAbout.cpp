#include "ui/frmAbout.h"

frmAbout::frmAbout() {
    Window.Caption = "About Marrowquill Slaying Tallies";
    Window.ClientWidth = 5970;
    Window.ClientHeight = 6600;
    Window.Controls = {
        {&Frame1},          {&Picture1, &Frame1}, {&Label1, &Frame1},
        {&Label2, &Frame1}, {&Label4, &Frame1},   {&Label3, &Frame1},
    };
}
