// Files of choice lists as inputs (targets.h).
#include "form/main_window.h"
#include "fuzz/targets.h"
#include "fuzz/workplace.h"
#include "model/work_files.h"
#include "platform/console/answers.h"
#include "screen/selection.h"
#include "support/user.h"

namespace {

void TypeOn(Control &rows, Integer row, const std::string &letters) {
    for (const char letter : FirstActs(letters)) {
        ClickRow(rows, row);
        if (letter == '+')
            Press(Quintave.FIAdd);
        else if (letter >= '0' && letter <= '9')
            DoubleClickRow(rows, row);
        else if (letter >= ' ' && letter <= '~')
            Type({&letter, 1});
        if (ActiveChoices().Visible && letter >= '0' && letter <= '9')
            DoubleClickRow(ActiveChoices(), static_cast<Integer>(letter - '0'));
        PressEnter();
    }
}

} // namespace

void TakeChoices(const std::string &input) {
    static const Workplace place(SampleTemplate());
    std::string letters;
    std::string file;
    DivideInput(input, letters, file);
    place.Empty();
    place.Write(ChoiceFileName(SampleList), file);
    place.Write(ChoiceFileName(SampleGroup + 3), file);
    place.Run([&] {
        Quintave.List2[0].Tag.clear(); // the lists are filled anew
        Quintave.List2[3].Tag.clear();
        TypeOn(Quintave.List1[0], SampleListRow - 1, letters);
        DoubleClickRow(Quintave.List1[0], SampleGroupRow);
        TypeOn(Quintave.List1[3], 1, letters);
        Press(Quintave.GrpExit);
        place.SaveAs("a.rpx");
        place.Add("a.rpx");
    });
}
