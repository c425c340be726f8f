#include "bytes.h"
#include "linux/login/command_line.h"
#include "linux/login/desktop_entry.h"
#include "require.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

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
    fuzz::require(again.text() == entry.text());
    fuzz::require(command_line::programOf(again.value("Exec").value_or("")) == program);
    fuzz::require(again.value("TryExec") == program);
    fuzz::require(!again.value("Hidden"));
    for (std::size_t index = 0; index < std::size(others); ++index) {
        const auto value = again.value(others[index]);
        fuzz::require(value == entry.value(others[index]) && (!before[index] || value == before[index]));
    }
    return 0;
}
