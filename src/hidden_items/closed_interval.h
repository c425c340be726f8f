#pragma once

namespace velmo {

/// The numbers from `lower` to `upper`, both included.
class ClosedInterval {
public:
    /// Ends the program where `lower` exceeds `upper` or either is no number.
    ClosedInterval(double lower, double upper);

    double lower() const { return lower_; }
    double upper() const { return upper_; }
    bool contains(double number) const { return lower_ <= number && number <= upper_; }

    bool operator==(const ClosedInterval&) const = default;

private:
    double lower_;
    double upper_;
};

}  // namespace velmo
