// A report that was saved, loaded and saved again is the same, byte for byte: random templates and entries.
//
// What cannot come back stays out of them:
// - an empty instance beside others: adding an empty value adds nothing;
// - several instances of a field of a level below 0: there each value replaces the one before it;
// - a value that a closed list does not have: it is refused;
// - a group all of whose occurrences are blank, unless there is just one: a block without a value changes nothing;
// - members that are no deeper than their group: the titles above its next occurrence would be those of members;
// - two places with one title and level that no heading above them tells apart: the first in the template gets both.
#include "platform/codepage.h"
#include "support/memory_folder.h"
#include "support/report_test.h"
#include "support/stores.h"

#include "main/template_command.h"
#include "model/store.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>

namespace {

constexpr unsigned Runs = 2500;

class Random {
public:
    explicit Random(unsigned seed) : engine(seed) {}

    int UpTo(int largest) { return std::uniform_int_distribution<int>(0, largest)(engine); }
    int Between(int least, int largest) { return least + UpTo(largest - least); }
    bool Once(int in) { return UpTo(in - 1) == 0; }

    // A character that may be typed into a field.
    char Character() {
        while (true) {
            const auto c = static_cast<char>(Between(0x20, 0xFF));
            if (c != '|' && c != '"') return c;
        }
    }

    // A text of up to this many characters that does not end in a blank.
    std::string Text(int longest) {
        std::string text;
        for (int n = UpTo(longest); n > 0; --n) text += Once(6) ? ' ' : Character();
        return RTrim(text);
    }

    // The same in lines.
    std::string Lines(int longest) {
        std::string text = Text(longest);
        while (Once(2) && static_cast<int>(text.size()) + 2 <= longest)
            text += "\r\n" + Text(longest - static_cast<int>(text.size()) - 2);
        return text;
    }

private:
    std::mt19937 engine;
};

// What a template line makes, as far as an entry depends on it.
struct Field {
    bool Group = false;
    bool Member = false;
    bool Memo = false;
    int Level = 0;                      // signed
    int Cells = 0;                      // longest value
    std::vector<std::string> Choices{}; // of a LIST
    bool Open = false;
};

struct Heading {
    int Level;
    std::string Title;
};

// A place that records can belong to, and the headings around it.
struct Place {
    int Level;
    std::string Title;
    int Group; // element of the group it is a member of, 0 outside, -1 for a group itself
    std::vector<Heading> Around;
};

// Some heading tells the one from the other whatever else was read.
bool AreApart(const Place &a, const Place &b) {
    if (a.Level != b.Level || a.Title != b.Title || a.Group != b.Group) return true;
    for (const Heading &outer : a.Around)
        for (const Heading &other : b.Around)
            if (outer.Level >= 1 && outer.Level == other.Level && outer.Title != other.Title) return true;
    return false;
}

class RandomTemplate {
public:
    explicit RandomTemplate(Random &source) : random(source) {
        for (int n = random.UpTo(20); n >= 0; --n) {
            if (random.Once(5))
                AddGroup();
            else
                AddElement(0);
        }
    }

    std::vector<std::string> Lines;
    std::vector<Field> Fields{{}}; // by element

private:
    int Level() { return random.UpTo(5); }

    std::string Title() {
        static constexpr std::array<const char *, 6> Titles{"Title", "Notes", "a, b", " x", "K\xF6ln's", ""};
        return Titles.at(static_cast<std::size_t>(random.UpTo(5)));
    }

    void AddLine(int level, int kind, const std::string &type, const std::string &title, const Field &field) {
        Lines.push_back(std::to_string(level) + "," + std::to_string(kind) + ",\"" + type + "\",\"" + title +
                        R"(","","")");
        Fields.push_back(field);
    }

    void Pass(int level) {
        while (!around.empty() && around.back().Level >= level) around.pop_back();
    }

    // A title for a place of this level that no other place has in the same surroundings.
    std::string PlaceTitle(int level, int group) {
        Pass(level);
        Place place{level, Title(), group, around};
        const auto apart = [&](const Place &other) { return AreApart(place, other); };
        if (!std::all_of(places.begin(), places.end(), apart)) place.Title = "Only " + std::to_string(Fields.size());
        places.push_back(place);
        return place.Title;
    }

    void AddHeading(int level) {
        Pass(level);
        const std::string title = Title();
        AddLine(level, -1, "", title, {});
        around.push_back({level, title});
    }

    // Of a field, or of a member of a group at some level; -1 outside groups.
    void AddElement(int group, int groupLevel = -1) {
        const int level = std::max(Level(), groupLevel + 1);
        switch (random.UpTo(9)) {
        case 0:
        case 1: AddHeading(level); break;
        case 2:
            Pass(level);
            AddLine(level, random.UpTo(1), "TEXT", Title(), {});
            break;
        case 3:
        case 4: AddList(level, group); break;
        default: AddBox(level, group);
        }
    }

    int Signed(int level) { return random.Once(4) ? -level : level; }

    void AddBox(int level, int group) {
        Field field{
            .Member = group != 0, .Memo = random.Once(3), .Level = Signed(level), .Cells = random.Between(2, 70)};
        AddLine(field.Level, field.Cells, field.Memo ? "MEMO" : "TEXT", PlaceTitle(level, group), field);
    }

