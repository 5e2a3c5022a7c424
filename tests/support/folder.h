// A folder of a test's own under the system's temporary one, gone when the test is over; and files in it by their
// bytes.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

class Folder {
public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "quintave-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path = name + "/";
    }

    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    const std::string &Path() const { return path; }

    void Write(const std::string &name, const std::string &bytes) const {
        std::ofstream(path + name, std::ios::binary) << bytes;
    }

    bool Has(const std::string &name) const { return std::filesystem::exists(path + name); }

    // The bytes of a file; a test fails by the exception where it is not there.
    std::string Read(const std::string &name) const {
        std::ifstream file(path + name, std::ios::binary);
        if (!file) throw std::runtime_error("no file " + name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::string path;
};
