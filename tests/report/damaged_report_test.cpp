// Reports cut short or damaged in any place: one message at most, and what stood before the fault is on the screen.
#include "support/memory_folder.h"
#include "support/report_test.h"
#include "support/stores.h"

#include "model/store.h"
#include "platform/files.h"

namespace {

const std::vector<std::string> Fields{
    R"(1,-1,"","Citation","","")",
    R"(2,60,"TEXT","Title","","")",
    R"(2,999,"MEMO","Notes","","")",
    R"(2,9,"LIST","Kind","","")",
    "\"Map\"",
    "\"OTHER...\"",
    "XXX-1XXX",
    R"(1,2,"GROUP START","Samples","","")",
    R"(2,5,"TEXT","Depth","","")",
    R"(2,20,"MEMO","Log","","")",
    R"(1,1,"GROUP END","","","")",
    R"(1,60,"TEXT","Last","","")",
};
constexpr Integer Samples = 5;

const std::string Sample =
    ReportText({R"(1,-1,"Citation","")", R"(2,1,"Title","Wells")", R"(2,3,"Notes","a")", R"("")", R"("c")",
                R"(2,1,"Kind","Map")", R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(2,1,"Depth","12")",
                R"(2,2,"Log","x")", R"("y")", R"(1,-9,"Samples","REPEATING GROUP, Occurrence #2")",
                R"(2,1,"Depth","15")", R"(1,-99,"END REPEATING GROUP","")", R"(1,1,"Last","z")"});

std::string Cells(const std::string &depth, const std::string &log) {
    return depth + std::string(5 - depth.size(), ' ') + log + std::string(20 - log.size(), ' ');
}

// A record of the sample: where it ends, and what it puts on the screen.
struct Placed {
    std::string Last; // the end of its text in the file
    std::string Title, Notes, Kind, Stored, End;
};

const std::string Blank = Cells("", "");
const std::string First = Cells("12", "x\r\ny");

// The states of the screen, one after the other.
const Placed States[] = {
    {"SITE.FTF\"", "", "", "", Blank, ""},
    {"\"Wells\"", "Wells", "", "", Blank, ""},
    {"\"c\"", "Wells", "a\r\n\r\nc", "", Blank, ""},
    {"\"Map\"", "Wells", "a\r\n\r\nc", "Map", Blank, ""},
    {"\"12\"", "Wells", "a\r\n\r\nc", "Map", Cells("12", ""), ""},
    {"\"y\"", "Wells", "a\r\n\r\nc", "Map", First, ""},
    {"#2\"", "Wells", "a\r\n\r\nc", "Map", First + Blank, ""},
    {"\"15\"", "Wells", "a\r\n\r\nc", "Map", First + Cells("15", ""), ""},
    {"\"z\"", "Wells", "a\r\n\r\nc", "Map", First + Cells("15", ""), "z"},
};

// The state that the first bytes of the sample give.
const Placed &StateAt(std::size_t length) {
    std::size_t state = 0;
    while (state + 1 < std::size(States) &&
           Sample.find(States[state + 1].Last) + States[state + 1].Last.size() <= length)
        ++state;
    return States[state];
}

// The first bytes end at the end of a record, line ends aside.
bool EndsWithRecord(std::size_t length) {
    const std::string rest = Sample.substr(length);
    const bool lineEnd = rest.empty() || rest[0] == '\r' || rest[0] == '\n';
    if (!lineEnd && Sample[length - 1] != '\n') return false;
    // A continuation line that is still to come makes the record incomplete.
    const auto next = rest.find_first_not_of("\r\n");
    return next == std::string::npos || rest[next] != '"';
}

class DamagedReport : InMemory, public ReportTest {
protected:
    void SetUp() override { Start(Fields); }

    void LoadBytes(const std::string &bytes) {
        Press(Quintave.CommandReset); // where it asks whether to save, the default answer is No
        Forget();
        DeleteMatching(ResourceDir, "*.$$$"); // the temporary report of the merge before
        folder.Write("A.rpx", bytes);
        Add("A.rpx");
    }
};

} // namespace

TEST_F(DamagedReport, CutAtAnyByteGivesOneMessageAndWhatStoodBefore) {
    const std::size_t headerEnd = ReportHeader.size() - 2;
    for (std::size_t length = 0; length <= Sample.size(); ++length) {
        SCOPED_TRACE(length);
        LoadBytes(Sample.substr(0, length));
        std::vector<ShownMessage> expected;
        if (length < headerEnd)
            expected = {InvalidFormatMessage()};
        else if (Sample[length - 1] == '-') // no number yet
            expected = {LoadMessage("A.rpx", "13 - Type mismatch")};
        else if (!EndsWithRecord(length))
            expected = {LoadMessage("A.rpx", "62 - Input past end of file")};
        ASSERT_EQ(Dialogs.Messages, expected);
        const Placed &state = StateAt(length);
        EXPECT_EQ(RowValue[0], state.Title);
        EXPECT_EQ(RowValue[1], state.Notes);
        EXPECT_EQ(RowValue[2], state.Kind);
        EXPECT_EQ(RowValue[4], state.End);
        EXPECT_EQ(StoredCells(Samples), state.Stored);
        EXPECT_EQ(CurrentField, 0);
    }
}

TEST_F(DamagedReport, AnyOneByteChangedGivesOneErrorAtMostAndLeavesTheValuesBeforeIt) {
    const auto stands = [](Integer row, const std::string &value) { return value.empty() || RowValue[row] == value; };
    for (const char damage : {'"', ',', '\n', '9', '-', '\0', '\x1A'}) {
        for (std::size_t at = 0; at < Sample.size(); ++at) {
            SCOPED_TRACE(testing::Message() << at << " becomes " << int{damage});
            std::string bytes = Sample;
            bytes[at] = damage;
            LoadBytes(bytes);
            const auto errors =
                std::count_if(Dialogs.Messages.begin(), Dialogs.Messages.end(),
                              [](const ShownMessage &message) { return (message.Style & IconMask) == CriticalIcon; });
            ASSERT_LE(errors, 1);
            ASSERT_EQ(CurrentField, 0);
            const Placed &state = StateAt(std::max<std::size_t>(at, 1) - 1); // what delimits a record is a part of it
            ASSERT_TRUE(stands(0, state.Title) && stands(1, state.Notes) && stands(2, state.Kind));
            if (bytes == Sample) {
                ASSERT_TRUE(Dialogs.Messages.empty());
            }
        }
    }
}
