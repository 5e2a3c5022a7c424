// Reports made up at random: nothing is lost, nothing stands outside its margins, and pages and text file hold the
// same.
#include "support/print_test.h"

#include "report/records.h"

#include <algorithm>
#include <random>

namespace {

constexpr int Rounds = 150;
constexpr std::size_t LineLength = 80;
constexpr std::size_t LongestIndent = 36; // of titles, at the deepest level below
constexpr int DeepestLevel = 10;

struct RandomRecord {
    int Level;
    int Count;
    std::string Title;
    std::vector<std::string> Lines; // of the value
};

std::string WithoutBlanks(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\r' || c == '\n'; });
    return text;
}

class RandomReports : public PrintTest {
protected:
    void SetUp() override {
        PrintTest::SetUp();
        const char *const given = std::getenv("QUINTAVE_SEED");
        seed = given != nullptr ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : std::random_device{}();
        random.seed(seed);
    }

    std::string Seed() const { return "QUINTAVE_SEED=" + std::to_string(seed); }

    int Number(int least, int most) { return std::uniform_int_distribution<>(least, most)(random); }

    // Words of letters and a few blanks; some words are longer than any line.
    std::string Words(int most) {
        std::string text;
        for (int words = Number(0, most); words > 0; --words) {
            const int length = Number(1, 40) == 1 ? Number(50, 200) : Number(1, 12);
            for (int i = 0; i < length; ++i) text += static_cast<char>(Number('a', 'z'));
            text.append(static_cast<std::size_t>(Number(1, 30) == 1 ? 5 : 1), ' ');
        }
        return text;
    }

    RandomRecord Record(std::size_t longestTitle) {
        static constexpr std::array Markers{-1, -2, -3, -9, -99};
        RandomRecord record{Number(0, DeepestLevel), 1, "T" + Words(8), {Words(40)}};
        record.Title.resize(std::min(record.Title.size(), longestTitle));
        if (Number(1, 3) == 1)
            record.Count = Markers.at(static_cast<std::size_t>(Number(0, Markers.size() - 1)));
        else if (Number(1, 3) == 1)
            record.Count = Number(1, 6);
        while (static_cast<int>(record.Lines.size()) < record.Count) record.Lines.push_back(Words(20));
        return record;
    }

    std::vector<RandomRecord> Report(std::size_t longestTitle) {
        std::vector<RandomRecord> records;
        for (int count = Number(0, 40); count > 0; --count) records.push_back(Record(longestTitle));
        return records;
    }

    PanelOptions Options() {
        PanelOptions options;
        options.Mode = Number(0, RawMode);
        options.Indent = std::to_string(Number(0, 60));
        options.Below = Number(0, 1) == 1;
        const auto &separators = Quintave.Combo2.Rows;
        options.Separator = separators[static_cast<std::size_t>(Number(0, static_cast<int>(separators.size()) - 1))];
        return options;
    }

    unsigned seed = 0;
    std::mt19937 random;
};

std::vector<std::string> LinesOf(const std::vector<RandomRecord> &records) {
    std::vector<std::string> lines;
    for (const auto &record : records) {
        lines.push_back(std::to_string(record.Level) + "," + std::to_string(record.Count) + ",\"" + record.Title +
                        "\",\"" + record.Lines[0] + "\"");
        for (std::size_t i = 1; i < record.Lines.size(); ++i) lines.push_back('"' + record.Lines[i] + '"');
    }
    return lines;
}

// All that is to be read of the records, without blanks.
std::string Expected(const std::vector<RandomRecord> &records, const PanelOptions &options) {
    const std::string separator = options.Separator.substr(1, options.Separator.size() - 2);
    std::string text;
    for (const auto &record : records) {
        const bool raw = options.Mode == RawMode;
        const bool plain = record.Count == -3 || (record.Count == HeadingMarker && options.Mode == 0);
        if (record.Count == GroupEndMarker)
            text += raw ? "" : "***" + record.Title + "***" + separator;
        else
            text += record.Title + (plain ? "" : separator);
        if (record.Count >= 0 || (record.Count == OccurrenceMarker && !raw))
            for (const auto &line : record.Lines) text += line;
    }
    return WithoutBlanks(text);
}

std::vector<std::string> SplitLines(const std::string &text) {
    std::vector<std::string> lines;
    for (std::size_t first = 0; first < text.size();) {
        const auto end = text.find("\r\n", first);
        lines.push_back(text.substr(first, end - first));
        first = end + 2;
    }
    return lines;
}

// The lines of a text file as the rules of the layout put them together, worked out piece by piece from the value.
class ExpectedText {
public:
    explicit ExpectedText(const PanelOptions &given)
        : options(given), separator(given.Separator.substr(1, given.Separator.size() - 2)) {}

