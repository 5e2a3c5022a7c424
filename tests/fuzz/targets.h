// The readers of the program, each with the bytes of a hostile file: what a fuzzer calls (fuzz_main.cpp) and what
// replays the cases it found (replay_test.cpp). Where a target says so, the first line of the input is no part of the
// file but what the user does: one character for each answer or command.
#pragma once

#include <array>
#include <string>
#include <string_view>

// A Fields Template File: it is picked, its rows are gone through, a report is saved and added again.
void TakeTemplate(const std::string &input);

// A report that is added to entries. First line: answers, "Y" yes, "N" no, "O" OK, any other Cancel.
void TakeReport(const std::string &input);

// quintave.tbl: the program starts with it.
void TakeTable(const std::string &input);

// The file of a choice list. First line: what is typed on the list.
void TakeChoices(const std::string &input);

// The store of a group. First line: commands, as in store_target.cpp.
void TakeStore(const std::string &input);

// quintave.rec, unsaved entries. First line: as in recovery_target.cpp.
void TakeRecovery(const std::string &input);

// A report that is printed to a text file, and to a printer. First line: the options, as in print_targets.cpp.
void TakeTextPrint(const std::string &input);
void TakePagePrint(const std::string &input);

struct FuzzTarget {
    const char *Name;
    void (*Take)(const std::string &input);
};

inline constexpr std::array<FuzzTarget, 8> FuzzTargets{{{"template", TakeTemplate},
                                                        {"report", TakeReport},
                                                        {"table", TakeTable},
                                                        {"choices", TakeChoices},
                                                        {"store", TakeStore},
                                                        {"recovery", TakeRecovery},
                                                        {"text-print", TakeTextPrint},
                                                        {"page-print", TakePagePrint}}};
