#pragma once

#include "event.h"
#include "macos/appkit/ns_event.h"
#include "screens.h"

#include <string>

namespace velmo::macos::doubles {

/// Makes the classes of the menu bar and its items, of images, events and screens yield records.
void addMenuBar();

// Its parts.
void addPictures();
void addEvents();
void addScreens();

/// Of an image; empty where it is none of a symbol.
std::string symbolOf(const Object& image);

Object makeScreen(const Screen& screen);

/// An event; members that its kind does not have are missing, and asking for them fails the test.
NSEvent makeEvent(const Event& event);

/// Tells the monitors whose mask has the event. Of local ones each sees what the one before has given back;
/// the last one's answer.
void tellGlobalMonitors(const NSEvent& event);
NSEvent tellLocalMonitors(const NSEvent& event);

/// The status item of that autosave name; none where there is none.
Object itemNamed(const std::string& name);

/// Makes the button of a status item send its action, as a click on it does that ends with the event.
void click(const Object& button, const Event& event);

/// Chooses an item of a menu that was shown.
void choose(const Object& menuItem);

}  // namespace velmo::macos::doubles
