// The main window as a tree of rows and columns (platform/layout.h). Sizes are in characters, so that they follow the
// user's font.
#include "main/layout.h"

#include "form/main_window.h"
#include "model/field_model.h"

namespace {

constexpr int ListColumns = 65; // the longest row, 63 dashes and blanks, and the scroll bar
constexpr int ListLines = 8;    // the fewest that are still a list
constexpr int EntryLines = 9;   // room below the list for the box or the choices of the selected row
constexpr int ChoiceLines = 6;  // leaves room for the box of another value below the choices
constexpr int Filling = 1000;   // share of a part beside which a Space gets nothing
constexpr int SectionLines = 4; // section, heading, heading in a heading ...; more where the window is larger
constexpr int SectionColumns = 26;
constexpr int NoteColumns = 56;
constexpr int OptionColumns = 38;
constexpr int OptionLabelColumns = 34;

Place One(Control &control, int columns = 0, int lines = 0, int stretch = 0) {
    return {Shape::One, &control, columns, lines, stretch, {}};
}

Place Frame(Control &frame, std::vector<Place> parts, int stretch = 0) {
    return {Shape::One, &frame, 0, 0, stretch, std::move(parts)};
}

Place Row(std::vector<Place> parts, int stretch = 0, int columns = 0) {
    return {Shape::Row, nullptr, columns, 0, stretch, std::move(parts)};
}

Place Column(std::vector<Place> parts, int stretch = 0, int lines = 0) {
    return {Shape::Column, nullptr, 0, lines, stretch, std::move(parts)};
}

Place Pages(std::vector<Place> parts, int stretch = 0) {
    return {Shape::Pages, nullptr, 0, 0, stretch, std::move(parts)};
}

Place Space() { return {Shape::Space, nullptr, 0, 0, 1, {}}; }

QuintaveForm &Q = Quintave;

Place BlankLine() { return Column({}, 0, 1); }

Place StartFrame() {
    return Frame(Q.Frame5,
                 {Space(),
                  Row({Space(), One(Q.Image1),
                       Column({One(Q.Label1), One(Q.Label6), One(Q.Label7), One(Q.Label9), BlankLine(),
                               Row({One(Q.Label5[0]), One(Q.DateLabel), Space()}), One(Q.Label5[1], NoteColumns),
                               BlankLine(), Row({One(Q.LogoOff), One(Q.LogoQuit), Space()})}),
                       Space()}),
                  Space(), Space()},
                 1);
}

Place GroupFrame() {
    return Frame(Q.TableFrame,
                 {One(Q.List1[GroupList], ListColumns, ListLines - 4, 1),
                  Row({Frame(Q.GrpCommands,
                             {Row({One(Q.FldChange[Previous]), One(Q.FldChange[Top]), One(Q.FldChange[Next]),
                                   One(Q.FldChange[Bottom]), One(Q.TblFldInsert), One(Q.TblFldDelete), Space()})},
                             1)}),
                  Row({One(Q.TblLabel), One(Q.TblFldNum), Space(), One(Q.GrpExit)})},
                 1);
}

Place SidePanel() {
    return Column({One(Q.SectionLabel, SectionColumns, SectionLines),
                   Row({One(Q.Label2), One(Q.DataLevelLabel), Space()}),
                   Frame(Q.MultiInstanceFrame, {Row({One(Q.FIPartner[0]), Space(), One(Q.FILabel[0])}),
                                                Row({One(Q.FIPartner[1]), Space(), One(Q.FILabel[1])}), One(Q.FIScroll),
                                                Row({One(Q.FIAdd), One(Q.FIDel)})}),
                   Space()});
}

// One of these is shown at a time, two for an open choice list; what is left over stays empty below them.
Place EntryArea() {
    return Column({One(Q.Text1[1], 0, 1), One(Q.Text1[2], 0, 3), One(Q.Text1[3], 0, 0, Filling), One(Q.Text1[4], 0, 1),
                   One(Q.Text1[5], 0, 3), One(Q.Text1[6], 0, 0, Filling), One(Q.List2[0], 0, ChoiceLines),
                   One(Q.List2[GroupList], 0, ChoiceLines), One(Q.Text2[2], 0, 1), One(Q.Text2[5], 0, 1), Space()},
                  0, EntryLines);
}

Place EntryFrame() {
    return Frame(Q.editframe,
                 {Row({Pages({One(Q.List1[0], ListColumns, ListLines, 1), GroupFrame()}, 1), SidePanel()}, 1),
                  Row({One(Q.helpline, 0, 2, 1), One(Q.CommandMoreHelp)}), EntryArea(),
                  Row({One(Q.CommandAdd), One(Q.CommandSave), One(Q.CommandSaveAs), One(Q.CommandPrint), Space(),
                       One(Q.CommandReset), One(Q.CommandTemplate), One(Q.CommandQuit)}),
                  One(Q.SizerTest)},
                 1);
}

// The label stands right beside what it names.
Place Option(Control &label, Place choice) {
    return Row({Space(), Row({Space(), One(label)}, 0, OptionLabelColumns), std::move(choice), Space()});
}

Place PrintPanel() {
    return Frame(
        Q.PrintFrame,
        {Space(),
         Option(Q.Label3[0], Column({One(Q.PrintFrameIndent, OptionColumns), One(Q.PrintFrameToggler, OptionColumns)})),
         Option(Q.Label3[1], One(Q.PrintIndent, OptionColumns, 1)), Option(Q.Label3[2], One(Q.Combo2, OptionColumns)),
         Option(Q.Label4[0], One(Q.Combo1, OptionColumns)), BlankLine(),
         Row({Space(), One(Q.PrintFramePrint[ToPrinter]), One(Q.PrintFramePrint[ToFile]), One(Q.PrintFrameCancel),
              Space()}),
         Option(Q.Label4[1], One(Q.printLabel, OptionColumns)), Space()},
        1);
}

} // namespace

Place MainLayout() {
    return Column({Pages({StartFrame(), EntryFrame(), PrintPanel()}, 1), One(Q.Dir1), One(Q.Timer1), One(Q.GivenTimer),
                   One(Q.RecoveryTimer)});
}
