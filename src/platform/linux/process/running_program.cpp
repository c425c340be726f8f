#include "running_program.h"

#include <string>
#include <system_error>

namespace velmo {

std::filesystem::path runningProgram() {
    constexpr std::string_view mark = " (deleted)";
    std::error_code error;
    const auto file = std::filesystem::read_symlink("/proc/self/exe", error);
    std::string name = file.string();
    if (name.ends_with(mark) && !std::filesystem::exists(file, error))
        name.erase(name.size() - mark.size());
    return name;
}

}  // namespace velmo
