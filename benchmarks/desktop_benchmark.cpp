// Velmo beside other tray hosts of this machine, in one run: desktop_benchmark FILE [NAME...], where the file
// is for what was measured, and the names are of measurements, none for all. Exits with status 1 where a
// promise is not kept.

#include "benchmarks.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

int main(int count, char** arguments) {
    using namespace velmo::desktop;
    const std::pair<const char*, void (*)(Report&)> measurements[] = {
        {"starts", measureStarts}, {"memory", measureMemory},   {"windows", measureWindows},
        {"rest", measureRest},     {"reveals", measureReveals}, {"captures", measureCaptures},
        {"panels", measurePanels}};
    if (count < 2)
        return 2;
    const std::vector<std::string> named(arguments + 2, arguments + count);
    Report report;
    try {
        for (const auto& [name, measure] : measurements) {
            if (!named.empty() && std::find(named.begin(), named.end(), name) == named.end())
                continue;
            measure(report);
            report.write(arguments[1]);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return report.allPromisesAreKept() ? 0 : 1;
}
