#pragma once

#include "platform/Controls.h"

#include <QPointer>

class QMainWindow;

// Renders one form: a real window stands for it as long as it is visible. There is one renderer
// for all forms; what a window looks like is all in the form's definition.
class FormRenderer {
public:
    // Follows `form`, which must outlive the renderer, and shows it at its next Show.
    explicit FormRenderer(Form& form);
    ~FormRenderer();
    FormRenderer(const FormRenderer&) = delete;
    FormRenderer& operator=(const FormRenderer&) = delete;

    // The window on the screen, null while there is none.
    QMainWindow* Window() const;

private:
    void Follow();

    Form& Rendered;
    QPointer<QMainWindow> Shown;
};
