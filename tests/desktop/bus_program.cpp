#include "bus_program.h"

#include <poll.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace velmo::desktop {

namespace {

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* menuInterface = "com.canonical.dbusmenu";
constexpr int pollMilliseconds = 2;
/// While nothing is answered.
constexpr int pausedMilliseconds = 20;

void check(int result, const char* what) {
    if (result < 0)
        throw std::runtime_error(what);
}

std::string argument(sd_bus_message* message, std::uint32_t& time) {
    char type = 0;
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(message, &type, &contents) <= 0)
        return {};
    if (type == 's' || type == 'o') {
        const char* text = nullptr;
        sd_bus_message_read_basic(message, type, &text);
        return text;
    }
    if (type == 'u') {
        sd_bus_message_read_basic(message, type, &time);
        return "time";
    }
    if (type == 'i') {
        std::int32_t number = 0;
        sd_bus_message_read_basic(message, type, &number);
        return std::to_string(number);
    }
    sd_bus_message_skip(message, type == 'v' ? "v" : nullptr);
    return "value";
}

}  // namespace

BusProgram::BusProgram(const std::string& address) {
    check(sd_bus_new(&bus_), "bus");
    check(sd_bus_set_address(bus_, address.c_str()), "address");
    check(sd_bus_set_bus_client(bus_, 1), "client");
    check(sd_bus_start(bus_), "start");
    const char* name = nullptr;
    check(sd_bus_get_unique_name(bus_, &name), "name");
    name_ = name;
    thread_ = std::thread([this] { run(); });
}

BusProgram::~BusProgram() {
    ending_ = true;
    thread_.join();
    for (auto& [path, object] : objects_)
        sd_bus_slot_unref(object.slot);
    sd_bus_close(bus_);
    sd_bus_unref(bus_);
}

void BusProgram::run() {
    while (!ending_) {
        pollfd descriptor{};
        {
            const std::lock_guard lock(mutex_);
            while (!paused_ && sd_bus_process(bus_, nullptr) > 0)
                continue;
            const int events = paused_ ? 0 : sd_bus_get_events(bus_);
            descriptor = {sd_bus_get_fd(bus_), static_cast<short>(events), 0};
        }
        poll(&descriptor, 1, paused_ ? pausedMilliseconds : pollMilliseconds);
    }
}

BusProgram::Object& BusProgram::object(const std::string& path) {
    auto& found = objects_[path];
    if (!found.slot)
        check(sd_bus_add_object(bus_, &found.slot, path.c_str(), handle, this), "object");
    return found;
}

bool BusProgram::callBus(const std::string& member, const Append& append) {
    const std::lock_guard lock(mutex_);
    sd_bus_message* message = nullptr;
    check(sd_bus_message_new_method_call(bus_, &message, busName, "/org/freedesktop/DBus", busName,
                                         member.c_str()),
          "call");
    check(append(message), "arguments");
    const int result = sd_bus_call(bus_, message, 0, nullptr, nullptr);
    sd_bus_message_unref(message);
    return result >= 0;
}

bool BusProgram::isTaken(const std::string& name) {
    return callBus("GetNameOwner",
                   [&](auto* message) { return sd_bus_message_append(message, "s", name.c_str()); });
}

void BusProgram::requestName(const std::string& name) {
    callBus("RequestName",
            [&](auto* message) { return sd_bus_message_append(message, "su", name.c_str(), 6); });
}

void BusProgram::releaseName(const std::string& name) {
    callBus("ReleaseName", [&](auto* message) { return sd_bus_message_append(message, "s", name.c_str()); });
}

bool BusProgram::ping(const std::string& name) {
    const std::lock_guard lock(mutex_);
    return sd_bus_call_method(bus_, name.c_str(), "/", "org.freedesktop.DBus.Peer", "Ping", nullptr, nullptr,
                              nullptr) >= 0;
}

void BusProgram::addObject(const std::string& path) {
    const std::lock_guard lock(mutex_);
    object(path);
}

