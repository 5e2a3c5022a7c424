// The program on the repository's own resources, copied into the test's folder.
#pragma once

#include "support/report_test.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

inline std::string BytesOf(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("no file " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

// The names of the files of a folder of the repository that end so.
inline std::vector<std::string> NamesIn(const std::string &folder, const std::string &ending) {
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(std::string(PROJECT_FOLDER "/") + folder))
        if (entry.path().filename().string().ends_with(ending)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

class ResourcesTest : public ReportTest {
protected:
    // Starts the program on one of the shipped templates, past the start-up frame.
    void StartOn(const std::string &name) {
        for (const char *ending : {".FTF", ".HLP"})
            for (const auto &file : NamesIn("resources", ending))
                folder.Write(file, BytesOf(std::string(PROJECT_FOLDER "/resources/") + file));
        folder.Write("quintave.tbl", "\"\",\"" + name + "\",\"-1\"\r\n");
        StartUp();
        Press(Quintave.LogoOff);
        ASSERT_EQ(TemplateName, name);
        ASSERT_TRUE(Dialogs.Messages.empty());
    }
};

// The test's name of a file name.
inline std::string NameWithoutEnding(const testing::TestParamInfo<std::string> &info) {
    return info.param.substr(0, info.param.find('.'));
}
