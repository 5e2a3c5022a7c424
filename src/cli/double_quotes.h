// Values that a saved report would not give back: an item without quotes around it may hold a double quote, which ends
// the item that it is written as.
#pragma once

#include "platform/items.h"

#include <string>
#include <vector>

struct QuotedValue {
    long Line = 0;
    std::string Title;
};

// The records of a report just loaded whose values hold one now. A MEMO is no such field: its quotes are saved as
// apostrophes.
std::vector<QuotedValue> FindDoubleQuotes(const ItemInput &loaded);

std::string DoubleQuoteText(const std::string &title);
