#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmo::fuzz {

/// Writes values as they go over a bus, in either byte order.
class WireWriter {
public:
    explicit WireWriter(std::endian order) : order_(order) {}

    void align(std::size_t size) { content_.resize((content_.size() + size - 1) / size * size); }
    /// Of 1, 2, 4 or 8 bytes.
    void number(std::uint64_t value, std::size_t size) {
        align(size);
        content_.resize(content_.size() + size);
        put(value, content_.size() - size, size);
    }
    /// Over what was written before.
    void put(std::uint64_t value, std::size_t place, std::size_t size) {
        for (std::size_t index = 0; index < size; ++index) {
            const std::size_t byte = order_ == std::endian::little ? index : size - 1 - index;
            content_[place + byte] = static_cast<char>(value >> 8 * index & 0xff);
        }
    }
    void text(std::string_view text) {
        number(text.size(), sizeof(std::uint32_t));
        append(text);
    }
    void signature(std::string_view type) {
        number(type.size(), 1);
        append(type);
    }
    void bytes(std::string_view bytes) { content_ += bytes; }

    std::size_t size() const { return content_.size(); }
    const std::string& content() const { return content_; }

private:
    void append(std::string_view text) {
        content_ += text;
        content_ += '\0';
    }

    std::endian order_;
    std::string content_;
};

}  // namespace velmo::fuzz
