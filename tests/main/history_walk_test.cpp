// Random work, undone to its beginning and done again: each state comes back as it was. A run is 300 steps, or with
// QUINTAVE_LONG 1,000; UNDO_STEPS in the environment makes as many in such runs, UNDO_SEED other ones.
#include "main/history.h"

#include "groups/open_group.h"
#include "model/cells.h"
#include "model/store.h"
#include "platform/console/progress.h"
#include "report/writer.h"
#include "support/report_test.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <random>

namespace {

const std::vector<std::string> Fields{R"(1,30,"TEXT","Title","","")",
                                      R"(1,30,"LIST","Colour","","")",
                                      "Red",
                                      "Blue",
                                      "OTHER...",
                                      "XXX-1XXX",
                                      R"(1,999,"MEMO","Notes","","")",
                                      R"(1,2,"GROUP START","Sample","","")",
                                      R"(2,5,"TEXT","Depth","","")",
                                      R"(2,9,"LIST","Kind","","")",
                                      "Sand",
                                      "Clay",
                                      "XXX-1XXX",
                                      R"(1,0,"GROUP END","","","")",
                                      R"(1,2,"GROUP START","Part","","")",
                                      R"(2,8,"MEMO","Note","","")",
                                      R"(1,0,"GROUP END","","","")",
                                      R"(-1,30,"TEXT","Last","","")"};
const std::vector<std::string> OtherFields{R"(1,30,"TEXT","Title","","")", R"(1,2,"GROUP START","Sample","","")",
                                           R"(2,7,"TEXT","Depth","","")", R"(1,0,"GROUP END","","","")"};

int FromEnvironment(const char *name, int otherwise) {
    const char *const text = std::getenv(name);
    return text == nullptr ? otherwise : std::atoi(text);
}

// All that an undo brings back.
struct Entered {
    std::string Template;
    Table<std::string> Rows;
    std::map<Integer, Cells> Stores;
    bool operator==(const Entered &) const = default;
};

Entered EnteredNow() {
    Entered now{TemplateName, RowValue, {}};
    for (const Integer e : Elements()) {
        if (!IsGroupStart(e)) continue;
        Cells &store = now.Stores[e];
        ReadStore(e, store);
        if (GroupIsOpen() && GroupHead() == e)
            PutOccurrence(store, Members(e), static_cast<std::size_t>(GroupLoadedOccurrence), GroupItems);
        Tighten(store, Members(e));
    }
    return now;
}

class HistoryWalk : public ReportTest {
protected:
    int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); }

    std::string Word() {
        std::string word;
        for (int n = Below(6); n >= 0; --n) word += static_cast<char>('a' + Below(26));
        constexpr std::array Others{"é", "Ł", "山", "x\u030C"};
        if (Below(8) == 0) word += Others.at(static_cast<std::size_t>(Below(4)));
        return word;
    }

    void TypeValue() {
        Open(static_cast<Integer>(Below(static_cast<int>(ActiveRows().Rows.size()))));
        const Control *const box = Focused();
        if (box == nullptr || box->Type != Kind::TextBox) return;
        Type(Word());
        if (Below(3) > 0) PressEnter(CtrlMask);
    }

    void Choose() {
        Control &choices = ActiveChoices();
        if (!IsUsable(choices) || choices.Rows.empty()) return;
        DoubleClickRow(choices, static_cast<Integer>(Below(static_cast<int>(choices.Rows.size()))));
    }

    void SelectAny() { Select(static_cast<Integer>(Below(static_cast<int>(ActiveRows().Rows.size())))); }

    void UseInstances() {
        if (!IsUsable(Quintave.FIAdd)) return;
        const int act = Below(3);
        if (act == 0) Press(Quintave.FIAdd);
        if (act == 1) Press(Quintave.FIDel);
        if (act == 2 && Quintave.FIScroll.Max > 1)
            UserScrolls(Quintave.FIScroll, static_cast<Integer>(1 + Below(Quintave.FIScroll.Max)));
    }

    void UseGroup() {
        constexpr std::string_view Keys = "NNNVTBDDIIE";
        if (!GroupIsOpen()) Open(static_cast<Integer>(Below(static_cast<int>(ActiveRows().Rows.size()))));
        if (GroupIsOpen()) PressCtrl(Keys.at(static_cast<std::size_t>(Below(static_cast<int>(Keys.size())))));
    }

    void Empty() {
        Dialogs.Answers = {YesAnswer};
        SelectAny();
        PressKey(DeleteKey);
    }

    void Merge() {
        folder.Write("more.rpx", ReportText({"1,1,\"Title\",\"" + Word() + "\"", "1,1,\"Title\",\"" + Word() + "\"",
                                             R"(1,-9,"Sample","REPEATING GROUP, Occurrence #1")",
                                             "2,1,\"Depth\",\"" + Word() + "\"", R"(1,-99,"END REPEATING GROUP","")"}));
        Dialogs.Answers.assign(6, Below(2) == 0 ? YesAnswer : NoAnswer);
        Dialogs.Texts = {folder.Path() + "more.rpx"};
        PressCtrl('A');
    }

    void Save() {
        Dialogs.Texts = {folder.Path() + (Below(2) == 0 ? "one.rpx" : "two.rpx")};
        if (Below(2) == 0)
            PressCtrl('S');
        else
            Press(Quintave.CommandSaveAs);
    }

    void Reset() {
        Dialogs.Answers.assign(2, Below(3) == 0 ? YesAnswer : NoAnswer);
        Dialogs.Texts = {folder.Path() + "one.rpx"};
        PressCtrl('R');
    }

    void ChangeTemplate() {
        Dialogs.Answers.assign(2, NoAnswer);
        Dialogs.Texts = {folder.Path() + (Below(2) == 0 ? "OTHER.FTF" : "SITE.FTF")};
        PressCtrl('F');
    }

    void Act() {
        using Kind = void (HistoryWalk::*)();
        // Each kind up to its share of 1,000.
        constexpr std::array<std::pair<int, Kind>, 9> Kinds{{{400, &HistoryWalk::TypeValue},
                                                             {480, &HistoryWalk::Choose},
                                                             {560, &HistoryWalk::SelectAny},
                                                             {680, &HistoryWalk::UseInstances},
                                                             {900, &HistoryWalk::UseGroup},
                                                             {930, &HistoryWalk::Empty},
                                                             {960, &HistoryWalk::Merge},
                                                             {985, &HistoryWalk::Save},
                                                             {1000, &HistoryWalk::Reset}}};
        const int kind = Below(1000);
        for (const auto &[end, act] : Kinds)
            if (kind < end) {
                (this->*act)();
                break;
            }
        if (Below(150) == 0) ChangeTemplate();
        Dialogs = {};
    }

    // Undoes (does again) a step; false where there is none.
    static bool Step(char key) {
        PressCtrl(key);
        EXPECT_TRUE(Dialogs.Messages.empty()) << LastMessage().Text;
        return !Progress.Note.starts_with("There is nothing");
    }

    // Back to the first state, forth to the last one: the same states, one step from the other.
    void GoBackAndForth(const Entered &first, const std::vector<Entered> &marks) {
        const Entered last = EnteredNow();
        std::vector<Entered> passed{last};
        std::vector<bool> saved{DataChanged == False};
        while (Step('Z')) {
            passed.push_back(EnteredNow());
            saved.push_back(DataChanged == False);
        }
        EXPECT_GT(passed.size(), marks.size() / 2); // most acts change something
        EXPECT_TRUE(passed.back() == first);
        for (const Entered &mark : marks)
            EXPECT_NE(std::find(passed.rbegin(), passed.rend(), mark), passed.rend()) << "a state was not passed";
        for (std::size_t at = passed.size() - 1; at-- > 0 && !HasFailure();) {
            ASSERT_TRUE(Step('Y')) << at;
            EXPECT_TRUE(EnteredNow() == passed[at]) << at;
            EXPECT_FALSE(passed[at] == passed[at + 1])
                << "a step that changed nothing, " << at << ": " << Progress.Note;
            // Where the work ended something may have been typed and taken back by hand.
            EXPECT_TRUE(at == 0 || saved[at] == (DataChanged == False)) << at;
        }
        EXPECT_FALSE(Step('Y'));
        EXPECT_TRUE(EnteredNow() == last);
    }

    void Run(int steps) {
        PressCtrl('T'); // nothing, but a look
        const Entered first = EnteredNow();
        std::vector<Entered> marks;
        for (int step = 0; step < steps; ++step) {
            Act();
            // Later undone states are gone once something new is entered; a mark is only what leads to the end.
            if (step % 10 == 0) marks.push_back(WithoutOpenEdit());
        }
        WithoutOpenEdit();
        GoBackAndForth(first, marks);
    }

    // A state that is none in between: an edit that is still open is committed first.
    static Entered WithoutOpenEdit() {
        ClickRow(ActiveRows(), std::max<Integer>(ActiveRows().ListIndex, 0));
        return EnteredNow();
    }

    std::mt19937 random{static_cast<unsigned>(FromEnvironment("UNDO_SEED", 1))};
};

TEST_F(HistoryWalk, LeadsBackToTheFirstStateAndForthToTheLast) {
    Start(Fields);
    folder.Write("OTHER.FTF", TemplateText(OtherFields));
    const int inARun = FromEnvironment("QUINTAVE_LONG", 0) != 0 ? 1000 : 300;
    int left = FromEnvironment("UNDO_STEPS", 2 * inARun);
    for (; left > 0 && !HasFailure(); left -= inARun) {
        Dialogs = {};
        Run(std::min(left, inARun));
        while (Step('Z') && !HasFailure()) {
        }
    }
}

} // namespace
