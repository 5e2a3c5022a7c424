// Why a file is no template.
#pragma once

#include "platform/items.h"

#include <string>

// Of a file whose header a load refuses: the reason, as a sentence.
std::string WhyNoTemplate(const ItemInput &input);

// A sentence that began with a small letter because something may stand before it.
std::string Sentence(const std::string &text);
