// Today's date in the two forms the program shows, and a clock for waiting.
#pragma once

#include <functional>
#include <string>

// The short form of the system's locale; each front knows it (qt/front.cpp, console/front.cpp).
std::string ShortDate();

// mm-dd-yyyy, for prints. The moment that SOURCE_DATE_EPOCH names (UTC) where it is set, so that prints can be
// reproduced; otherwise the local date.
std::string PrintDate();

// Waits until an act comes off, which is tried every now and then; false where it did not for so many milliseconds.
// Only where there is no window yet: nothing is shown meanwhile.
bool ComesOffWithin(int milliseconds, const std::function<bool()> &act);

// Milliseconds since some moment: goes on evenly when the date is set anew. Each front has it.
long long SteadyMilliseconds();