void BusProgram::addItem(const std::string& path, const std::string& id, const std::string& interface) {
    const std::lock_guard lock(mutex_);
    object(path).interface = interface;
    setText(path, "Id", id);
    setText(path, "Status", "Active");
    setProperty(path, "IconPixmap", pixmaps({20}, 0xffff0000));
}

void BusProgram::setProperty(const std::string& path, const std::string& property, const Append& append) {
    const std::lock_guard lock(mutex_);
    object(path).properties[property] = append;
}

void BusProgram::setText(const std::string& path, const std::string& property, const std::string& value) {
    setProperty(path, property,
                [value](auto* message) { return sd_bus_message_append(message, "v", "s", value.c_str()); });
}

void BusProgram::registerItem(const std::string& text, const std::string& watcher) {
    const std::lock_guard lock(mutex_);
    sd_bus_call_method_async(bus_, nullptr, watcher.c_str(), "/StatusNotifierWatcher", watcher.c_str(),
                             "RegisterStatusNotifierItem", nullptr, nullptr, "s", text.c_str());
}

void BusProgram::removeObject(const std::string& path) {
    const std::lock_guard lock(mutex_);
    sd_bus_slot_unref(objects_[path].slot);
    objects_.erase(path);
}

void BusProgram::setMenu(const std::string& path, const MenuEntry& root) {
    const std::lock_guard lock(mutex_);
    auto& menu = object(path);
    menu.interface = menuInterface;
    menu.menu = root;
}

void BusProgram::setMenuPath(const std::string& item, const std::string& menu) {
    setProperty(item, "Menu",
                [menu](auto* message) { return sd_bus_message_append(message, "v", "o", menu.c_str()); });
}

void BusProgram::tellOfLayout(const std::string& menu) {
    emit(menu, menuInterface, "LayoutUpdated",
         [](auto* message) { return sd_bus_message_append(message, "ui", 2, 0); });
}

void BusProgram::setMenuWhenShown(const std::string& path, const MenuEntry& root) {
    const std::lock_guard lock(mutex_);
    object(path).menuWhenShown = root;
}

void BusProgram::keepSilentOn(const std::string& member) {
    const std::lock_guard lock(mutex_);
    silent_.insert(member);
}

void BusProgram::answerAgain(const std::string& member) {
    const std::lock_guard lock(mutex_);
    silent_.erase(member);
    refused_.erase(member);
}

void BusProgram::refuse(const std::string& member, const std::string& error) {
    const std::lock_guard lock(mutex_);
    refused_[member] = error;
}

void BusProgram::emit(const std::string& path, const std::string& interface, const std::string& member,
                      const Append& append) {
    emitTo({}, path, interface, member, append);
}

void BusProgram::emitTo(const std::string& destination, const std::string& path, const std::string& interface,
                        const std::string& member, const Append& append) {
    const std::lock_guard lock(mutex_);
    sd_bus_message* message = nullptr;
    check(sd_bus_message_new_signal(bus_, &message, path.c_str(), interface.c_str(), member.c_str()),
          "signal");
    if (!destination.empty())
        check(sd_bus_message_set_destination(message, destination.c_str()), "destination");
    if (append)
        check(append(message), "arguments");
    sd_bus_send(bus_, message, nullptr);
    sd_bus_message_unref(message);
}

std::vector<std::string> BusProgram::calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

bool BusProgram::wasCalled(const std::string& call) const {
    const auto all = calls();
    return std::find(all.begin(), all.end(), call) != all.end();
}

int BusProgram::callsOf(const std::string& member) const {
    const auto all = calls();
    return static_cast<int>(std::count_if(all.begin(), all.end(), [&](const auto& call) {
        return call == member || call.starts_with(member + " ");
    }));
}

std::uint32_t BusProgram::lastTime() const {
    const std::lock_guard lock(mutex_);
    return lastTime_;
}

