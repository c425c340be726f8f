#pragma once

#include "bus_program.h"
#include "display.h"

#include <memory>
#include <string>

namespace velmo::desktop {

/// Red items on a display's bus, all of one program.
class BusItems {
public:
    explicit BusItems(const Display& display);

    /// True while somebody on the bus takes items.
    bool hasHost();
    /// How many were handed over.
    int count() const { return count_; }
    /// Hands over items with the next numbers, up to this number of them.
    void addUpTo(int count);
    /// Returns once the host has asked for the pictures of all that were added.
    void awaitRequests();
    /// Hands over so many, to a host that has just come: the first one again until it asks for it.
    void addToNewHost(int count = 1);
    /// From now on the program sleeps, and answers nobody.
    void rest() { program_.pause(); }

    /// Of an item in Velmo's order.
    static std::string identity(int number);

private:
    void makeItem(int number);
    void addFirstToNewHost();
    int pictureRequests() const;

    BusProgram program_;
    int count_ = 0;
    /// Of pictures, once the host has asked for all.
    int expectedRequests_ = 0;
};

}  // namespace velmo::desktop
