// Unsaved entries that a crash has left as inputs: the program starts anew with each (targets.h). First line: the
// answer to the question, as in report_target.cpp, and "!" behind it where the rest is the bytes of the file. Otherwise
// each line is an item, its kind, its number and its text, in a file that is whole and of the template that is there.
#include "form/main_window.h"
#include "fuzz/targets.h"
#include "fuzz/workplace.h"
#include "main/recovery_entries.h"
#include "main/session.h"
#include "main/start_up.h"
#include "model/recovery_file.h"
#include "platform/console/answers.h"
#include "platform/files.h"
#include "support/user.h"

#include <charconv>

namespace {

std::string ItemOf(std::string_view line) {
    const auto kind = line.substr(0, line.find(' '));
    std::string_view text = line.substr(std::min(kind.size() + 1, line.size()));
    Integer number = 0;
    const auto *const end = std::from_chars(text.data(), text.data() + text.size(), number).ptr;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.starts_with(' ')) text.remove_prefix(1);
    std::string item;
    AddItem(item, kind, number, text);
    return item;
}

std::string ItemsOf(const std::string &lines) {
    std::string items;
    for (std::size_t first = 0; first < lines.size();) {
        const auto end = std::min(lines.find('\n', first), lines.size());
        items += ItemOf(std::string_view(lines).substr(first, end - first));
        first = end + 1;
    }
    return items;
}

void WriteItems(const std::string &items) {
    RecoveryWriter file;
    file.Write(items);
    file.Close();
}

} // namespace

void TakeRecovery(const std::string &input) {
    static const Workplace place(SampleTemplate());
    static const std::string origin = EntriesOnScreen();
    std::string answer;
    std::string file;
    DivideInput(input, answer, file);
    place.Empty();
    EndSession();
    ClearRows(Quintave.Combo1);
    ClearRows(Quintave.Combo2);
    DeleteMatching(place.PathOf(""), "quintave-kept*.rec");
    if (answer.find('!') == std::string::npos)
        WriteItems(origin + ItemsOf(file));
    else
        place.Write(std::string(RecoveryName), file);
    place.Run([&] {
        Dialogs.Answers = {answer.starts_with('Y') ? YesAnswer : NoAnswer};
        if (!LoadMainWindow({})) return;
        ActivateMainWindow();
        Press(Quintave.LogoOff);
        DoubleClickRow(Quintave.List1[0], SampleGroupRow);
        if (Quintave.GrpExit.Visible) Press(Quintave.GrpExit);
        place.SaveAs("a.rpx");
        EndSession();
    });
    ProgramEnded();
}
