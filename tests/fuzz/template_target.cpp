// Fields Template Files as inputs (targets.h).
#include "form/main_window.h"
#include "fuzz/targets.h"
#include "fuzz/workplace.h"
#include "model/field_model.h"
#include "platform/console/answers.h"
#include "platform/files.h"
#include "support/user.h"

#include <algorithm>

namespace {

constexpr std::size_t MostRows = 12; // of each list are worked on

void WorkOnRow(Control &list, Integer row) {
    ClickRow(list, row);
    Type("m");
    PressEnter();
    Press(Quintave.FIAdd);
    PressKey(PageUpKey);
}

void WorkOnGroup() {
    Control &members = Quintave.List1[3];
    for (std::size_t row = 0; row < std::min(members.Rows.size(), MostRows); ++row)
        WorkOnRow(members, static_cast<Integer>(row));
    Press(Quintave.FldChange[Next]);
    Press(Quintave.TblFldInsert);
    Press(Quintave.GrpExit);
}

void WorkOnRows() {
    Control &rows = Quintave.List1[0];
    for (std::size_t row = 0; row < std::min(rows.Rows.size(), MostRows); ++row) {
        WorkOnRow(rows, static_cast<Integer>(row));
        DoubleClickRow(rows, static_cast<Integer>(row));
        if (Quintave.GrpExit.Visible) WorkOnGroup();
    }
}

} // namespace

void TakeTemplate(const std::string &input) {
    static const Workplace place(SampleTemplate());
    place.Empty();
    place.Write("NEW.FTF", input);
    place.Run([] {
        Dialogs.Texts = {place.PathOf("NEW.FTF")};
        Press(Quintave.CommandTemplate);
        WorkOnRows();
        place.SaveAs("a.rpx");
        place.Add("a.rpx");
    });
}
