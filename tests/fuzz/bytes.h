#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace velmo::fuzz {

/// What a fuzzer has thought of, taken piece by piece. Behind its end everything is zero and empty.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    bool isEmpty() const { return rest_.empty(); }
    std::uint8_t byte() {
        if (rest_.empty())
            return 0;
        const auto value = rest_.front();
        rest_ = rest_.subspan(1);
        return value;
    }
    /// Below `end`.
    std::size_t below(std::size_t end) { return byte() % end; }
    std::uint64_t number(int bytes) {
        std::uint64_t value = 0;
        for (int count = 0; count < bytes; ++count)
            value = value << 8 | byte();
        return value;
    }
    std::string text(std::size_t most) {
        const auto taken = rest_.first(std::min(most, rest_.size()));
        rest_ = rest_.subspan(taken.size());
        return {taken.begin(), taken.end()};
    }
    /// Everything that is left.
    std::string text() { return text(rest_.size()); }

private:
    std::span<const std::uint8_t> rest_;
};

}  // namespace velmo::fuzz
