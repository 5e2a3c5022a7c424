// Several instances of one value, joined by "|", as texts.
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>

// The instance of that number (from 1) in a value; "" past the last.
std::string InstanceText(std::string_view value, std::int32_t number);

// The value with a text as the instance of that number; past the last it becomes one more.
std::string WithInstance(std::string_view value, std::int32_t number, const std::string &text);

// The value without that instance and one of the "|" beside it.
std::string WithoutInstance(std::string_view value, std::int32_t number);

// The number of instances in a value: one more than it has "|".
Integer InstanceCount(std::string_view value);
