// A folder of its own on the real disk, gone with everything in it at the end.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "gtest/gtest.h"

class TemporaryFolder {
 public:
    TemporaryFolder() {
        const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
        path_ =
            std::filesystem::path(testing::TempDir()) / (std::string(test->test_suite_name()) + "." + test->name() +
                                                         "." + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // For the library, with the name as it stands; the other names are UTF-8.
    std::string path(const std::string& name) const { return path_.generic_string() + '/' + name; }
    std::filesystem::path utf8_path(const std::string& name) const {
        return path_ / std::u8string(name.begin(), name.end());
    }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(utf8_path(name), std::ios::binary) << bytes;
    }
    std::string read(const std::string& name) const {
        std::ostringstream bytes;
        bytes << std::ifstream(utf8_path(name), std::ios::binary).rdbuf();
        return bytes.str();
    }

 private:
    std::filesystem::path path_;
};
