#pragma once

#include "process_info.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace velmo {

using Words = std::vector<std::string>;

class FakeProcess : public ProcessInfo {
public:
    std::int32_t processIdentifier() const override { return 1; }
    std::optional<std::string> environment(const std::string& name) const override {
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    std::map<std::string, std::string> values;
};

/// Programs that write down how they were started.
class FakeProgramsTest : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = std::filesystem::temp_directory_path() / "velmo-programs-XXXXXX";
        folder_ = mkdtemp(pattern.data());
        process_.values["PATH"] = folder_.string();
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    void install(const std::string& name, const std::string& body = {}) const {
        const auto file = folder_ / name;
        std::ofstream(file) << "#!/bin/sh\n"
                            << body << "\nfor word in " << name << " \"$@\"; do echo \"$word\"; done > "
                            << (folder_ / "part").string() << "\nmv " << (folder_ / "part").string() << " "
                            << output().string() << "\n";
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }
    std::filesystem::path output() const { return folder_ / "output"; }

    /// The words that the program was started with; empty where none was within the time.
    Words started(std::chrono::milliseconds limit = std::chrono::milliseconds(3000)) const {
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (!std::filesystem::exists(output()) && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        Words words;
        {
            std::ifstream file(output());
            for (std::string word; std::getline(file, word);)
                words.push_back(word);
        }
        std::filesystem::remove(output());
        return words;
    }
    Words startedAtAll() const { return started(std::chrono::milliseconds(150)); }

    std::filesystem::path folder_;
    FakeProcess process_;
};

}  // namespace velmo
