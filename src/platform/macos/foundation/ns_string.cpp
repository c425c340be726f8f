#include "ns_string.h"

namespace velmo::macos {

NSString NSString::from(const std::string& text) {
    const void* bytes = text.data();
    return make<"initWithBytes:length:encoding:">(bytes, NSUInteger{text.size()}, utf8Encoding);
}

std::string NSString::text() const {
    const auto length = send<NSUInteger, "lengthOfBytesUsingEncoding:">(utf8Encoding);
    const char* characters = send<const char*, "UTF8String">();
    return characters == nullptr ? std::string() : std::string(characters, length);
}

}  // namespace velmo::macos
