// The index of title paths against a walk of the whole template for each record.
#include "support/report_test.h"

#include "main/template_command.h"
#include "report/title_index.h"

#include <cstdlib>
#include <map>
#include <random>

namespace {

// The search as a walk: slow, and nothing but its definition.
class Walk {
public:
    void Read(Integer level, const std::string &title) { read[level] = title; }

    Integer Find(Integer level, const std::string &title, Target target, Integer group) const {
        for (const bool wholePath : {true, false})
            for (Integer e = 1; e <= NumFields; ++e)
                if (IsWanted(e, target, group) && LevelOf(e) == level && FieldTitle[e] == title &&
                    (wholePath ? WholePathWasRead(e) : HeadingsWereRead(e)))
                    return e;
        return 0;
    }

private:
    static bool IsEndMark(Integer e) { return FieldInfo[e][TypeCode] == GroupMark && !IsGroupStart(e); }

    static bool IsWanted(Integer e, Target target, Integer group) {
        if (target == Target::Group) return IsGroupStart(e);
        if (target == Target::Member) return HasValue(e) && FieldGroup[e] == group;
        return HasValue(e) && FieldRow[e] > 0;
    }

    std::string LastRead(Integer level) const {
        const auto found = read.find(level);
        return found == read.end() ? "" : found->second;
    }

    // At every level from 1 to the element's the title last passed is the title last read.
    bool WholePathWasRead(Integer element) const {
        std::map<Integer, std::string> passed;
        for (Integer e = 1; e <= element; ++e)
            if (!IsEndMark(e)) passed[LevelOf(e)] = FieldTitle[e];
        for (Integer level = 1; level <= LevelOf(element); ++level)
            if (passed[level] != LastRead(level)) return false;
        return true;
    }

    // The section breaks and the open group around the element have the titles last read.
    bool HeadingsWereRead(Integer element) const {
        int outer = LevelOf(element);
        for (Integer e = static_cast<Integer>(element - 1); e >= 1; --e) {
            if (IsEndMark(e) || LevelOf(e) >= outer) continue;
            outer = LevelOf(e);
            if (IsHeadingOf(element, e) && FieldTitle[e] != LastRead(LevelOf(e))) return false;
        }
        return true;
    }

    // A heading before the element stands above it; that of a group that has ended, or one in it, does not.
    static bool IsHeadingOf(Integer element, Integer heading) {
        if (!IsSection(heading) && !IsGroupStart(heading)) return false;
        const Integer head = IsGroupStart(heading) ? heading : FieldGroup[heading];
        return head == 0 || GroupEnd(head) > element || LevelOf(heading) < LevelOf(head);
    }

    std::map<Integer, std::string> read;
};

class TitleIndex : public ReportTest {
protected:
    using Random = std::mt19937;

    static int Upto(Random &random, int largest) { return std::uniform_int_distribution<int>(0, largest)(random); }

    static std::string Title(Random &random) { return std::string(1, static_cast<char>('A' + Upto(random, 3))); }

    static std::string Level(Random &random) { return std::to_string(Upto(random, 7) - 2); }

    // Few titles and levels, so that the same path comes about in many ways.
    static std::vector<std::string> RandomTemplate(Random &random) {
        std::vector<std::string> lines;
        bool inGroup = false;
        for (int n = Upto(random, 25); n >= 0; --n) {
            const std::string end = ",\"" + Title(random) + R"(","","")";
            const int kind = Upto(random, 9);
            if (kind <= 1)
                lines.push_back(Level(random) + ",-1,\"\"" + end);
            else if (kind == 2)
                lines.push_back(Level(random) + "," + std::to_string(Upto(random, 1)) + ",\"TEXT\"" + end);
            else if (kind == 3) {
                lines.push_back(Level(random) + (inGroup ? ",1,\"GROUP END\"" : ",2,\"GROUP START\"") + end);
                inGroup = !inGroup;
            } else
                lines.push_back(Level(random) + (kind == 4 ? ",3,\"UNKNOWN\"" : ",3,\"TEXT\"") + end);
        }
        if (inGroup) lines.emplace_back(R"(1,1,"GROUP END","","","")");
        return lines;
    }

    void LoadTemplate(const std::vector<std::string> &lines) {
        folder.Write("SITE.FTF", TemplateText(lines));
        ASSERT_TRUE(LoadTemplateFile());
    }

    static void CompareRecords(Random &random) {
        Walk walk;
        ForgetTitlesRead();
        for (int record = 0; record < 60; ++record) {
            const auto level = static_cast<Integer>(Upto(random, DeepestLevel));
            const std::string title = Title(random);
            NoteTitleRead(level, title);
            walk.Read(level, title);
            for (const Target target : {Target::Field, Target::Group})
                ASSERT_EQ(FindElement(level, title, target), walk.Find(level, title, target, 0)) << record;
            for (Integer group = 1; group <= NumFields; ++group) {
                if (!IsGroupStart(group)) continue;
                ASSERT_EQ(FindElement(level, title, Target::Member, group),
                          walk.Find(level, title, Target::Member, group))
                    << record;
            }
        }
    }
};

} // namespace

TEST_F(TitleIndex, FindsWhatAWalkOfTheTemplateFinds) {
    Start({});
    for (unsigned seed = 1; seed <= 600; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Random random(seed);
        LoadTemplate(RandomTemplate(random));
        CompareRecords(random);
        if (HasFatalFailure()) return;
    }
}

TEST_F(TitleIndex, AGroupThatHasEndedStandsAboveNothingBehindIt) {
    Start({R"(1,2,"GROUP START","G","","")", R"(2,-1,"","H","","")", R"(3,5,"TEXT","M","","")",
           R"(1,1,"GROUP END","","","")", R"(3,60,"TEXT","F","","")"});
    ForgetTitlesRead();
    NoteTitleRead(3, "F");
    EXPECT_EQ(FindElement(3, "F", Target::Field), 5);
    EXPECT_EQ(FindElement(3, "M", Target::Member, 1), 0);
}

TEST_F(TitleIndex, ATitleReadAtADeeperLevelDoesNotCount) {
    Start({R"(1,60,"TEXT","A","","")", R"(2,60,"TEXT","B","","")"});
    ForgetTitlesRead();
    NoteTitleRead(2, "X");
    NoteTitleRead(1, "A");
    EXPECT_EQ(FindElement(1, "A", Target::Field), 1);
}

TEST_F(TitleIndex, TheWholePathWinsOverTheHeadingsAlone) {
    Start({R"(1,0,"","P","","")", R"(2,60,"TEXT","T","","")", R"(1,0,"","Q","","")", R"(2,60,"TEXT","T","","")"});
    ForgetTitlesRead();
    NoteTitleRead(1, "Q");
    NoteTitleRead(2, "T");
    EXPECT_EQ(FindElement(2, "T", Target::Field), 4);
    NoteTitleRead(1, "R");
    NoteTitleRead(2, "T");
    EXPECT_EQ(FindElement(2, "T", Target::Field), 2);
}
