// Reading quintave.tbl (resource_table.h).
#include "model/resource_table.h"

#include "model/text_files.h"
#include "platform/characters.h"
#include "platform/files.h"
#include "platform/items.h"

namespace {

constexpr Colour Green = 0x8000;
constexpr std::uint32_t PaletteByte = 0xFF000000U;
constexpr std::uint32_t SystemColour = 0x80000000U; // in it: an index of the old desktop's palette, not a colour
constexpr std::uint32_t ColourBits = 0xFFFFFFU;

std::string ItemOr(ItemInput &input, std::string_view missing) {
    try {
        return ReadText(input, Input::Lenient);
    } catch (const RuntimeError &) { // a quote that is never closed takes the rest of the file with it
        input.At = input.Bytes.size();
        return std::string(missing);
    }
}

std::int32_t ColourItem(ItemInput &input) {
    try {
        return ReadLong(input, Input::Lenient);
    } catch (const RuntimeError &) { // missing, or no colour at all
        return 0;
    }
}

Colour ReadColour(ItemInput &input) {
    if (AtEnd(input)) return DesignColour;
    BeginRecord(input);
    const std::string keyword = UpperCase(Trim(ItemOr(input, "")));
    const auto number = static_cast<std::uint32_t>(ColourItem(input));
    if (keyword != "COLOR") return Green;
    if ((number & PaletteByte) == SystemColour) return DesignColour;
    return static_cast<Colour>(number & ColourBits);
}

} // namespace

bool ReadResourceTable(const std::string &directory, ResourceTable &table) {
    const std::string name = FindName(directory, ResourceTableName);
    if (name.empty()) return false;
    try {
        ItemInput input = TemplateText(ReadFile(directory + name));
        BeginRecord(input);
        table.Kept = ItemOr(input, "");
        table.Template = Trim(ItemOr(input, ""));
        table.Start = Trim(ItemOr(input, "-1"));
        table.Back = ReadColour(input);
        return true;
    } catch (const RuntimeError &) {
        return false;
    }
}
