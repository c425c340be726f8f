#include "bytes.h"
#include "linux/login/command_line.h"
#include "linux/login/desktop_entry.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

}  // namespace

/// An entry that somebody else may have written: what is set in it is read again as what it was, and what is
/// not set stays.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    static constexpr const char* others[] = {"Type", "Name", "Comment", "OnlyShowIn", "NotShowIn"};
    fuzz::Bytes bytes(data, size);
    std::string program = "/" + bytes.text(bytes.byte());
    std::erase(program, '\0');
    DesktopEntry entry(bytes.text());
    command_line::programOf(entry.value("Exec").value_or(""));
    std::optional<std::string> before[std::size(others)];
    std::transform(std::begin(others), std::end(others), before,
                   [&](const char* key) { return entry.value(key); });
    entry.set("Exec", command_line::running(program));
    entry.set("TryExec", program);
    entry.remove("Hidden");

    const DesktopEntry again(entry.text());
    require(again.text() == entry.text());
    require(command_line::programOf(again.value("Exec").value_or("")) == program);
    require(again.value("TryExec") == program);
    require(!again.value("Hidden"));
    for (std::size_t index = 0; index < std::size(others); ++index) {
        const auto value = again.value(others[index]);
        require(value == entry.value(others[index]) && (!before[index] || value == before[index]));
    }
    return 0;
}
