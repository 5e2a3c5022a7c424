// Composing rows (row_text.h).
#include "model/row_text.h"

#include "platform/runtime.h"

namespace {

constexpr std::string_view Cut = "...";
constexpr int Dashes = 31;

} // namespace

std::string FitTitle(std::string_view title) {
    if (title.size() > TitleLength) return std::string(Cut) + Right(title, static_cast<long>(TitleLength - Cut.size()));
    return std::string(title) + std::string(TitleLength - title.size(), ' ');
}

std::string RowPrefix(std::string_view title) { return " " + FitTitle(title) + "| "; }

std::string RowWithValue(std::string_view row, std::string_view value) {
    std::string text = Left(row, PrefixLength) + std::string(value.substr(0, LongestRow));
    if (text.size() > LongestRow) text = text.substr(0, LongestRow - Cut.size()) + std::string(Cut);
    return text;
}

std::string SeparatorRow() {
    std::string row;
    for (int i = 0; i < Dashes; ++i) row += " -";
    return row + " ";
}
