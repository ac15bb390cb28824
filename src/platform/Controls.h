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

// The controls that windows are made of, as plain data. Logic reads and writes them and knows
// nothing else; whoever renders them (the skin) or works them (a test) subscribes to what shows
// and raises the events. Places and sizes are in twips, 1,440 to the inch; texts are bytes.

// A value that shows. Each assignment tells the subscriber, if there is one, also when the value
// stays the same: a column width set again undoes what the player dragged.
template <class T>
class Property {
public:
    Property() = default;
    template <std::convertible_to<T> From>
    Property(From&& value) // NOLINT(*-forwarding-reference-overload): a value stands for it
        : Value(std::forward<From>(value)) {}

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

// Raises an event that nobody may be wired to.
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
    Property<std::string> Caption; // '&' is a character like any other
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
    bool MultiLine = false;
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
    Property<bool> Enabled = true;
    std::function<void()> Click;
};

struct Frame {
    Place At;
    std::string Caption; // a frame without one is a plain border
    std::function<void()> Click;
};

// A horizontal rule.
struct Line {
    Place At;
};

struct Image {
    Place At;
    std::string Own;               // the bytes of a GIF file, shown where Picture is not one
    Property<std::string> Picture; // the bytes of a GIF file
    std::function<void()> Click;
};

// An entry of the menu bar if it has no parent, else an entry of the parent's menu.
struct Menu {
    Menu* Parent = nullptr;
    std::string Caption; // "-" is a separator; '&' marks the letter to underline
    Property<bool> Enabled = true;
    std::function<void()> Click;
};

struct ListSubItem {
    std::string Text;
    std::string Tag; // a free value that travels with its cell
};

struct ListItem {
    std::string Text;
    std::string Tag;
    std::vector<ListSubItem> ListSubItems; // column 2 and up, at index column - 2
};

struct ColumnHeader {
    std::string Text;
    Property<int> Width = 1440;
    Property<Alignment> Align = Alignment::Left;
};

// Report view: rows of cells under column headers, one row selected as long as there are rows.
// Rows and columns are numbered from 1. The sort order is the control's own: upper and lower
// case are equal, equal texts keep their order, the empty text comes first.
class ListView {
public:
    ListView() = default;
    ListView(const Place& at, int tabIndex) : At(at), TabIndex(tabIndex) {}

    Place At;
    int TabIndex = 0;
    std::vector<ColumnHeader> ColumnHeaders; // complete before the list is rendered
    Property<bool> Enabled = true;           // off: rows raise no event, the header still does
    Property<Pointer> MousePointer = Pointer::Default;

    std::function<void()> Click;
    std::function<void(int keyCode, int shift)> KeyUp;
    std::function<void(int column)> ColumnClick;

    ColumnHeader& Column(int number) {
        return ColumnHeaders.at(static_cast<std::size_t>(number) - 1);
    }

    // Rows.
    void Clear();
    // Appends a row with this text and empty cells behind it. The reference holds until the
    // next change of the rows.
    ListItem& Add(std::string_view text);
    int Count() const { return static_cast<int>(RowCount); }
    // The row `number` in the present order, to be changed or only read.
    // Fails (std::out_of_range) on a number that is no row.
    ListItem& Item(int number);
    const ListItem& Item(int number) const;

    // The selected row, null on a list without rows; its number, 0 likewise.
    const ListItem* SelectedItem() const;
    int SelectedRow() const { return Selected; }
    // As a click or an arrow key does; raises no event.
    void Select(int number);

    // Sort state. Switching `Sorted` on orders the rows at once by the text of column
    // SortKey + 1, also when it was on already; tags, cells and selection travel along.
    Property<int> SortKey = 0;
    Property<int> SortOrder = 0; // 0 ascending, 1 descending
    bool Sorted() const { return IsSorted; }
    void SetSorted(bool on);

    // How the player's events come in. A row event needs an available list with a selected row.
    void RaiseClick() const;
    void RaiseKeyUp(int keyCode, int shift) const;
    void RaiseColumnClick(int column) const;

    // Told when rows read so far no longer hold; whoever reads them anew says so.
    std::function<void()> RowsChanged;
    void MarkRead() { Stale = false; }

private:
    void MarkStale();
    bool HasRowEvents() const;
    std::size_t Index(int number) const;

    // The first RowCount entries are the rows. Those behind are left over from a longer list: a
    // refill writes over them instead of asking for memory anew.
    std::vector<ListItem> Rows;
    std::size_t RowCount = 0;
    int Selected = 0;
    bool IsSorted = false;
    bool Stale = false;
};

// A file dialog. Set up by each caller before each showing.
struct CommonDialog {
    static constexpr int HideReadOnly = 4;
    static constexpr int FileMustExist = 4096;

    std::string DialogTitle;
    std::string Filter; // description|pattern
    int Flags = 0;
    std::filesystem::path FileName; // the choice; as it was when the dialog is cancelled
    std::filesystem::path Folder;   // where it was last used; empty: as the desktop pleases
};

using AnyControl = std::variant<Label*, TextBox*, Button*, Frame*, Line*, Image*, Menu*, ListView*>;

struct PlacedControl {
    AnyControl Control;
    const Frame* Container = nullptr; // null: the client area
};

// A window. Its controls refer to one another, so that it is neither copied nor moved.
class Form {
public:
    Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    std::string Caption;
    int ClientWidth = 0;
    int ClientHeight = 0;
    std::vector<PlacedControl> Controls; // a container before what lies in it
    Property<bool> Enabled = true;
    Property<Pointer> MousePointer = Pointer::Default;
    Property<bool> Visible = false; // renderers show, raise and close the window by it

    std::function<void()> Load;
    std::function<void()> Unloading;

    // Loads the window if it is not loaded, then shows it, modeless.
    void Show();
    // Closes the window if it is loaded; the next Show loads it again.
    void Unload();

private:
    bool Loaded = false;
};
