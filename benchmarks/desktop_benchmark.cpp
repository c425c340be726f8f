// Velmo beside other tray hosts of this machine, in one run.

#include "capture_benchmark.h"
#include "host_benchmark.h"
#include "panel_benchmark.h"
#include "reveal_benchmark.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>

/// All of them, or those that are named. Exits with status 1 where a promise is not kept.
int main(int count, char** names) {
    const std::pair<const char*, bool (*)()> comparisons[] = {{"hosts", velmo::desktop::compareHosts},
                                                              {"reveals", velmo::desktop::compareReveals},
                                                              {"captures", velmo::desktop::compareCaptures},
                                                              {"panels", velmo::desktop::comparePanels}};
    bool kept = true;
    try {
        for (const auto& [name, compare] : comparisons) {
            if (count == 1 || std::find(names + 1, names + count, std::string(name)) != names + count)
                kept = compare() && kept;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return kept ? 0 : 1;
}
