// The marks of a report file that its writer and its readers share.
#pragma once

#include "platform/runtime.h"

#include <string_view>

// Second item of a record, where it is not the number of lines of a value.
inline constexpr Integer HeadingMarker = -1;
inline constexpr Integer OccurrenceMarker = -9;
inline constexpr Integer GroupEndMarker = -99;

inline constexpr std::string_view OccurrenceText = "REPEATING GROUP, Occurrence #";
inline constexpr std::string_view GroupEndTitle = "END REPEATING GROUP";
