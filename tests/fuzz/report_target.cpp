// Reports that are added to entries as inputs (targets.h).
#include "form/main_window.h"
#include "fuzz/targets.h"
#include "fuzz/workplace.h"
#include "platform/console/answers.h"
#include "support/user.h"

namespace {

Answer AnswerOf(char letter) {
    switch (letter) {
    case 'Y': return YesAnswer;
    case 'N': return NoAnswer;
    case 'O': return OkAnswer;
    default: return CancelAnswer;
    }
}

void EnterGroupValue() {
    DoubleClickRow(Quintave.List1[0], SampleGroupRow + 1);
    DoubleClickRow(Quintave.List1[3], 0);
    Type("12");
    PressEnter();
    Press(Quintave.GrpExit);
}

} // namespace

void TakeReport(const std::string &input) {
    static const Workplace place(SampleTemplate());
    std::string answers;
    std::string file;
    DivideInput(input, answers, file);
    place.Empty();
    place.Write("a.rpx", file);
    place.Run([&] {
        DoubleClickRow(Quintave.List1[0], 0);
        Type("Wells");
        PressEnter();
        if (answers.starts_with('Y')) EnterGroupValue();
        for (const char letter : answers) Dialogs.Answers.push_back(AnswerOf(letter));
        place.Add("a.rpx");
        place.SaveAs("b.rpx");
        place.Add("b.rpx");
    });
}
