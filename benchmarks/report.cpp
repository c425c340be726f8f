#include "report.h"

#include "timing.h"

#include <cstdio>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace velmo::desktop {

namespace {

std::string processorName() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("model name"))
            return line.substr(line.find(':') + 2);
    }
    return "unknown";
}

std::string today() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    char text[sizeof "2000-01-01"] = {};
    std::strftime(text, sizeof text, "%Y-%m-%d", &parts);
    return text;
}

}  // namespace

void Report::add(const Subject& subject, const std::vector<double>& values) {
    if (values.empty())
        return;
    const auto spread = spreadOf(values);
    figures_.push_back({{"part", subject.part},
                        {"what", subject.what},
                        {"host", subject.host},
                        {"kind", subject.kind},
                        {"items", subject.items},
                        {"unit", subject.unit},
                        {"median", spread.median},
                        {"lower", spread.lowerQuartile},
                        {"upper", spread.upperQuartile},
                        {"percentile95", spread.percentile95},
                        {"count", values.size()}});
    std::printf("%-8s %-22s %-13s %-4s %4d %10.2f %-16s quartiles %.2f and %.2f, 95th %.2f of %zu\n",
                subject.part.c_str(), subject.what.c_str(), subject.host.c_str(), subject.kind.c_str(),
                subject.items, spread.median, subject.unit.c_str(), spread.lowerQuartile,
                spread.upperQuartile, spread.percentile95, values.size());
    std::fflush(stdout);
}

void Report::promise(const std::string& what, double value, double bound) {
    const bool isKept = value <= bound;
    promises_.push_back({{"what", what}, {"value", value}, {"bound", bound}});
    std::printf("  %s: %.2f, promised %.2f at most%s\n", what.c_str(), value, bound,
                isKept ? "" : "  <-- NOT KEPT");
    kept_ = kept_ && isKept;
}

void Report::note(const std::string& text) {
    notes_.push_back(text);
    std::printf("  %s\n", text.c_str());
    std::fflush(stdout);
}

void Report::leaveOut(const std::string& text) {
    note(text);
    whole_ = false;
}

void Report::write(const std::string& file) const {
    std::ofstream stream(file);
    stream << nlohmann::json{{"date", today()},
                             {"processor", processorName()},
                             {"processors", std::thread::hardware_concurrency()},
                             {"figures", figures_},
                             {"promises", promises_},
                             {"notes", notes_}}
                  .dump(1)
           << '\n';
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file);
}

}  // namespace velmo::desktop
