// The rules of the house about includes: Qt in one folder, headers that depend on types, no circles among headers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace fs = std::filesystem;

namespace {

// Every source file below src/, by its path there, with what it includes.
std::map<std::string, std::set<std::string>> ReadIncludes() {
    static const std::regex include(R"re(^\s*#\s*include\s*[<"]([^>"]+)[>"])re");
    std::map<std::string, std::set<std::string>> includes;
    for (const auto &entry : fs::recursive_directory_iterator(SOURCE_FOLDER)) {
        const std::string extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp") continue;
        std::set<std::string> &found = includes[fs::relative(entry.path(), SOURCE_FOLDER).string()];
        std::ifstream file(entry.path());
        std::smatch match;
        for (std::string line; std::getline(file, line);)
            if (std::regex_search(line, match, include)) found.insert(match[1]);
    }
    return includes;
}

std::string RoomOf(const std::string &path) {
    const auto slash = path.find('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

bool IsHeader(const std::string &path) { return path.ends_with(".h"); }

} // namespace

TEST(Includes, AreFoundAtAll) { EXPECT_GT(ReadIncludes().size(), 50U); }

TEST(Includes, QtStandsInItsOwnFolderAlone) {
    static const std::regex qt(R"(^Q[A-Za-z0-9/]*$|\.moc$|^moc_)");
    for (const auto &[file, includes] : ReadIncludes()) {
        if (file.starts_with("platform/qt/")) continue;
        for (const auto &name : includes) EXPECT_FALSE(std::regex_search(name, qt)) << file << " includes " << name;
    }
}

TEST(Includes, ARoomsHeaderIncludesPlatformAndModelHeadersOnly) {
    for (const auto &[file, includes] : ReadIncludes()) {
        if (!IsHeader(file)) continue;
        for (const auto &name : includes) {
            const std::string room = RoomOf(name);
            if (room.empty()) continue; // the standard library's, the system's
            EXPECT_TRUE(room == "platform" || room == "model" || room == "sys") << file << " includes " << name;
        }
    }
}

TEST(Includes, PlatformKnowsNothingOfTheProgram) {
    for (const auto &[file, includes] : ReadIncludes()) {
        if (RoomOf(file) != "platform") continue;
        for (const auto &name : includes) {
            const std::string room = RoomOf(name);
            EXPECT_TRUE(room.empty() || room == "platform" || room == "sys") << file << " includes " << name;
        }
    }
}

TEST(Includes, TheRoomsDoNotKnowWhichFrontTheyRunOn) {
    for (const auto &[file, includes] : ReadIncludes()) {
        if (RoomOf(file) == "platform" || RoomOf(file) == "cli") continue;
        for (const auto &name : includes)
            EXPECT_FALSE(name.starts_with("platform/qt/") || name.starts_with("platform/console/"))
                << file << " includes " << name;
    }
}

// Handlers run to their end on one thread, and what went wrong is told to the user, not to a log.
TEST(Includes, NothingStartsAThreadOrKeepsALog) {
    static const std::regex unwanted(R"(^(thread|future|mutex|condition_variable|pthread\.h|syslog\.h)$|)"
                                     R"(^QtConcurrent|^Q(Thread|ThreadPool|Future|Debug|LoggingCategory)$)");
    for (const auto &[file, includes] : ReadIncludes())
        for (const auto &name : includes) EXPECT_FALSE(std::regex_search(name, unwanted)) << file << " " << name;
}

TEST(Includes, HeadersMakeNoCircle) {
    const auto includes = ReadIncludes();
    std::set<std::string> finished;
    std::set<std::string> open;
    const std::function<bool(const std::string &)> circular = [&](const std::string &header) {
        if (finished.contains(header) || !includes.contains(header)) return false;
        if (!open.insert(header).second) return true;
        for (const auto &name : includes.at(header))
            if (circular(name)) return true;
        open.erase(header);
        finished.insert(header);
        return false;
    };
    for (const auto &[file, ignored] : includes) EXPECT_FALSE(IsHeader(file) && circular(file)) << file;
}
