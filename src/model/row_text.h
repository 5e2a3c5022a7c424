// The text of a row in the field list and in the list of an open group.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// In columns.
inline constexpr std::size_t TitleLength = 26;
inline constexpr std::size_t PrefixLength = 29; // a blank, the title, "| "
inline constexpr std::size_t LongestRow = 58;   // a longer row is cut
inline constexpr std::string_view GroupRowText = "-- REPEATABLE GROUP --";

// The title in exactly 26 columns: a longer one loses its start, a shorter one is padded with blanks.
std::string FitTitle(std::string_view title);

// The first 29 columns of a row.
std::string RowPrefix(std::string_view title);

// The row whose first 29 columns are those of a present row, with a value: at most 58 columns, a longer one is
// its first 55 and "...".
std::string RowWithValue(std::string_view row, std::string_view value);

// The row of a section break: " -" 31 times and a blank.
std::string SeparatorRow();
