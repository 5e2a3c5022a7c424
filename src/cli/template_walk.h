// A template walked through record by record for what is wrong with it, each fault by its line. What needs the loaded
// template is found in check_template.cpp.
#pragma once

#include "platform/items.h"

#include <string>
#include <vector>

struct TemplateFault {
    long Line;
    std::string Text;
};

struct TemplateWalk {
    std::vector<TemplateFault> Faults;
    std::vector<long> Lines; // of element f: Lines[f - 1]
    bool Refused = false;    // a load would not take it
};

TemplateWalk WalkTemplate(ItemInput input);
