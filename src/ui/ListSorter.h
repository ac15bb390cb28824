#pragma once

#include "platform/Desktop.h"

#include <string>
#include <string_view>

namespace Main {

// What the cells of a column are compared as. Any other value acts like SortText.
enum SortKind { SortText = 0, SortNumber = 1, SortDate = 2 };

// Sorts a list by the column `index`, from 1. A list orders its rows by text only, so the cells of
// a number or date column hold, for the moment of the sort, keys whose text order is the order
// of their values; the list is locked against drawing meanwhile. A number is a whole cell, blanks
// around it allowed, anything else comes before all numbers; a date is YYYY-MM-DD, with HH:MM or
// HH:MM:SS behind it or not, anything else takes the place of the date in the row before.
// Never fails: a step that does is skipped. Texts, tags and selection stay with their rows.
void SortListView(const Desktop& desktop, ListView& list, int index, int dataType, bool ascending);

// The text with each digit replaced by its complement to 9 and each minus sign by a blank, so
// that larger magnitudes come first.
std::string InvertDigits(std::string_view text);

} // namespace Main
