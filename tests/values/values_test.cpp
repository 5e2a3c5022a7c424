// The rooms of values without a front (values_test.h).
#include "values/values_test.h"

#include "model/field_tables.h"
#include "model/template_reader.h"
#include "model/text_files.h"
#include "model/work_files.h"
#include "platform/files.h"
#include "platform/items.h"
#include "report/choice_matching.h"
#include "report/title_index.h"
#include "report/writer.h"

#include <array>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

Told Heard;

namespace {

Answer Hear(const LoadNotice &notice) {
    Heard.Notices.push_back(notice);
    if (Heard.Reply) return Heard.Reply(notice);
    return (notice.Style & ButtonsMask) == YesNo ? YesAnswer : OkAnswer;
}

void HearRow(Integer row) { Heard.Rows.push_back(row); }

} // namespace

std::string Lines(const std::vector<std::string> &lines) {
    std::string text;
    for (const std::string &line : lines) text += line + "\r\n";
    return text;
}

std::string BytesOf(const std::function<void(OutputFile &)> &write) {
    const int handle = memfd_create("written", 0);
    if (handle < 0) throw std::runtime_error("memfd_create");
    const int reading = dup(handle);
    {
        OutputFile file(handle);
        write(file);
        file.Close(false);
    }
    std::string bytes;
    std::array<char, 4096> part{};
    lseek(reading, 0, SEEK_SET);
    for (ssize_t count = 0; (count = read(reading, part.data(), part.size())) > 0;)
        bytes.append(part.data(), static_cast<std::size_t>(count));
    close(reading);
    return bytes;
}

Values::Values() {
    HoldWorkFiles();
    Heard = {};
    ReportFileName = "a.rpx";
}

void Values::Load(const std::vector<std::string> &templateLines, const std::string &version) {
    ItemInput input =
        ItemsOf("\"QUINTAVE FIELDS TEMPLATE FILE\",\"" + version + "\",\"\",\"\",\"\",\"\"\r\n" + Lines(templateLines));
    std::string suffix;
    ASSERT_TRUE(ReadTemplateHeader(input, suffix));
    input.At = 0;
    const TemplateContent content = ReadTemplate(input);
    TemplateName = "SITE.FTF";
    ReplaceWorkFiles(content);
    FillTables(content, nullptr);
    AllowInstances = Truth(!TurnsInstancesOff(suffix));
    BuildTitleIndex();
    ForgetChoices();
}

LoadResult Values::Read(const std::vector<std::string> &records) {
    return ReadBytes("0,\"QuintaveV2\",\"SITE.FTF\"\r\n" + Lines(records));
}

LoadResult Values::ReadBytes(const std::string &bytes) {
    const LoadFront front{.Tell = Hear, .Placed = HearRow, .WantsLines = true};
    ItemInput input = ReportText(bytes);
    return ReadReport(input, front);
}

std::string Values::Written() {
    return BytesOf([](OutputFile &file) { WriteReport(file, TemplateName); });
}

std::string Values::Records() {
    const std::string header = "0,\"QuintaveV2\",\"SITE.FTF\"\r\n";
    const std::string bytes = Written();
    EXPECT_TRUE(bytes.starts_with(header)) << bytes;
    return bytes.substr(std::min(header.size(), bytes.size()));
}

std::vector<Notice> Values::Kinds() {
    std::vector<Notice> kinds;
    for (const LoadNotice &notice : Heard.Notices) kinds.push_back(notice.What);
    return kinds;
}
