// A template walked through line by line for what is wrong with it, each fault by its line. What needs the loaded
// template is found in check_template.cpp.
#pragma once

#include "platform/files.h"
#include "platform/items.h"

#include <string>
#include <vector>

struct TemplateFault {
    long Line;
    std::string Text;    // begins with a small letter where a load may refuse the template for it
    Integer Error = 0;   // what a load refuses the template with
    bool Astray = false; // a load takes what follows for something else than it is
};

struct TemplateWalk {
    std::vector<TemplateFault> Faults;
    std::vector<long> Lines;    // of element f: Lines[f - 1]
    bool WrongHeader = false;   // no template
    Integer Refusal = 0;        // the error with which a load refuses it
    long Fields = 0;            // with a value, in groups too
    long Groups = 0, Lists = 0; // lists are fields, too
};

// Help files are looked for among these names; null looks for none.
TemplateWalk WalkTemplate(ItemInput input, const DirectoryNames *beside);
