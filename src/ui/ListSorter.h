#pragma once

#include "controls/Desktop.h"

#include <string>
#include <string_view>

namespace Main {

// How the cells of a column are compared. Any other value acts like SortText.
enum SortKind { SortText = 0, SortNumber = 1, SortDate = 2 };

// Sorts a list by the column `Index`, from 1. Texts, tags and selection stay with their rows.
// A list can only order its rows by text. So the cells of a number or date column are
// replaced by keys whose text order is the order of the values, and restored after the sort;
// meanwhile the list is not drawn. A number is a whole cell, with or without blanks around it;
// other cells come first. A date is YYYY-MM-DD, YYYY-MM-DD HH:MM or YYYY-MM-DD HH:MM:SS; other
// cells get the date of the row before. Never throws: a step that fails is skipped.
void SortListView(const Desktop& desktop, ListView& list, int Index, int DataType, bool Ascending);

// Returns the text with each digit d replaced by 9 - d and each minus sign by a blank, so that
// larger numbers come first.
std::string InvertDigits(std::string_view text);

} // namespace Main
