// The program at work for a target: started once in a folder in memory, watched with every input.
#pragma once

#include "support/folder.h"
#include "support/memory_folder.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class Workplace : InMemory {
public:
    // Starts the program with a template of these lines, past the start-up frame.
    explicit Workplace(const std::vector<std::string> &templateLines);

    // An input: forgets what was asked before and runs the act. Ends the program badly where an error came through to
    // the user without a command's own message, a descriptor stayed open, or a file was touched outside the folder.
    void Run(const std::function<void()> &act) const;

    // Back to empty entries outside groups.
    void Empty() const;

    void Write(const std::string &name, const std::string &bytes) const { folder.Write(name, bytes); }
    std::string PathOf(const std::string &name) const { return folder.Path() + name; }

    // Saves the entries, adds the report.
    void SaveAs(const std::string &name) const;
    void Add(const std::string &name) const;

private:
    Folder folder;
};

// The template that all targets but the template's own work with: sections, text, two lists, instances and a group.
std::vector<std::string> SampleTemplate();
inline constexpr short SampleList = 3; // element numbers
inline constexpr short SampleGroup = 5;
inline constexpr short SampleListRow = 2; // rows of the field list
inline constexpr short SampleGroupRow = 3;

// Divides an input behind its first line.
void DivideInput(const std::string &input, std::string &firstLine, std::string &file);

// What is typed before a file is read is bounded, so that the time an input takes tells of its file.
std::string_view FirstActs(std::string_view acts);
