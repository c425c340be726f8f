#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace velmo::desktop {

/// What one run has measured. It is printed as it comes, and written into a file that
/// script/bench_report.py makes tables and a picture of.
class Report {
public:
    /// What was measured, and of whom.
    struct Subject {
        std::string part;
        std::string what;
        std::string host;
        /// Of the items, where there are some; "tray" or "bus".
        std::string kind = {};
        int items = 0;
        std::string unit = "ms";
    };
    void add(const Subject& subject, const std::vector<double>& values);
    /// Says whether a figure is what was promised.
    void promise(const std::string& what, double value, double bound);
    /// What a reader of the figures has to know.
    void note(const std::string& text);
    /// The same of something that is not measured, or no longer.
    void leaveOut(const std::string& text);

    bool isWhole() const { return whole_; }
    bool allPromisesAreKept() const { return kept_; }
    void write(const std::string& file) const;

private:
    nlohmann::json figures_ = nlohmann::json::array();
    nlohmann::json promises_ = nlohmann::json::array();
    nlohmann::json notes_ = nlohmann::json::array();
    bool kept_ = true;
    bool whole_ = true;
};

}  // namespace velmo::desktop
