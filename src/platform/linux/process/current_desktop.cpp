#include "current_desktop.h"

#include "linux/process/split_list.h"

namespace velmo {

std::vector<std::string> currentDesktops(const ProcessInfo& process) {
    return splitList(process.environment("XDG_CURRENT_DESKTOP").value_or(""), ':');
}

}  // namespace velmo
