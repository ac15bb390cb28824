#include "FileDialog.h"

#include <QDir>
#include <QTest>

#include <cwchar>
#include <windows.h>

// The system's own dialog, which the toolkit cannot work.
namespace FileDialog {
namespace {

HWND Find(const QWidget* dialog) {
    const std::wstring title = dialog->windowTitle().toStdWString();
    HWND found = nullptr;
    (void)QTest::qWaitFor([&] {
        found = ::FindWindowW(L"#32770", title.c_str());
        return found != nullptr && ::IsWindowVisible(found);
    });
    return found;
}

BOOL CALLBACK TakeEdit(HWND child, LPARAM result) {
    wchar_t kind[16] = {};
    ::GetClassNameW(child, kind, 16);
    if (std::wcscmp(kind, L"Edit") == 0 && ::IsWindowVisible(child)) {
        *reinterpret_cast<HWND*>(result) = child;
        return FALSE;
    }
    return TRUE;
}

} // namespace

bool Type(QWidget* dialog, const QString& name) {
    HWND edit = nullptr;
    ::EnumChildWindows(Find(dialog), TakeEdit, reinterpret_cast<LPARAM>(&edit));
    const std::wstring text = QDir::toNativeSeparators(name).toStdWString();
    return edit != nullptr &&
           ::SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str())) != 0;
}

void Accept(QWidget* dialog) {
    ::PostMessageW(Find(dialog), WM_COMMAND, IDOK, 0);
}

} // namespace FileDialog
