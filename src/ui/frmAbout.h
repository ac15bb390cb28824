#pragma once

#include "platform/Controls.h"

// The about window: its controls with their captions and places, and no logic.
struct frmAbout {
    frmAbout();

    // The picture of this definition, which a picture file replaces at every opening.
    static const std::string& OwnPicture();

    Form Window;

    Frame Frame1; // fills the window
    Image Picture1;
    Label Label1;
    Label Label2;
    Label Label4;
    Label Label3;
};
