#include "preferences/json_reader.h"

#include "preferences/utf8.h"

#include <cstddef>

namespace velmo {

namespace {

using Members = std::map<std::string, JsonValue>;

constexpr int deepestNesting = 512;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// A recursive descent over valid UTF-8. Each `read` leaves the position behind what it has read; false
/// means that the text is not JSON.
class JsonReader {
public:
    explicit JsonReader(std::string_view text) : text_(text) {}

    bool readDocument(Members& members) {
        skipBlanks();
        if (!readObject(&members))
            return false;
        skipBlanks();
        return position_ == text_.size();
    }

private:
    char peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }

    bool skip(char expected) {
        if (position_ == text_.size() || text_[position_] != expected)
            return false;
        ++position_;
        return true;
    }

    bool skip(std::string_view expected) {
        if (text_.substr(position_, expected.size()) != expected)
            return false;
        position_ += expected.size();
        return true;
    }

    void skipBlanks() {
        while (skip(' ') || skip('\t') || skip('\n') || skip('\r')) {
        }
    }

    bool readValue(JsonValue& value) {
        skipBlanks();
        switch (peek()) {
            case '{':
                return readObject(nullptr);
            case '[':
                return readArray();
            case '"':
                value.kind = JsonValue::Kind::string;
                return readString(value.text);
            case 't':
                return skip("true");
            case 'f':
                return skip("false");
            case 'n':
                return skip("null");
            default:
                value.kind = JsonValue::Kind::number;
                return readNumber(value.text);
        }
    }

    /// The members are kept where `members` is not null.
    bool readObject(Members* members) {
        if (!skip('{') || ++depth_ > deepestNesting)
            return false;
        skipBlanks();
        if (!skip('}')) {
            do {
                std::string name;
                JsonValue value;
                skipBlanks();
                if (!readString(name))
                    return false;
                skipBlanks();
                if (!skip(':') || !readValue(value))
                    return false;
                if (members != nullptr)
                    members->try_emplace(std::move(name), std::move(value));
                skipBlanks();
            } while (skip(','));
            if (!skip('}'))
                return false;
        }
        --depth_;
        return true;
    }

    bool readArray() {
        if (!skip('[') || ++depth_ > deepestNesting)
            return false;
        skipBlanks();
        if (!skip(']')) {
            do {
                JsonValue value;
                if (!readValue(value))
                    return false;
                skipBlanks();
            } while (skip(','));
            if (!skip(']'))
                return false;
        }
        --depth_;
        return true;
    }

    bool skipDigits() {
        const auto start = position_;
        while (isDigit(peek()))
            ++position_;
        return position_ > start;
    }

    bool readNumber(std::string& number) {
        const auto start = position_;
        skip('-');
        if (!skip('0') && !skipDigits())
            return false;
        if (skip('.') && !skipDigits())
            return false;
        if (skip('e') || skip('E')) {
            if (!skip('+'))
                skip('-');
            if (!skipDigits())
                return false;
        }
        number = text_.substr(start, position_ - start);
        return true;
    }

    bool readString(std::string& string) {
        if (!skip('"'))
            return false;
        while (true) {
            // The end of the text counts as a character that may not stand in one.
            const char character = peek();
            if (static_cast<unsigned char>(character) < 0x20)
                return false;
            ++position_;
            if (character == '"')
                return true;
            if (character != '\\')
                string += character;
            else if (!readEscape(string))
                return false;
        }
    }

    bool readEscape(std::string& string) {
        constexpr std::string_view letters = "\"\\/bfnrt";
        constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
        if (skip('u'))
            return readCodePoint(string);
        const auto index = letters.find(peek());
        if (index == std::string_view::npos)
            return false;
        ++position_;
        string += meanings[index];
        return true;
    }

    bool readCodePoint(std::string& string) {
        std::uint32_t first = 0;
        if (!readHex(first))
            return false;
        if (first >= 0xD800 && first < 0xDC00) {
            std::uint32_t second = 0;
            if (!skip("\\u") || !readHex(second) || second < 0xDC00 || second > 0xDFFF)
                return false;
            first = 0x10000 + ((first - 0xD800) << 10U) + (second - 0xDC00);
        } else if (first >= 0xDC00 && first <= 0xDFFF) {
            return false;
        }
        utf8::append(string, first);
        return true;
    }

    bool readHex(std::uint32_t& number) {
        for (int i = 0; i < 4; ++i) {
            const char digit = peek();
            std::uint32_t value = 0;
            if (isDigit(digit))
                value = static_cast<std::uint32_t>(digit - '0');
            else if (digit >= 'a' && digit <= 'f')
                value = static_cast<std::uint32_t>(digit - 'a' + 10);
            else if (digit >= 'A' && digit <= 'F')
                value = static_cast<std::uint32_t>(digit - 'A' + 10);
            else
                return false;
            number = number << 4U | value;
            ++position_;
        }
        return true;
    }

    std::string_view text_;
    std::size_t position_ = 0;
    int depth_ = 0;
};

}  // namespace

std::optional<Members> readJsonObject(std::string_view text) {
    Members members;
    if (!utf8::isValid(text) || !JsonReader(text).readDocument(members))
        return std::nullopt;
    return members;
}

}  // namespace velmo
