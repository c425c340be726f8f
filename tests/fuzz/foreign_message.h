#pragma once

#include "bytes.h"
#include "wire_writer.h"

#include <systemd/sd-bus.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmo::fuzz {

struct MessageRelease {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageRelease>;

/// Writes messages as a stranger on the bus might, one value after the other.
class ForeignMessage {
public:
    explicit ForeignMessage(Bytes& bytes, std::endian order = std::endian::native)
        : bytes_(bytes), order_(order), body_(order) {}
    static std::endian anyOrder(Bytes& bytes) {
        return bytes.below(2) == 0 ? std::endian::little : std::endian::big;
    }

    /// A type, in the notation of the bus, that is of no use to anybody in particular.
    std::string anyType(int depth = 0);
    /// A value of the type, which may be a sequence of types.
    void fill(std::string_view type);
    /// A variant of one of the types, or of any.
    void fillVariant(std::initializer_list<const char*> likely);

    void open(char kind, std::string_view content);
    void close();
    void text(const std::string& text);
    void integer(std::int32_t value);
    void boolean(bool value);

    /// The message as it arrives, ready to be read.
    Message seal();

private:
    /// What holds other values. Its length is written where it ends, if it has any.
    struct Container {
        bool isArray = false;
        std::size_t lengthPlace = 0;
        std::size_t begin = 0;
    };

    void begin(std::string_view type);
    void fillArray(std::string_view element);
    void fillBasic(char type);

    Bytes& bytes_;
    std::endian order_;
    WireWriter body_;
    std::string types_;
    std::vector<Container> open_;
};

}  // namespace velmo::fuzz