    void Add(const RandomRecord &record) {
        const std::string indent = options.Mode == 0 ? "" : Blanks(record.Level - 1);
        const int margin = options.Mode == 0 ? 2 : 1; // level of a subtitle without an indent
        switch (record.Count) {
        case -3: AddCentred(record.Title); return;
        case -2: Text += Blanks(record.Level - margin) + record.Title + separator + "\r\n"; return;
        case HeadingMarker:
            if (options.Mode == 0) {
                Text += "\r\n\r\n";
                AddCentred(record.Title);
                Text += "\r\n";
            } else {
                Text += indent + record.Title + separator + "\r\n";
            }
            return;
        case GroupEndMarker:
            if (options.Mode != RawMode) Text += indent + "*** " + record.Title + "***" + separator + "\r\n";
            return;
        default: AddValue(record, indent + record.Title + separator);
        }
    }

    std::string Text;

private:
    static std::string Blanks(int levels) {
        return std::string(static_cast<std::size_t>(std::max(levels, 0)) * 4, ' ');
    }

    void AddCentred(const std::string &title) {
        Text += std::string(title.size() < LineLength ? (LineLength - title.size()) / 2 : 0, ' ') + title + "\r\n";
    }

    void AddValue(const RandomRecord &record, const std::string &title) {
        if (record.Count == OccurrenceMarker && options.Mode == RawMode) {
            Text += title + "\r\n";
            return;
        }
        const int column = options.Mode >= NestedData ? 4 * record.Level : std::stoi(options.Indent);
        const int length = static_cast<int>(title.size());
        std::string value;
        for (const auto &line : record.Lines)
            value += (value.empty() && &line == record.Lines.data() ? "" : "\r\n") + line;
        const bool fills = length == static_cast<int>(LineLength) && length > column && !value.empty();
        if (options.Below || fills) {
            Text += title + "\r\n";
            AddPieces(value, "", column, static_cast<int>(LineLength) - column, column);
        } else {
            const int start = std::max(column, length);
            const int room = static_cast<int>(LineLength) - start;
            AddPieces(value, title, start, room < 0 ? room + 80 : room, column);
        }
    }

    // A line breaks at a line break, or behind the last blank once it is full, or where it is full.
    void AddPieces(const std::string &value, std::string line, int column, int width, int nextColumn) {
        std::size_t begin = 0;
        std::size_t seen = 0; // characters that a break was looked for at
        while (true) {
            const std::size_t full = std::max(begin + static_cast<std::size_t>(std::max(width, 1)), seen + 1);
            const std::size_t broken = value.find("\r\n", seen);
            const bool breaks = broken != std::string::npos && broken < full;
            if (!breaks && full > value.size()) break;
            std::size_t end = breaks ? broken : full;
            std::size_t next = breaks ? broken + 2 : full;
            const std::size_t blank = value.rfind(' ', full - 1);
            if (!breaks && blank != std::string::npos && blank >= begin) end = next = blank + 1;
            AddLine(line, column, value.substr(begin, end - begin));
            begin = next;
            seen = breaks ? broken + 1 : full;
            line.clear();
            column = nextColumn;
            width = static_cast<int>(LineLength) - nextColumn;
        }
        AddLine(line, column, value.substr(std::min(begin, value.size())));
    }

