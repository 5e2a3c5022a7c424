// Instances of a value (instance_text.h).
#include "screen/instance_text.h"

#include <algorithm>

namespace {

// The bounds of instance n in "|value|": the positions of the "|" before and behind it.
struct Bounds {
    std::size_t Before;
    std::size_t Behind;
};

Bounds BoundsOf(std::string_view framed, std::int32_t number) {
    Bounds bounds{0, 0};
    for (std::int32_t i = 0; i < number; ++i) {
        bounds.Before = bounds.Behind;
        bounds.Behind = std::min(framed.find('|', bounds.Before + 1), framed.size() - 1);
    }
    // Past the last instance both ends are the closing bar: an empty text just before it.
    return bounds;
}

std::string Framed(std::string_view value) { return "|" + std::string(value) + "|"; }

// The value with a piece in the place of an instance and the "|" behind it.
std::string Replaced(std::string_view value, std::int32_t number, const std::string &piece) {
    std::string framed = Framed(value);
    const auto [before, behind] = BoundsOf(framed, number);
    framed = framed.substr(0, before + 1) + piece + framed.substr(behind + 1);
    std::string result = framed.size() >= 3 ? framed.substr(1, framed.size() - 2) : "";
    if (result.ends_with('|')) result.pop_back();
    return result;
}

} // namespace

std::string InstanceText(std::string_view value, std::int32_t number) {
    const std::string framed = Framed(value);
    const auto [before, behind] = BoundsOf(framed, number);
    return before >= behind ? "" : framed.substr(before + 1, behind - before - 1);
}

std::string WithInstance(std::string_view value, std::int32_t number, const std::string &text) {
    return Replaced(value, number, text + "|");
}

std::string WithoutInstance(std::string_view value, std::int32_t number) { return Replaced(value, number, ""); }

Integer InstanceCount(std::string_view value) {
    // The scroll bar reaches no further; what lies behind stays as it is.
    return static_cast<Integer>(std::min<std::ptrdiff_t>(std::count(value.begin(), value.end(), '|') + 1, INT16_MAX));
}
