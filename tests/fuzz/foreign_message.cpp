#include "foreign_message.h"

#include <sys/socket.h>

#include <cstdlib>
#include <cstring>

namespace velmo::fuzz {

namespace {

constexpr int deepestType = 6;
constexpr std::size_t mostElements = 40;

/// Messages belong to a connection; this one leads nowhere.
sd_bus* connection() {
    static sd_bus* const bus = [] {
        int ends[2];
        sd_bus* made = nullptr;
        if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0 || sd_bus_new(&made) < 0 ||
            sd_bus_set_fd(made, ends[0], ends[0]) < 0 || sd_bus_start(made) < 0)
            std::abort();
        return made;
    }();
    return bus;
}

/// Where the first complete type of a sequence ends.
std::size_t lengthOfFirst(const std::string& type) {
    std::size_t length = 0;
    while (type[length] == 'a')
        ++length;
    if (type[length] != '(' && type[length] != '{')
        return length + 1;
    int open = 0;
    do {
        open += type[length] == '(' || type[length] == '{' ? 1 : 0;
        open -= type[length] == ')' || type[length] == '}' ? 1 : 0;
        ++length;
    } while (open > 0);
    return length;
}

}  // namespace

ForeignMessage::ForeignMessage(Bytes& bytes) : bytes_(bytes) {
    sd_bus_message* message = nullptr;
    if (sd_bus_message_new_signal(connection(), &message, "/", "org.example.Foreign", "Told") < 0)
        std::abort();
    message_.reset(message);
}

std::string ForeignMessage::anyType(int depth) {
    static constexpr char basic[] = "ybnqiuxtdsog";
    const auto choice = bytes_.below(sizeof(basic) + 3);
    if (choice < sizeof(basic) - 1 || depth >= deepestType)
        return {basic[choice % (sizeof(basic) - 1)]};
    switch (choice - (sizeof(basic) - 1)) {
        case 0:
            return "v";
        case 1:
            return "a" + anyType(depth + 1);
        case 2: {
            std::string type = "(";
            do
                type += anyType(depth + 1);
            while (bytes_.below(3) > 0 && type.size() < 30);
            return type + ")";
        }
        default:
            return std::string("a{") + basic[bytes_.below(sizeof(basic) - 1)] + anyType(depth + 1) + "}";
    }
}

void ForeignMessage::open(char kind, const std::string& content) {
    if (sd_bus_message_open_container(message_.get(), kind, content.c_str()) < 0)
        std::abort();
}

void ForeignMessage::close() {
    sd_bus_message_close_container(message_.get());
}

void ForeignMessage::text(const std::string& text) {
    // What is no text for the library is refused by it.
    if (sd_bus_message_append_basic(message_.get(), 's', text.c_str()) < 0)
        sd_bus_message_append_basic(message_.get(), 's', "");
}

void ForeignMessage::integer(std::int32_t value) {
    sd_bus_message_append_basic(message_.get(), 'i', &value);
}

void ForeignMessage::fillArray(const std::string& element) {
    open('a', element);
    if (element == "y") {
        const std::string content = bytes_.text(bytes_.number(2) % 5000);
        for (const char byte : content)
            sd_bus_message_append_basic(message_.get(), 'y', &byte);
    } else {
        const auto count = bytes_.below(mostElements);
        for (std::size_t index = 0; index < count && !bytes_.isEmpty(); ++index)
            fill(element);
    }
    close();
}

void ForeignMessage::fill(const std::string& type) {
    const auto length = lengthOfFirst(type);
    const std::string inside = length > 2 ? type.substr(1, length - 2) : "";
    switch (type.front()) {
        case 'a':
            fillArray(type.substr(1, length - 1));
            break;
        case '(':
            open('r', inside);
            fill(inside);
            close();
            break;
        case '{':
            open('e', inside);
            fill(inside);
            close();
            break;
        case 'v':
            fillVariant({});
            break;
        case 's':
            text(bytes_.text(bytes_.byte()));
            break;
        case 'o': {
            const std::string path = "/" + std::string(bytes_.below(4), 'p');
            sd_bus_message_append_basic(message_.get(), 'o', path.c_str());
            break;
        }
        case 'g':
            sd_bus_message_append_basic(message_.get(), 'g', "a{sv}");
            break;
        case 'b': {
            const int value = static_cast<int>(bytes_.below(2));
            sd_bus_message_append_basic(message_.get(), 'b', &value);
            break;
        }
        default: {
            const auto value = bytes_.number(8);
            sd_bus_message_append_basic(message_.get(), type.front(), &value);
            break;
        }
    }
    if (length < type.size())
        fill(type.substr(length));
}

void ForeignMessage::fillVariant(std::initializer_list<const char*> likely) {
    const auto choice = bytes_.below(likely.size() + 1);
    static int depth = 0;
    const std::string type = choice < likely.size() ? likely.begin()[choice]
                             : depth < deepestType  ? anyType()
                                                    : "y";
    ++depth;
    open('v', type);
    fill(type);
    close();
    --depth;
}

Message ForeignMessage::seal() {
    if (sd_bus_message_seal(message_.get(), 1, 0) < 0 || sd_bus_message_rewind(message_.get(), 1) < 0)
        std::abort();
    return std::move(message_);
}

}  // namespace velmo::fuzz