    void AddLine(std::string line, int column, const std::string &piece) {
        if (!piece.empty()) line.resize(std::max(line.size(), static_cast<std::size_t>(column)), ' ');
        Text += line + piece + "\r\n";
    }

    const PanelOptions &options;
    const std::string separator;
};

bool IsPageHead(const PrintedText &text) {
    return text.Line == 6 || (text.Bold && text.Line == 8 && text.Text.ends_with("   (continued)..."));
}

} // namespace

TEST_F(RandomReports, KeepAllTheirWordsInOrderOnPagesAndInTheTextFile) {
    for (int round = 0; round < Rounds; ++round) {
        const auto records = Report(100);
        const PanelOptions options = Options();
        const std::string expected = Expected(records, options);
        ASSERT_EQ(WithoutBlanks(BodyOf(LinesOf(records), options)), expected) << Seed() << " round " << round;
        std::string printed;
        for (const auto &text : PagesOf(LinesOf(records), options))
            if (!IsPageHead(text)) printed += text.Text;
        ASSERT_EQ(WithoutBlanks(printed), expected) << Seed() << " round " << round;
    }
}

TEST_F(RandomReports, HaveEveryLineOfTheTextFileInItsPlace) {
    for (int round = 0; round < Rounds; ++round) {
        const auto records = Report(200);
        const PanelOptions options = Options();
        ExpectedText expected(options);
        for (const auto &record : records) expected.Add(record);
        ASSERT_EQ(BodyOf(LinesOf(records), options), expected.Text) << Seed() << " round " << round;
    }
}

TEST_F(RandomReports, StayWithin80ColumnsInTheTextFile) {
    for (int round = 0; round < Rounds; ++round) {
        const auto records = Report(LineLength - LongestIndent - std::string("***  ***").size() - 3);
        for (const auto &line : SplitLines(BodyOf(LinesOf(records), Options())))
            ASSERT_LE(line.size(), LineLength) << Seed() << " round " << round;
    }
}

TEST_F(RandomReports, LeaveThe80ColumnsOnlyAtATitleThatDoes) {
    for (int round = 0; round < Rounds; ++round) {
        const PanelOptions options = Options();
        const std::string separator = options.Separator.substr(1, options.Separator.size() - 2);
        const auto records = Report(200);
        bool beside = false; // a title too long for its line has just been written: its value is spread as stated
        for (const auto &line : SplitLines(BodyOf(LinesOf(records), options))) {
            const std::string text = Trim(line);
            const bool title = std::any_of(records.begin(), records.end(), [&](const RandomRecord &record) {
                return text.find(Trim(record.Title)) <= std::string_view("*** ").size() &&
                       LongestIndent + record.Title.size() + separator.size() + std::string_view("*** ***").size() >
                           LineLength;
            });
            if (line.size() > LineLength) {
                ASSERT_TRUE(title || beside) << Seed() << " round " << round << ": " << line;
            }
            beside = title;
        }
    }
}

TEST_F(RandomReports, StayWithinTheMarginsOfTheirPages) {
    for (int round = 0; round < Rounds; ++round) {
        const auto records = Report(static_cast<std::size_t>(RightLimit - LeftColumn) - LongestIndent -
                                    std::string("***  ***").size() - 3);
        double line = 0;
        int page = 0;
        for (const auto &text : PagesOf(LinesOf(records), Options())) {
            if (text.Page != page) line = 0;
            ASSERT_GE(text.Page, page) << Seed() << " round " << round;
            ASSERT_GE(text.Line, line) << Seed() << " round " << round;
            page = text.Page;
            line = text.Line;
            ASSERT_GE(text.Line, TopLine) << Seed() << " round " << round;
            ASSERT_LE(text.Line, LastLine + 1) << Seed() << " round " << round;
            ASSERT_GE(text.Column, LeftColumn) << Seed() << " round " << round;
            ASSERT_LE(text.Column + static_cast<double>(text.Text.size()), RightLimit) << Seed() << " round " << round;
        }
    }
}
