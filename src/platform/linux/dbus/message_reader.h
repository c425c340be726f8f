#pragma once

#include <systemd/sd-bus.h>

#include <cstddef>
#include <cstdint>
#include <forward_list>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmo::dbus {

/// Reads a message from a stranger. Each operation consumes one complete value, and yields nothing where it
/// is of another type. A message that is malformed, or has more values than anybody needs, reads as if it
/// ended there.
class MessageReader {
public:
    explicit MessageReader(sd_bus_message* message) : message_(message) {}

    /// Texts, object paths and signatures; cut off where they are absurdly long.
    std::optional<std::string> text();
    /// Signed and unsigned numbers of 16 to 32 bits, and bytes.
    std::optional<std::int64_t> integer();
    std::optional<bool> boolean();
    /// Valid for as long as this reader and the message.
    std::optional<std::span<const std::uint8_t>> bytes();

    /// Calls `read` once for each element, until it returns false. False where this is no array.
    bool array(const std::function<bool()>& read);
    bool structure(const std::function<void()>& read);
    bool variant(const std::function<void()>& read);
    /// Calls `read` with the key of each entry of a dictionary from texts to variants; the value is what
    /// the operations then yield.
    bool dictionary(const std::function<void(const std::string&)>& read);
    void skip();

    /// True once nothing more can be read.
    bool hasFailed() const { return failed_; }
    /// Of texts and arrays so far, also of those that were skipped.
    std::size_t bytesRead() const { return bytesRead_; }
    /// Gives up the rest of the message.
    void abandon() { failed_ = true; }

private:
    /// The type of the next value, 0 at the end.
    char next();
    bool spend();
    bool inside(char type, const std::function<void()>& read);
    bool check(int result);
    /// Absent where it cannot be read.
    std::optional<std::string_view> readText(char type);
    /// Of an array whose elements lie in memory as they are; absent where it cannot be read.
    std::optional<std::span<const std::uint8_t>> readArray(char type);
    /// The same for a message in the other byte order; of elements larger than a byte nothing is kept.
    std::optional<std::span<const std::uint8_t>> readElements(char type);
    bool atEnd();

    sd_bus_message* message_;
    const char* contents_ = nullptr;
    bool failed_ = false;
    std::size_t bytesRead_ = 0;
    /// Bytes of arrays that the library does not hand out as they lie in the message.
    std::forward_list<std::vector<std::uint8_t>> copies_;
    int elementsRead_ = 0;
    int budget_ = 200000;
    int depth_ = 0;
};

}  // namespace velmo::dbus
