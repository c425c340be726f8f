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
    /// Hands over items with the next numbers, and returns once the host has asked for all of their pictures.
    void add(int count);
    /// Hands over the first one, to a host that has just come, and again until it asks for it.
    void addToNewHost();
    /// From now on the program sleeps, and answers nobody.
    void rest() { program_.pause(); }

    /// Of an item in Velmo's order.
    static std::string identity(int number);

private:
    void makeItem();
    int pictureRequests() const;

    BusProgram program_;
    int count_ = 0;
};

}  // namespace velmo::desktop
