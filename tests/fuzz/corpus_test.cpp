#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// The fuzzers, each under its own name.
#define FUZZER(name) extern "C" int name##_fuzzer(const std::uint8_t* data, std::size_t size);
#include "fuzzers.inc"
#undef FUZZER

namespace velmo::fuzz {

namespace {

struct Fuzzer {
    friend std::ostream& operator<<(std::ostream& stream, const Fuzzer& fuzzer) {
        return stream << fuzzer.name;
    }

    std::string name;
    int (*run)(const std::uint8_t* data, std::size_t size) = nullptr;
};

#define FUZZER(name) {#name, name##_fuzzer},
const Fuzzer fuzzers[] = {
#include "fuzzers.inc"
};
#undef FUZZER

/// What the fuzzers have found worth keeping: a line for each input, in hexadecimal digits.
class Corpus : public testing::TestWithParam<Fuzzer> {
protected:
    static std::vector<std::vector<std::uint8_t>> inputs() {
        std::vector<std::vector<std::uint8_t>> result;
        std::ifstream file(std::string(VELMO_CORPUS) + "/" + GetParam().name + ".hex");
        for (std::string line; std::getline(file, line);) {
            auto& input = result.emplace_back();
            for (std::size_t place = 0; place + 1 < line.size(); place += 2)
                input.push_back(static_cast<std::uint8_t>(std::stoi(line.substr(place, 2), nullptr, 16)));
        }
        return result;
    }
};

/// A fuzzer ends the process where something is wrong.
TEST_P(Corpus, IsReadWithoutHarm) {
    const auto all = inputs();
    EXPECT_GE(all.size(), 10U);
    for (const auto& input : all)
        EXPECT_EQ(GetParam().run(input.data(), input.size()), 0);
}

INSTANTIATE_TEST_SUITE_P(Of, Corpus, testing::ValuesIn(fuzzers),
                         [](const auto& fuzzer) { return fuzzer.param.name; });

}  // namespace

}  // namespace velmo::fuzz
