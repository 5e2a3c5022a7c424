// Reports that are printed as inputs (targets.h). The first four characters of the first line choose: the indent of
// titles, the spaces to indent data, whether data begin on a line of their own, the separator.
#include "form/main_window.h"
#include "fuzz/targets.h"
#include "fuzz/workplace.h"
#include "platform/console/answers.h"
#include "print/print_panel.h"
#include "support/user.h"

namespace {

int Option(const std::string &options, std::size_t at) {
    return at < options.size() ? static_cast<unsigned char>(options[at]) - '0' : 0;
}

void Set(const std::string &options) {
    SetCaption(Quintave.PrintFrameIndent, NoIndent);
    for (int i = 0; i < (Option(options, 0) & 3); ++i) Press(Quintave.PrintFrameIndent);
    UserEdits(Quintave.PrintIndent, std::to_string(Option(options, 1) & 63), 1);
    SetCaption(Quintave.PrintFrameToggler, Option(options, 2) % 2 == 0 ? OnTitleLine : LineBelowTitle);
    UserSelects(Quintave.Combo2, static_cast<Integer>((Option(options, 3) & 255) % 6));
}

void Print(const Workplace &place, const std::string &input, PrintButton button) {
    std::string options;
    std::string file;
    DivideInput(input, options, file);
    place.Write("a.rpx", file);
    place.Run([&] {
        Dialogs.Answers = {NoAnswer};
        Dialogs.Texts = {place.PathOf("a.rpx"), place.PathOf("out.txt")};
        Press(Quintave.CommandPrint);
        Set(options);
        Press(Quintave.PrintFramePrint.at(static_cast<std::size_t>(button)));
        if (Quintave.PrintFrame.Visible) Press(Quintave.PrintFrameCancel);
    });
}

} // namespace

void TakeTextPrint(const std::string &input) {
    static const Workplace place(SampleTemplate());
    Print(place, input, ToFile);
}

void TakePagePrint(const std::string &input) {
    static const Workplace place(SampleTemplate());
    Print(place, input, ToPrinter);
}
