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

    std::string path(const std::string& name) const { return (path_ / name).string(); }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    std::string read(const std::string& name) const {
        std::ostringstream bytes;
        bytes << std::ifstream(path_ / name, std::ios::binary).rdbuf();
        return bytes.str();
    }

 private:
    std::filesystem::path path_;
};
