// Stores of groups as inputs, and the commands of an open group on them (targets.h). A command is one letter: the four
// moves v t n b, i insert, d delete, j jump, e enter a value, w one of another script, x leave and enter again, s save,
// a add the report.
#include "form/main_window.h"
#include "fuzz/targets.h"
#include "fuzz/workplace.h"
#include "model/work_files.h"
#include "support/user.h"

namespace {

constexpr std::size_t Few = 3;
constexpr std::size_t Enough = 24;

void Jump() {
    UserEnters(Quintave.TblFldNum);
    UserSelects(Quintave.TblFldNum, static_cast<Integer>(Quintave.TblFldNum.Rows.size() / 2));
}

void EnterValue(std::string_view text) {
    DoubleClickRow(Quintave.List1[3], 0);
    Type(text);
    PressEnter();
}

void Do(const Workplace &place, char command) {
    if (!Quintave.GrpExit.Visible) DoubleClickRow(Quintave.List1[0], SampleGroupRow);
    switch (command) {
    case 'v': return Press(Quintave.FldChange[Previous]);
    case 't': return Press(Quintave.FldChange[Top]);
    case 'n': return Press(Quintave.FldChange[Next]);
    case 'b': return Press(Quintave.FldChange[Bottom]);
    case 'i': return Press(Quintave.TblFldInsert);
    case 'd': return Press(Quintave.TblFldDelete);
    case 'j': return Jump();
    case 'e': return EnterValue("7");
    case 'w': return EnterValue("\u5C71"); // not in the code page
    case 'x': return Press(Quintave.GrpExit);
    case 's': return place.SaveAs("a.rpx");
    case 'a': return place.Add("b.rpx");
    default: return;
    }
}

} // namespace

void TakeStore(const std::string &input) {
    static const Workplace place(SampleTemplate());
    std::string commands;
    std::string file;
    DivideInput(input, commands, file);
    place.Empty();
    place.Write("b.rpx", "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,-9,\"Samples\",\"#1\"\r\n2,1,\"Depth\",\"3\"\r\n"
                         "1,-99,\"END\",\"\"\r\n");
    place.Write(GroupFileName(SampleGroup), file);
    // Each command rewrites the store, so one that counts thousands of occurrences gets a few.
    const bool many = file.size() > 3 && file[3] != 0;
    place.Run([&] {
        for (const char command : FirstActs(commands).substr(0, many ? Few : Enough)) Do(place, command);
        if (Quintave.GrpExit.Visible) Press(Quintave.GrpExit);
        place.SaveAs("a.rpx");
    });
}
