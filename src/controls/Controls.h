#pragma once

#include <concepts>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

// The controls that windows are made of, as plain data. Logic only reads and writes them. The skin
// or a test subscribes to the displayed values and raises the events. Places and sizes are in
// twips, 1,440 to the inch; texts are bytes.

// A displayed value. Every assignment notifies the subscriber, even if the value is unchanged:
// setting a column width again undoes what the player dragged.
template <class T>
class Property {
public:
    Property() = default;
    template <std::convertible_to<T> From>
    Property(From&& value) // NOLINT(*-forwarding-reference-overload): converts from a value
        : Value(std::forward<From>(value)) {}
    // Copies take the value of another property; each keeps its own subscriber, if any.
    Property(const Property& other) : Value(other.Value) {}
    Property& operator=(const Property& other) { return *this = other.Value; } // NOLINT: notifies

    template <std::convertible_to<T> From>
    Property& operator=(From&& value) {
        Value = std::forward<From>(value);
        if (Changed) {
            Changed();
        }
        return *this;
    }
    operator const T&() const { return Value; } // NOLINT: reads like the value
    const T& Get() const { return Value; }

    std::function<void()> Changed;

private:
    T Value{};
};

// Calls the handler, if there is one.
template <class... Arguments>
void Raise(const std::function<void(Arguments...)>& event, Arguments... arguments) {
    if (event) {
        event(arguments...);
    }
}

struct Place {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};

enum class Alignment { Left = 0, Right = 1, Center = 2 };

enum class Pointer { Default = 0, Hourglass = 11 };

enum KeyCode { KeyEnter = 13, KeyUpArrow = 38, KeyDownArrow = 40, KeyDelete = 46 };

struct Label {
    Place At;
    Property<std::string> Caption; // '&' is shown as it is
    Alignment Align = Alignment::Left;
    double FontPoints = 8.25;
    std::string FontName; // empty: the desktop's own
    std::function<void()> Click;

    // Draws the label now.
    void Refresh() const { Raise(Repaint); }
    std::function<void()> Repaint;
};

struct TextBox {
    Place At;
    int TabIndex = 0;
    bool Visible = true;
    Property<std::string> Text;
    std::size_t SelStart = 0; // characters before the selection
    std::size_t SelLength = 0;
    std::function<void(int)> KeyPress; // code of the character, 13 for Enter
    std::function<void()> LostFocus;

    std::string_view SelText() const {
        return std::string_view(Text.Get()).substr(SelStart, SelLength);
    }
    // Draws the box now.
    void Refresh() const { Raise(Repaint); }
    std::function<void()> Repaint;
};

struct Button {
    Place At;
    int TabIndex = 0;
    std::string Caption; // '&' marks the letter to underline
    std::function<void()> Click;
};

struct Frame {
    Place At;
    std::string Caption; // if empty, the frame is a plain border
    std::function<void()> Click;
};

// A horizontal rule.
struct Line {
    Place At;
};

struct Image {
    Place At;
    std::string BuiltIn;           // the name of a GIF resource, shown if Picture is no GIF
    Property<std::string> Picture; // the bytes of a GIF file
    std::function<void()> Click;
};

// A menu of the menu bar if it has no parent, else an entry of its parent.
struct Menu {
    Menu* Parent = nullptr;
    std::string Caption; // "-" is a separator; '&' marks the letter to underline
    std::function<void()> Click;
};

struct ListSubItem {
    std::string Text;
    std::string Tag; // a free value that stays with its cell
};

struct ListItem {
    std::string Text;
    std::string Tag;
    std::vector<ListSubItem> ListSubItems; // column 2 and up, at index column - 2
};

struct ColumnHeader {
    std::string Text;
    Property<int> Width = 1440;
    Alignment Align = Alignment::Left;
};

// A table: rows of cells under column headers. One row is selected as long as there are rows.
// Rows and columns are numbered from 1. Texts are sorted by CodePage::SortKey, equal ones keep
// their order, the empty text comes first.
class ListView {
public:
    ListView() = default;
    ListView(const Place& at, int tabIndex) : At(at), TabIndex(tabIndex) {}

    Place At;
    int TabIndex = 0;
    std::vector<ColumnHeader> ColumnHeaders; // complete before the list is rendered
    Property<bool> Enabled = true;           // if false, rows raise no event; headers still do
    Property<Pointer> MousePointer = Pointer::Default;

    std::function<void()> Click;
    std::function<void(int keyCode, int shift)> KeyUp;
    std::function<void(int column)> ColumnClick;

    ColumnHeader& Column(int number) {
        return ColumnHeaders.at(static_cast<std::size_t>(number) - 1);
    }

    void Clear();
    // Appends a row with this text in column 1 and empty cells in the others. The reference is
    // valid until the next change of the rows.
    ListItem& Add(std::string_view text);
    int Count() const { return static_cast<int>(RowCount); }
    // The row `number` in the current order. Throws std::out_of_range if there is none. The
    // non-const one counts as a change of the rows.
    ListItem& Item(int number);
    const ListItem& Item(int number) const;

    // The selected row and its number; null and 0 if there are no rows.
    const ListItem* SelectedItem() const;
    int SelectedRow() const { return Selected; }
    // Raises no event. Ignores a number that is no row.
    void Select(int number);

    // Switching `Sorted` on orders the rows at once by the text of column SortKey + 1, even if it
    // was on already. Tags, cells and selection stay with their rows.
    int SortKey = 0;
    int SortOrder = 0; // 0 ascending, 1 descending
    bool Sorted() const { return IsSorted; }
    void SetSorted(bool on);

    // Raise the player's events; those of rows only if the list is enabled and a row is selected.
    void RaiseClick() const;
    void RaiseKeyUp(int keyCode, int shift) const;
    void RaiseColumnClick(int column) const;

    // Called at every change of rows; a refill calls it many times.
    std::function<void()> RowsChanged;

private:
    bool HasRowEvents() const;
    std::size_t Index(int number) const;

    // The first RowCount entries are the rows. The rest is memory that a refill can use again.
    std::vector<ListItem> Rows;
    std::size_t RowCount = 0;
    int Selected = 0;
    bool IsSorted = false;
};

// A file dialog. Each caller sets it up before each use.
struct CommonDialog {
    static constexpr int HideReadOnly = 4;
    static constexpr int FileMustExist = 4096;

    std::string DialogTitle;
    std::string Filter; // description|pattern
    int Flags = 0;
    std::filesystem::path FileName; // the chosen file; unchanged if the dialog is cancelled
    std::filesystem::path Folder;   // where it was last used; empty: the desktop's choice
};

using AnyControl = std::variant<Label*, TextBox*, Button*, Frame*, Line*, Image*, Menu*, ListView*>;

struct PlacedControl {
    AnyControl Control;
    const Frame* Container = nullptr; // null: lies in the client area
};

// A window. Controls refer to one another by address, so it is neither copied nor moved.
class Form {
public:
    Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    std::string Caption;
    int ClientWidth = 0;
    int ClientHeight = 0;
    std::vector<PlacedControl>
        Controls; // a container or menu comes before its contents, in their order
    Property<bool> Enabled = true;
    Property<Pointer> MousePointer = Pointer::Default;
    Property<bool> Visible = false; // a renderer shows and raises, or closes, the window

    std::function<void()> Load;
    std::function<void()> Unloading;

    // Loads the window if it is not loaded, then shows it, modeless.
    void Show();
    // Closes the window if it is loaded. The next Show loads it again.
    void Unload();

private:
    bool Loaded = false;
};
