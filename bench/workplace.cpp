// The folder of a measurement and what lies in it (workplace.h). The program at work without a window: at_work.cpp.
#include "workplace.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <unistd.h>
#include <vector>

namespace {

constexpr int FieldsPerSection = 100;

// The folder of this process; removed at its end.
struct TemporaryFolder {
    TemporaryFolder() {
        Path = (std::filesystem::temp_directory_path() / "quintave-bench-XXXXXX").string();
        if (mkdtemp(Path.data()) == nullptr) throw std::runtime_error("no temporary folder");
        Path += "/";
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(Path, ignored);
    }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    std::string Path;
};

} // namespace

const std::string &Folder() {
    static const TemporaryFolder folder;
    return folder.Path;
}

void WriteIn(const std::string &name, std::string_view bytes) {
    std::ofstream(Folder() + name, std::ios::binary) << bytes;
}

void WriteTemplateIn(std::string_view records) {
    WriteIn("quintave.tbl", "\"\",\"BENCH.FTF\",\"-1\"\r\n");
    WriteIn("BENCH.FTF",
            "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n" + std::string(records));
}

std::string ManyFields(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        if (i % FieldsPerSection == 0)
            text += "1,-1,\"\",\"Section " + std::to_string(i / FieldsPerSection) + "\",\"\",\"\"\r\n";
        text += "2,200,\"TEXT\",\"Field " + std::to_string(i) + "\",\"\",\"\"\r\n";
    }
    return text;
}

std::string ManyRecords(int fields) {
    std::string text = "0,\"QuintaveV2\",\"BENCH.FTF\"\r\n";
    for (int instance = 0; instance < 2; ++instance)
        for (int i = 0; i < fields; ++i) {
            if (i % FieldsPerSection == 0)
                text += "1,-1,\"Section " + std::to_string(i / FieldsPerSection) + "\",\"\"\r\n";
            text += "2,1,\"Field " + std::to_string(i) + "\",\"value number " + std::to_string(i) + "\"\r\n";
        }
    return text;
}

void CopyPlainly(const std::string &from, const std::string &to, Flush flush) {
    const int in = open(from.c_str(), O_RDONLY);
    const int out = open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (in < 0 || out < 0) throw std::runtime_error("copy");
    std::vector<char> block(1 << 16);
    for (ssize_t count = read(in, block.data(), block.size()); count > 0; count = read(in, block.data(), block.size()))
        if (write(out, block.data(), static_cast<std::size_t>(count)) != count) throw std::runtime_error("copy");
    if (flush == Flush::Yes && fsync(out) != 0) throw std::runtime_error("flush");
    close(in);
    close(out);
}
