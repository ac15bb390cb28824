#pragma once

#include "controls/Controls.h"

// The about window: its controls with their places (left, top, width, height, in twips) and
// captions. No logic.
struct frmAbout {
    frmAbout();

    // The built-in picture, the bytes of a GIF file.
    static const std::string& OwnPicture();

    static constexpr Alignment Center = Alignment::Center;
    static constexpr const char* Font = "MS Sans Serif";

    Form Window;

    Frame Frame1{.At = {0, 0, 6000, 6600}};
    Image Picture1{.At = {0, 0, 6000, 4500}, .Own = OwnPicture()};
    Label Label1{{150, 4515, 5745, 435}, "Marrowquill's Slaying Tallies", Center, 18, Font};
    Label Label2{{150, 4935, 5745, 330}, "Version 0.6b", Center, 12, Font};
    Label Label4{{150, 5250, 5745, 330}, "(16th June 2004)", Center, 9.75, Font};
    Label Label3{{450, 5535, 5190, 1065},
                 "Part of the Marrowquill suite - process your turns for detailed slaying tallies",
                 Center,
                 13.5,
                 Font};
};