    void AddList(int level, int group) {
        Field field{
            .Member = group != 0, .Level = Signed(level), .Cells = random.Between(2, 30), .Open = random.Once(2)};
        for (int n = random.Between(1, 4); n > 0; --n) {
            std::string choice = random.Text(20) + "." + std::to_string(n);
            if (random.Once(4)) choice += "  ";
            field.Choices.push_back(choice);
        }
        AddLine(field.Level, field.Cells, "LIST", PlaceTitle(level, group), field);
        for (const auto &choice : field.Choices) Lines.push_back('"' + choice + '"');
        if (field.Open) Lines.emplace_back("\"Other...\"");
        Lines.emplace_back("XXX-1XXX");
    }

    void AddGroup() {
        const int level = Level();
        const int head = static_cast<int>(Fields.size());
        const std::string title = PlaceTitle(level, -1);
        AddLine(level, 2, "GROUP START", title, {.Group = true});
        around.push_back({level, title});
        for (int n = random.UpTo(5); n > 0; --n) AddElement(head, level);
        AddLine(Level(), 1, "GROUP END", "", {});
        Pass(level);
    }

    Random &random;
    std::vector<Heading> around;
    std::vector<Place> places;
};

class RoundTrip : InMemory, public ReportTest {
protected:
    void SetUp() override { Start({}); }

    std::string Value(Random &random, const Field &field, int longest) {
        if (!field.Choices.empty() && (!field.Open || random.Once(2)))
            return RTrim(
                field.Choices.at(static_cast<std::size_t>(random.UpTo(static_cast<int>(field.Choices.size()) - 1)))
                    .substr(0, static_cast<std::size_t>(longest)));
        return field.Memo ? random.Lines(longest) : random.Text(longest);
    }

    std::string SlotValue(Random &random, const Field &field) {
        std::string slot = Value(random, field, 70);
        if (field.Level < 0 || slot.empty()) return slot;
        while (random.Once(3)) {
            const std::string next = Value(random, field, 70);
            if (next.empty()) continue;
            slot += "|" + next;
            ++instances;
        }
        return slot;
    }

    std::string OccurrenceCells(Random &random, const RandomTemplate &made, Integer head) {
        std::string cells;
        for (auto e = static_cast<std::size_t>(head) + 1; e < static_cast<std::size_t>(GroupEnd(head)); ++e) {
            const Field &field = made.Fields.at(e);
            if (field.Cells == 0) continue;
            std::string value = random.Once(3) ? "" : Value(random, field, field.Cells);
            value.resize(static_cast<std::size_t>(field.Cells), ' ');
            cells += value;
        }
        return cells;
    }

    void EnterGroup(Random &random, const RandomTemplate &made, Integer head) {
        std::string cells;
        for (int n = random.UpTo(4); n > 0; --n) cells += OccurrenceCells(random, made, head);
        if (RTrim(cells).empty()) return;
        PutStore(head, cells);
        ++groups;
    }

    void EnterValues(Random &random, const RandomTemplate &made) {
        for (Integer e = 1; e <= NumFields; ++e) {
            const Field &field = made.Fields.at(static_cast<std::size_t>(e));
            if (random.Once(3)) continue;
            if (field.Group) EnterGroup(random, made, e);
            if (field.Cells == 0 || field.Member) continue;
            const std::string slot = SlotValue(random, field);
            RowValue[static_cast<Integer>(FieldRow[e] - 1)] = ToUtf8(slot);
            bytes.insert(slot.begin(), slot.end());
        }
    }

    void LoadTemplate(const RandomTemplate &made) {
        folder.Write("SITE.FTF", TemplateText(made.Lines));
        FileMark = FirstLoad;
        ASSERT_TRUE(LoadTemplateFile());
        ASSERT_EQ(static_cast<std::size_t>(NumFields) + 1, made.Fields.size());
    }

    void ResetAnsweringNo() {
        DataChanged = True;
        Dialogs.Answers = {NoAnswer};
        Press(Quintave.CommandReset);
        for (const std::string &value : RowValue) ASSERT_EQ(value, "");
        Forget();
    }

    void RunSeed(unsigned seed) {
        Random random(seed);
        const RandomTemplate made(random);
        LoadTemplate(made);
        EnterValues(random, made);
        const std::string first = SaveAs("first.rpx");
        ResetAnsweringNo();
        Dialogs.Answers = {NoAnswer};
        Add("first.rpx");
        for (const auto &message : Dialogs.Messages) EXPECT_EQ(message, FieldMergeMessage());
        EXPECT_LE(Dialogs.Messages.size(), 1U);
        ASSERT_EQ(SaveAs("second.rpx"), first) << Lines(made.Lines);
        Forget();
        for (const char *name : {"first.rpx", "second.rpx"}) std::filesystem::remove(folder.Path() + name);
        DeleteMatching(ResourceDir, "*.$$$"); // the temporary report of the merge
    }

    // What the entries of all runs held.
    int instances = 0;
    int groups = 0;
    std::set<char> bytes;
};

} // namespace

TEST_F(RoundTrip, AReportSavedLoadedAndSavedAgainIsTheSame) {
    for (unsigned seed = 1; seed <= Runs; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        RunSeed(seed);
        if (HasFailure()) return;
    }
    // The runs were worth making.
    EXPECT_GT(instances, 1000);
    EXPECT_GT(groups, 1000);
    for (int code = 0x20; code <= 0xFF; ++code)
        EXPECT_EQ(bytes.count(static_cast<char>(code)), code == '"' ? 0U : 1U) << code;
}
