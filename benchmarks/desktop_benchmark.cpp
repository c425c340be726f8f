// Velmo beside other tray hosts of this machine, in one run: desktop_benchmark FILE [NAME...], where the file
// is for what was measured, and the names are of measurements, none for all but the hour. Exits with status 3
// where all was measured but a promise is not kept, 2 where a name is none, and 1 where something could not
// be measured, or a peer was left out or is missing; the file has what was measured.

#include "benchmarks.h"
#include "hosts.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iterator>
#include <string>
#include <vector>

namespace {

using namespace velmo::desktop;

enum Status { kept = 0, notMeasured = 1, misused = 2, notKept = 3 };

struct Measurement {
    const char* name;
    void (*measure)(Report&);
    /// Is done without being named.
    bool isOfTheWhole = true;
};

constexpr Measurement measurements[] = {{"starts", measureStarts},     {"memory", measureMemory},
                                        {"windows", measureWindows},   {"rest", measureRest},
                                        {"hour", measureHour, false},  {"reveals", measureReveals},
                                        {"captures", measureCaptures}, {"panels", measurePanels}};

int misuse(const std::string& problem) {
    std::fprintf(stderr, "%s; desktop_benchmark FILE [NAME...] takes the names", problem.c_str());
    for (const auto& measurement : measurements)
        std::fprintf(stderr, " %s", measurement.name);
    std::fprintf(stderr, "\n");
    return misused;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2)
        return misuse("no file is named");
    const std::vector<std::string> named(arguments + 2, arguments + count);
    for (const auto& name : named) {
        if (std::none_of(std::begin(measurements), std::end(measurements),
                         [&](const auto& measurement) { return measurement.name == name; }))
            return misuse("there is no measurement " + name);
    }
    Report report;
    for (const auto& name : missingHosts())
        report.leaveOut(name + " is not on this machine, and left out");
    try {
        for (const auto& [name, measure, isOfTheWhole] : measurements) {
            if (named.empty() ? !isOfTheWhole : std::find(named.begin(), named.end(), name) == named.end())
                continue;
            measure(report);
            report.write(arguments[1]);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return notMeasured;
    }
    if (!report.isWhole())
        return notMeasured;
    return report.allPromisesAreKept() ? kept : notKept;
}
