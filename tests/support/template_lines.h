// Lines of a Fields Template File, and names for what a test looks at on the screen.
#pragma once

#include "form/main_window.h"
#include "model/field_model.h"

#include <string>
#include <vector>

using TemplateLines = std::vector<std::string>;

inline std::string Element(int level, int kind, const std::string &type, const std::string &title,
                           const std::string &help = "", const std::string &file = "") {
    return std::to_string(level) + "," + std::to_string(kind) + ",\"" + type + "\",\"" + title + "\",\"" + help +
           "\",\"" + file + "\"";
}

inline TemplateLines ListOf(int level, int length, const std::string &title, const TemplateLines &choices) {
    TemplateLines lines{Element(level, length, "LIST", title)};
    for (const auto &choice : choices) lines.push_back("\"" + choice + "\"");
    lines.push_back("\"XXX-1XXX\"");
    return lines;
}

inline TemplateLines Join(const std::vector<TemplateLines> &parts) {
    TemplateLines lines;
    for (const auto &part : parts) lines.insert(lines.end(), part.begin(), part.end());
    return lines;
}

// A row: the title in 26 characters, the bar, the value as it is.
inline std::string RowOf(std::string title, const std::string &value = "") {
    title.resize(26, ' ');
    return " " + title + "| " + value;
}

// The names of the visible entry controls: "Text1_1".
inline TemplateLines ShownEntryControls() {
    TemplateLines names;
    const auto note = [&](const auto &controls) {
        for (const Control &c : controls)
            if (!c.Name.empty() && IsUsable(c)) names.push_back(std::string(c.Name) + "_" + std::to_string(c.Index));
    };
    note(Quintave.Text1);
    note(Quintave.Text2);
    note(Quintave.List2);
    return names;
}

inline std::string ChosenText(Integer list = 0) {
    const Control &choices = Quintave.List2.at(static_cast<std::size_t>(list));
    return choices.ListIndex < 0 ? "" : choices.Rows.at(static_cast<std::size_t>(choices.ListIndex));
}
