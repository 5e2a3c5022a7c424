// Resource tables as inputs: the program starts anew with each (targets.h).
#include "form/main_window.h"
#include "fuzz/targets.h"
#include "fuzz/workplace.h"
#include "main/session.h"
#include "main/start_up.h"
#include "support/user.h"

void TakeTable(const std::string &input) {
    static const Workplace place(SampleTemplate());
    place.Empty();
    EndSession();
    ClearRows(Quintave.Combo1);
    ClearRows(Quintave.Combo2);
    place.Write("first.rpx", "0,\"QuintaveV2\",\"SITE.FTF\"\r\n2,1,\"Title\",\"Wells\"\r\n");
    place.Write("quintave.tbl", input);
    place.Run([] {
        if (!LoadMainWindow({})) return;
        ActivateMainWindow();
        Press(Quintave.LogoOff);
        EndSession();
    });
    ProgramEnded();
}
