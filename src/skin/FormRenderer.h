#pragma once

#include "controls/Controls.h"

#include <QPointer>

class QMainWindow;

// Shows one form as a real window while the form is visible. All forms have the same renderer; what
// a window looks like is in the form's definition.
class FormRenderer {
public:
    // Follows `form`, which must outlive the renderer, from its next Show on.
    explicit FormRenderer(Form& form);
    ~FormRenderer();
    FormRenderer(const FormRenderer&) = delete;
    FormRenderer& operator=(const FormRenderer&) = delete;

    // The window on the screen; null if there is none.
    QMainWindow* Window() const;

private:
    void Follow();

    Form& Rendered;
    QPointer<QMainWindow> Shown;
};
