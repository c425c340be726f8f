#pragma once

#include "ns_object.h"

#include <cstdint>
#include <string>

namespace velmo::macos {

using NSInteger = std::int64_t;
using NSUInteger = std::uint64_t;
using CGFloat = double;

inline constexpr NSUInteger utf8Encoding = 4;

class NSString : public ClassOf<NSString, "NSString", NSObject> {
public:
    /// UTF-8. None where it is not.
    static NSString from(const std::string& text);
    static NSString from(char16_t character) {
        const char16_t* characters = &character;
        return sendToClass<NSString, "stringWithCharacters:length:">(characters, NSUInteger{1});
    }
    /// UTF-8. Empty for none.
    std::string text() const;
    /// UTF-16 units.
    NSUInteger length() const { return send<NSUInteger, "length">(); }
};

}  // namespace velmo::macos
