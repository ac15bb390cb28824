#pragma once

#include "controls/Controls.h"
#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

// The about window: its controls with their places (left, top, width, height, in twips) and
// captions, and its two events.
struct frmAbout {
    frmAbout();

    static constexpr Alignment Center = Alignment::Center;
    static constexpr const char* Font = "MS Sans Serif";

    Form Window;

    Frame Frame1{.At = {0, 0, 6000, 6600}};
    Image Picture1{.At = {0, 0, 6000, 4500}, .BuiltIn = "marrowquill.gif"};
    Label Label1{{150, 4515, 5745, 435}, "Marrowquill's Slaying Tallies", Center, 18, Font};
    Label Label2{{150, 4935, 5745, 330}, "Version 0.6b", Center, 12, Font};
    Label Label4{{150, 5250, 5745, 330}, "(16th June 2004)", Center, 9.75, Font};
    Label Label3{{450, 5535, 5190, 1065},
                 "Part of the Marrowquill suite - process your turns for detailed slaying tallies",
                 Center,
                 13.5,
                 Font};
};

namespace Main {

// Runs each time the window opens. Loads graphics/marrowquill.gif from the folder of the program;
// if that is missing or not a picture, the built-in picture is shown.
void frmAbout_Load(const KillLedger& ledger, frmAbout& about, const Desktop& desktop);

// Runs each time the window closes. Enables the main window if it is disabled.
void frmAbout_Unload(Slaying_Tallies& window);

} // namespace Main