std::string BusProgram::interfaceOf(const std::string& member) const {
    const std::lock_guard lock(mutex_);
    const auto found = interfaces_.find(member);
    return found == interfaces_.end() ? std::string() : found->second;
}

BusProgram::Append BusProgram::pixmaps(const std::vector<int>& sides, std::uint32_t color) {
    return [sides, color](sd_bus_message* message) {
        int result = sd_bus_message_open_container(message, 'v', "a(iiay)");
        result = std::min(result, sd_bus_message_open_container(message, 'a', "(iiay)"));
        for (const int side : sides) {
            std::vector<std::uint8_t> bytes;
            for (int count = 0; count < side * side; ++count) {
                for (const int shift : {24, 16, 8, 0})
                    bytes.push_back(static_cast<std::uint8_t>(color >> shift));
            }
            result = std::min(result, sd_bus_message_open_container(message, 'r', "iiay"));
            result = std::min(result, sd_bus_message_append(message, "ii", side, side));
            result = std::min(result, sd_bus_message_append_array(message, 'y', bytes.data(), bytes.size()));
            result = std::min(result, sd_bus_message_close_container(message));
        }
        result = std::min(result, sd_bus_message_close_container(message));
        return std::min(result, sd_bus_message_close_container(message));
    };
}

BusProgram::Append BusProgram::whitePixmap(int width, int height, std::size_t bytes) {
    return [=](sd_bus_message* message) {
        void* space = nullptr;
        sd_bus_message_open_container(message, 'v', "a(iiay)");
        sd_bus_message_open_container(message, 'a', "(iiay)");
        sd_bus_message_open_container(message, 'r', "iiay");
        sd_bus_message_append(message, "ii", width, height);
        sd_bus_message_append_array_space(message, 'y', bytes, &space);
        if (bytes > 0)
            std::memset(space, 0xff, bytes);
        sd_bus_message_close_container(message);
        sd_bus_message_close_container(message);
        return sd_bus_message_close_container(message);
    };
}

int BusProgram::handle(sd_bus_message* message, void* context, sd_bus_error* error) {
    return static_cast<BusProgram*>(context)->answer(message, error);
}

void BusProgram::note(sd_bus_message* message) {
    std::string call = sd_bus_message_get_member(message);
    while (sd_bus_message_at_end(message, 1) == 0)
        call += " " + argument(message, lastTime_);
    sd_bus_message_rewind(message, 1);
    calls_.push_back(call);
}

int BusProgram::answer(sd_bus_message* message, sd_bus_error* error) {
    const std::string member = sd_bus_message_get_member(message);
    const auto found = objects_.find(sd_bus_message_get_path(message));
    if (member != "GetLayout")
        note(message);
    else
        calls_.push_back(member);
    if (silent_.contains(member))
        return 1;
    const std::string interface = sd_bus_message_get_interface(message);
    interfaces_[member] = interface;
    const bool isProperties = interface == "org.freedesktop.DBus.Properties";
    if (const auto refused = refused_.find(member); refused != refused_.end())
        return sd_bus_error_set(error, refused->second.c_str(), "refused");
    if (found == objects_.end() || (!isProperties && !found->second.isOf(interface)))
        return sd_bus_error_set(error, SD_BUS_ERROR_UNKNOWN_METHOD, "none");
    Object& object = found->second;
    if (isProperties) {
        const char* asked = nullptr;
        sd_bus_message_read(message, "s", &asked);
        if (member == "Get")
            return answerGet(message, object);
        if (member != "GetAll" || !object.isOf(asked))
            return sd_bus_error_set(error, SD_BUS_ERROR_UNKNOWN_INTERFACE, "none");
        return answerGetAll(message, object);
    }
    sd_bus_message* reply = nullptr;
    check(sd_bus_message_new_method_return(message, &reply), "reply");
    if (member == "AboutToShow")
        sd_bus_message_append(reply, "b", prepareMenu(object) ? 1 : 0);
    if (member == "GetLayout") {
        sd_bus_message_append(reply, "u", 1);
        appendMenu(reply, object.menu);
    }
    sd_bus_send(bus_, reply, nullptr);
    sd_bus_message_unref(reply);
    return 1;
}

