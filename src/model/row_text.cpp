// Composing rows (row_text.h).
#include "model/row_text.h"

#include "platform/characters.h"

namespace {

constexpr std::string_view Cut = "...";
constexpr int Dashes = 31;
constexpr std::size_t MostCharacters = 4 * LongestRow; // some take no column

} // namespace

std::string FitTitle(std::string_view title) {
    const std::size_t columns = Columns(title);
    if (columns <= TitleLength) return std::string(title) + std::string(TitleLength - columns, ' ');
    std::string fitting(LastColumns(title, TitleLength - Cut.size()));
    fitting.insert(0, TitleLength - Cut.size() - Columns(fitting), ' '); // before a wide character
    return std::string(Cut) + fitting;
}

std::string RowPrefix(std::string_view title) { return " " + FitTitle(title) + "| "; }

std::string RowWithValue(std::string_view row, std::string_view value) {
    // The blank behind the bar may be one character with a mark that the former value began with.
    std::string text(FirstColumns(row, PrefixLength - 1));
    if (row.substr(text.size()).starts_with(' ')) text += ' ';
    const std::size_t room = LongestRow - Columns(text);
    const std::string_view fitting = FirstColumns(FirstCharacters(value, MostCharacters), room);
    if (fitting.size() == value.size()) return text.append(fitting);
    return text.append(FirstColumns(fitting, room - Cut.size())).append(Cut);
}

std::string SeparatorRow() {
    std::string row;
    for (int i = 0; i < Dashes; ++i) row += " -";
    return row + " ";
}
