#include "ui/frmAbout.h"

namespace {

constexpr const char* LabelFont = "MS Sans Serif";

} // namespace

// All places in twips, relative to the container.
frmAbout::frmAbout()
    : Frame1{.At = {0, 0, 6000, 6600}}, Picture1{.At = {0, 0, 6000, 4500}, .Own = OwnPicture()},
      Label1{.At = {150, 4515, 5745, 435},
             .Caption = "Marrowquill's Slaying Tallies",
             .Align = Alignment::Center,
             .FontPoints = 18,
             .FontName = LabelFont},
      Label2{.At = {150, 4935, 5745, 330},
             .Caption = "Version 0.6b",
             .Align = Alignment::Center,
             .FontPoints = 12,
             .FontName = LabelFont},
      Label4{.At = {150, 5250, 5745, 330},
             .Caption = "(16th June 2004)",
             .Align = Alignment::Center,
             .FontPoints = 9.75,
             .FontName = LabelFont},
      Label3{.At = {450, 5535, 5190, 1065},
             .Caption = "Part of the Marrowquill suite - process your turns for detailed "
                        "slaying tallies",
             .Align = Alignment::Center,
             .FontPoints = 13.5,
             .FontName = LabelFont} {
    Window.Caption = "About Marrowquill Slaying Tallies";
    Window.ClientWidth = 5970;
    Window.ClientHeight = 6600;
    Window.Controls = {{&Frame1},          {&Picture1, &Frame1}, {&Label1, &Frame1},
                       {&Label2, &Frame1}, {&Label4, &Frame1},   {&Label3, &Frame1}};
}
