#pragma once

#include "bytes.h"

#include <systemd/sd-bus.h>

#include <initializer_list>
#include <memory>
#include <string>

namespace velmo::fuzz {

struct MessageRelease {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageRelease>;

/// Writes messages as a stranger on the bus might, one value after the other.
class ForeignMessage {
public:
    explicit ForeignMessage(Bytes& bytes);

    /// A type, in the notation of the bus, that is of no use to anybody in particular.
    std::string anyType(int depth = 0);
    /// A value of the type, which may be a sequence of types.
    void fill(const std::string& type);
    /// A variant of one of the types, or of any.
    void fillVariant(std::initializer_list<const char*> likely);

    void open(char kind, const std::string& content);
    void close();
    void text(const std::string& text);
    void integer(std::int32_t value);

    /// The message, ready to be read.
    Message seal();

private:
    void fillArray(const std::string& element);

    Bytes& bytes_;
    Message message_;
};

}  // namespace velmo::fuzz
