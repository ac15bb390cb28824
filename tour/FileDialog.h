#pragma once

#include <QString>
#include <QWidget>

// The file dialog as the player sees it, the toolkit's or the system's own. Each system has its
// own source file for this header.
namespace FileDialog {

// Types a name into the open dialog. False when it takes none.
bool Type(QWidget* dialog, const QString& name);

void Accept(QWidget* dialog);

} // namespace FileDialog
