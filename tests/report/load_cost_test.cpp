// Loading and saving take time in proportion to the report, not to its square.
#include "support/report_test.h"

#include "main/template_command.h"

#include <algorithm>
#include <ctime>
#include <functional>

namespace {

constexpr int Few = 2000;
constexpr int Many = 8 * Few;

// A cost in proportion grows eightfold, a quadratic one 64-fold. Between the two a busy machine has room to err.
constexpr double MostGrowth = 24;

class LoadCost : public ReportTest {
protected:
    using Cost = std::function<double(int records)>;

    void SetUp() override { Start({}); }

    static std::string Named(const std::string &kind, int number) { return kind + std::to_string(number); }

    void UseTemplate(const std::vector<std::string> &lines) {
        folder.Write("SITE.FTF", TemplateText(lines));
        ASSERT_TRUE(LoadTemplateFile());
        FileMark = FirstLoad;
    }

    // Seconds of the processor that opening these lines, and saving what they brought, takes.
    double Seconds(const std::vector<std::string> &lines) {
        const std::string report = ReportText(lines);
        folder.Write("A.rpx", report);
        Forget();
        Dialogs.Answers = {NoAnswer};
        const std::clock_t before = std::clock();
        Add("A.rpx");
        const std::string saved = SaveAs("b.rpx");
        const std::clock_t after = std::clock();
        EXPECT_EQ(saved, report);
        return static_cast<double>(after - before) / CLOCKS_PER_SEC;
    }

    double Fields(int records) {
        std::vector<std::string> fields;
        std::vector<std::string> lines;
        for (int n = 1; n <= records; ++n) {
            fields.push_back(R"(1,60,"TEXT",")" + Named("Field", n) + R"(","","")");
            lines.push_back(R"(1,1,")" + Named("Field", n) + R"(","x")");
        }
        UseTemplate(fields);
        return Seconds(lines);
    }

    double Sections(int records) {
        std::vector<std::string> fields;
        std::vector<std::string> lines;
        for (int n = 1; n <= records / 2; ++n) {
            fields.push_back(R"(1,-1,"",")" + Named("Section", n) + R"(","","")");
            fields.emplace_back(R"(2,60,"TEXT","Empty","","")");
            fields.emplace_back(R"(3,60,"TEXT","Title","","")");
            lines.push_back(R"(1,-1,")" + Named("Section", n) + R"(","")");
            lines.emplace_back(R"(3,1,"Title","x")");
        }
        UseTemplate(fields);
        return Seconds(lines);
    }

    double Instances(int records) {
        UseTemplate({R"(1,60,"TEXT","Title","","")"});
        std::vector<std::string> lines;
        for (int n = 1; n <= records; ++n) lines.push_back(R"(1,1,"Title",")" + Named("x", n) + '"');
        return Seconds(lines);
    }

    double Occurrences(int records) {
        UseTemplate(
            {R"(1,2,"GROUP START","Samples","","")", R"(2,9,"TEXT","Depth","","")", R"(1,1,"GROUP END","","","")"});
        std::vector<std::string> lines;
        for (int n = 1; n <= records; ++n) {
            lines.push_back(Named(R"(1,-9,"Samples","REPEATING GROUP, Occurrence #)", n) + '"');
            lines.push_back(R"(2,1,"Depth",")" + Named("x", n) + '"');
        }
        lines.emplace_back(R"(1,-99,"END REPEATING GROUP","")");
        return Seconds(lines);
    }

    double ContinuationLines(int records) {
        UseTemplate({R"(1,999,"MEMO","Notes","","")"});
        std::vector<std::string> lines{"1," + std::to_string(records) + R"(,"Notes","x")"};
        for (int n = 2; n <= records; ++n) lines.push_back('"' + Named("x", n) + '"');
        return Seconds(lines);
    }

    static double LeastOf3(const Cost &cost, int records) {
        double least = cost(records);
        for (int run = 2; run <= 3; ++run) least = std::min(least, cost(records));
        return least;
    }

    static void ExpectLinear(const Cost &cost) {
        // Below a hundredth of a second the measure itself counts.
        const double few = std::max(LeastOf3(cost, Few), 0.01);
        EXPECT_LT(LeastOf3(cost, Many), MostGrowth * few);
    }
};

} // namespace

TEST_F(LoadCost, OfManyFieldsIsLinear) {
    ExpectLinear([this](int records) { return Fields(records); });
}

TEST_F(LoadCost, OfOneTitleInManySectionsIsLinear) {
    ExpectLinear([this](int records) { return Sections(records); });
}

TEST_F(LoadCost, OfManyInstancesIsLinear) {
    ExpectLinear([this](int records) { return Instances(records); });
}

TEST_F(LoadCost, OfManyOccurrencesIsLinear) {
    ExpectLinear([this](int records) { return Occurrences(records); });
}

TEST_F(LoadCost, OfManyContinuationLinesIsLinear) {
    ExpectLinear([this](int records) { return ContinuationLines(records); });
}
