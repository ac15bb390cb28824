#pragma once

#include <QString>
#include <QWidget>

// Works the open file dialog, the toolkit's or the system's own. Each system has its own source
// file.
namespace FileDialog {

// Types a name. Returns false if the dialog does not take it.
bool Type(QWidget* dialog, const QString& name);

void Accept(QWidget* dialog);

} // namespace FileDialog
