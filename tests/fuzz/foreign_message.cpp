#include "foreign_message.h"

#include <sys/socket.h>

#include <cstdlib>

namespace velmo::fuzz {

namespace {

constexpr int deepestType = 6;
constexpr std::size_t mostElements = 40;
constexpr std::size_t mostBytes = 20000;

/// Messages come by way of a connection, of which the fuzzer has the other end.
struct Connection {
    Connection() {
        int ends[2];
        const std::string welcome = "DATA\r\nOK 00112233445566778899aabbccddeeff\r\n";
        if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0 || sd_bus_new(&bus) < 0 ||
            sd_bus_set_fd(bus, ends[0], ends[0]) < 0 || sd_bus_negotiate_fds(bus, 0) < 0 ||
            sd_bus_start(bus) < 0 ||
            send(ends[1], welcome.data(), welcome.size(), 0) != static_cast<ssize_t>(welcome.size()))
            std::abort();
        foreignEnd = ends[1];
        while (sd_bus_is_ready(bus) == 0) {
            if (sd_bus_process(bus, nullptr) < 0)
                std::abort();
        }
    }

    Message deliver(const std::string& content) const {
        std::size_t sent = 0;
        sd_bus_message* message = nullptr;
        while (!message) {
            const auto size =
                send(foreignEnd, content.data() + sent, content.size() - sent, MSG_DONTWAIT | MSG_NOSIGNAL);
            sent += size > 0 ? static_cast<std::size_t>(size) : 0;
            if (sd_bus_process(bus, &message) < 0)
                std::abort();
        }
        return Message(message);
    }

    sd_bus* bus = nullptr;
    int foreignEnd = -1;
};

std::size_t alignmentOf(char type) {
    switch (type) {
        case 'n':
        case 'q':
            return 2;
        case 'y':
        case 'g':
        case 'v':
            return 1;
        case 'x':
        case 't':
        case 'd':
        case '(':
        case '{':
            return 8;
        default:
            return 4;
    }
}

/// Where the first complete type of a sequence ends.
std::size_t lengthOfFirst(std::string_view type) {
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

/// Values that nothing holds make up the type of the message.
void ForeignMessage::begin(std::string_view type) {
    if (open_.empty())
        types_ += type;
}

void ForeignMessage::open(char kind, std::string_view content) {
    begin(kind == 'r' ? "(" : std::string_view(&kind, 1));
    if (kind == 'a' || kind == 'r')
        begin(content);
    if (kind == 'r')
        begin(")");
    Container container;
    if (kind == 'v') {
        body_.signature(content);
    } else if (kind == 'a') {
        body_.number(0, sizeof(std::uint32_t));
        container = {true, body_.size() - sizeof(std::uint32_t)};
        body_.align(alignmentOf(content.front()));
        container.begin = body_.size();
    } else {
        body_.align(alignmentOf('('));
    }
    open_.push_back(container);
}

void ForeignMessage::close() {
    const auto container = open_.back();
    open_.pop_back();
    if (container.isArray)
        body_.put(body_.size() - container.begin, container.lengthPlace, sizeof(std::uint32_t));
}

void ForeignMessage::text(const std::string& text) {
    begin("s");
    body_.text(text.c_str());
}

void ForeignMessage::integer(std::int32_t value) {
    begin("i");
    body_.number(static_cast<std::uint32_t>(value), sizeof value);
}

void ForeignMessage::boolean(bool value) {
    begin("b");
    body_.number(value ? 1 : 0, sizeof(std::uint32_t));
}

void ForeignMessage::fillArray(std::string_view element) {
    open('a', element);
    if (element == "y") {
        body_.bytes(bytes_.text(bytes_.number(2) % mostBytes));
    } else {
        const auto count = bytes_.below(mostElements);
        for (std::size_t index = 0; index < count && !bytes_.isEmpty(); ++index)
            fill(element);
    }
    close();
}

void ForeignMessage::fillBasic(char type) {
    begin({&type, 1});
    switch (type) {
        case 'o':
            body_.text("/" + std::string(bytes_.below(4), 'p'));
            break;
        case 'g':
            body_.signature("a{sv}");
            break;
        case 'b':
            body_.number(bytes_.below(2), sizeof(std::uint32_t));
            break;
        default:
            body_.number(bytes_.number(8), alignmentOf(type));
    }
}

void ForeignMessage::fill(std::string_view type) {
    const auto length = lengthOfFirst(type);
    const auto inside = length > 2 ? type.substr(1, length - 2) : std::string_view();
    switch (type.front()) {
        case 'a':
            fillArray(type.substr(1, length - 1));
            break;
        case '(':
        case '{':
            open(type.front() == '(' ? 'r' : 'e', inside);
            fill(inside);
            close();
            break;
        case 'v':
            fillVariant({});
            break;
        case 's':
            text(bytes_.text(bytes_.byte()));
            break;
        default:
            fillBasic(type.front());
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
    static const Connection connection;
    constexpr std::uint64_t signal = 4;
    constexpr std::uint64_t wantsNoReply = 1;
    constexpr std::uint64_t version = 1;
    WireWriter wire(order_);
    wire.bytes(order_ == std::endian::little ? "l" : "B");
    for (const std::uint64_t number : {signal, wantsNoReply, version})
        wire.number(number, 1);
    wire.number(body_.size(), sizeof(std::uint32_t));
    wire.number(1, sizeof(std::uint32_t));
    wire.number(0, sizeof(std::uint32_t));
    const auto begin = wire.size();
    const auto field = [&](std::uint64_t code, const char* type, const std::string& value) {
        wire.align(alignmentOf('('));
        wire.number(code, 1);
        wire.signature(type);
        if (*type == 'g')
            wire.signature(value);
        else
            wire.text(value);
    };
    field(1, "o", "/");
    field(2, "s", "org.example.Foreign");
    field(3, "s", "Told");
    field(8, "g", types_);
    wire.put(wire.size() - begin, begin - sizeof(std::uint32_t), sizeof(std::uint32_t));
    wire.align(alignmentOf('('));
    wire.bytes(body_.content());
    return connection.deliver(wire.content());
}

}  // namespace velmo::fuzz