int BusProgram::answerGetAll(sd_bus_message* message, const Object& object) {
    sd_bus_message* reply = nullptr;
    check(sd_bus_message_new_method_return(message, &reply), "reply");
    check(sd_bus_message_open_container(reply, 'a', "{sv}"), "dictionary");
    for (const auto& [name, append] : object.properties) {
        check(sd_bus_message_open_container(reply, 'e', "sv"), "entry");
        check(sd_bus_message_append(reply, "s", name.c_str()), "name");
        check(append(reply), "value");
        check(sd_bus_message_close_container(reply), "entry");
    }
    check(sd_bus_message_close_container(reply), "dictionary");
    sd_bus_send(bus_, reply, nullptr);
    sd_bus_message_unref(reply);
    return 1;
}

int BusProgram::answerGet(sd_bus_message* message, const Object& object) {
    const char* name = nullptr;
    check(sd_bus_message_read(message, "s", &name), "name");
    const auto property = object.properties.find(name);
    if (property == object.properties.end())
        return sd_bus_reply_method_errorf(message, SD_BUS_ERROR_UNKNOWN_PROPERTY, "none");
    sd_bus_message* reply = nullptr;
    check(sd_bus_message_new_method_return(message, &reply), "reply");
    check(property->second(reply), "value");
    sd_bus_send(bus_, reply, nullptr);
    sd_bus_message_unref(reply);
    return 1;
}

bool BusProgram::prepareMenu(Object& object) {
    const auto menu = std::exchange(object.menuWhenShown, std::nullopt);
    if (menu)
        object.menu = *menu;
    return menu.has_value();
}

void BusProgram::appendValue(sd_bus_message* message, const std::string& name, const Value& value) {
    sd_bus_message_open_container(message, 'e', "sv");
    sd_bus_message_append(message, "s", name.c_str());
    if (const auto* text = std::get_if<std::string>(&value)) {
        sd_bus_message_append(message, "v", "s", text->c_str());
    } else if (const auto* flag = std::get_if<bool>(&value)) {
        sd_bus_message_append(message, "v", "b", *flag ? 1 : 0);
    } else if (const auto* number = std::get_if<std::int32_t>(&value)) {
        sd_bus_message_append(message, "v", "i", *number);
    } else if (const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&value)) {
        sd_bus_message_open_container(message, 'v', "ay");
        sd_bus_message_append_array(message, 'y', bytes->data(), bytes->size());
        sd_bus_message_close_container(message);
    } else {
        sd_bus_message_open_container(message, 'v', "aas");
        sd_bus_message_open_container(message, 'a', "as");
        for (const auto& keys : std::get<std::vector<std::vector<std::string>>>(value)) {
            sd_bus_message_open_container(message, 'a', "s");
            for (const auto& key : keys)
                sd_bus_message_append(message, "s", key.c_str());
            sd_bus_message_close_container(message);
        }
        sd_bus_message_close_container(message);
        sd_bus_message_close_container(message);
    }
    sd_bus_message_close_container(message);
}

int BusProgram::appendMenu(sd_bus_message* message, const MenuEntry& entry) {
    check(sd_bus_message_open_container(message, 'r', "ia{sv}av"), "entry");
    sd_bus_message_append(message, "i", entry.id);
    sd_bus_message_open_container(message, 'a', "{sv}");
    for (const auto& [name, value] : entry.properties)
        appendValue(message, name, value);
    sd_bus_message_close_container(message);
    sd_bus_message_open_container(message, 'a', "v");
    for (const auto& child : entry.children) {
        sd_bus_message_open_container(message, 'v', "(ia{sv}av)");
        appendMenu(message, child);
        sd_bus_message_close_container(message);
    }
    sd_bus_message_close_container(message);
    return sd_bus_message_close_container(message);
}

}  // namespace velmo::desktop
