#pragma once

#include <systemd/sd-bus.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <variant>
#include <vector>

namespace velmo::desktop {

/// A program on a session bus that has items and menus, whatever they are like. It answers in a thread of its
/// own.
class BusProgram {
public:
    /// Appends one complete value.
    using Append = std::function<int(sd_bus_message*)>;

    /// Texts within texts are shortcuts, numbers in a row are bytes.
    using Value = std::variant<std::string, bool, std::int32_t, std::vector<std::vector<std::string>>,
                               std::vector<std::uint8_t>>;

    struct MenuEntry {
        std::int32_t id = 0;
        std::map<std::string, Value> properties;
        std::vector<MenuEntry> children;
    };

    explicit BusProgram(const std::string& address);
    ~BusProgram();
    BusProgram(const BusProgram&) = delete;
    BusProgram& operator=(const BusProgram&) = delete;

    const std::string& name() const { return name_; }
    /// True while a program on the bus has the name.
    bool isTaken(const std::string& name);
    void requestName(const std::string& name);
    void releaseName(const std::string& name);

    /// Asks whoever has this name for a sign of life, and waits for it. False where none comes.
    bool ping(const std::string& name);

    /// An object that answers for every interface, and has no properties.
    void addObject(const std::string& path);
    /// An item with an id, a red icon and the given interface, not yet registered.
    void addItem(const std::string& path, const std::string& id,
                 const std::string& interface = "org.kde.StatusNotifierItem");
    void setProperty(const std::string& path, const std::string& property, const Append& append);
    void setText(const std::string& path, const std::string& property, const std::string& value);
    void registerItem(const std::string& text, const std::string& watcher = "org.kde.StatusNotifierWatcher");
    void removeObject(const std::string& path);
    void setMenu(const std::string& path, const MenuEntry& root);
    /// Lets the item say that its menu is there.
    void setMenuPath(const std::string& item, const std::string& menu = "/Menu");
    /// Says that the menu is another one now.
    void tellOfLayout(const std::string& menu = "/Menu");
    /// The menu that it becomes once somebody is about to show it, which the answer tells.
    void setMenuWhenShown(const std::string& path, const MenuEntry& root);
    /// From now on nothing is answered, until `goOn`; what has come meanwhile is answered then.
    void pause() { paused_ = true; }
    void goOn() { paused_ = false; }
    /// Calls to these members are not answered, until `answerAgain`.
    void keepSilentOn(const std::string& member);
    void answerAgain(const std::string& member);
    /// Calls to these members are answered with an error, as by those who lack them, until `answerAgain`.
    void refuse(const std::string& member, const std::string& error = SD_BUS_ERROR_UNKNOWN_METHOD);

    void emit(const std::string& path, const std::string& interface, const std::string& member,
              const Append& append = nullptr);
    /// To that connection alone, whatever it has asked to be told of.
    void emitTo(const std::string& destination, const std::string& path, const std::string& interface,
                const std::string& member, const Append& append = nullptr);
    /// The calls so far, but for those that only ask: a member and its arguments.
    std::vector<std::string> calls() const;
    bool wasCalled(const std::string& call) const;
    int callsOf(const std::string& member) const;
    /// Of the last call that told one.
    std::uint32_t lastTime() const;
    /// Of the last call to this member; empty for none.
    std::string interfaceOf(const std::string& member) const;

    /// An icon of one colour, in network byte order.
    static Append pixmaps(const std::vector<int>& sides, std::uint32_t color);
    /// One that says to be of that size, with so many bytes of white.
    static Append whitePixmap(int width, int height, std::size_t bytes);

private:
    struct Object {
        bool isOf(const std::string& other) const { return interface.empty() || interface == other; }

        std::string interface;
        std::map<std::string, Append> properties;
        MenuEntry menu;
        std::optional<MenuEntry> menuWhenShown;
        sd_bus_slot* slot = nullptr;
    };

    static int handle(sd_bus_message* message, void* context, sd_bus_error* error);
    int answer(sd_bus_message* message, sd_bus_error* error);
    int answerGetAll(sd_bus_message* message, const Object& object);
    int answerGet(sd_bus_message* message, const Object& object);
    /// True where the menu has changed.
    static bool prepareMenu(Object& object);
    static void appendValue(sd_bus_message* message, const std::string& name, const Value& value);
    static int appendMenu(sd_bus_message* message, const MenuEntry& entry);
    void note(sd_bus_message* message);
    /// False where the bus answers with an error.
    bool callBus(const std::string& member, const Append& append);
    void run();
    Object& object(const std::string& path);

    mutable std::recursive_mutex mutex_;
    sd_bus* bus_ = nullptr;
    std::string name_;
    std::map<std::string, Object> objects_;
    std::set<std::string> silent_;
    std::map<std::string, std::string> refused_;
    std::vector<std::string> calls_;
    std::uint32_t lastTime_ = 0;
    std::map<std::string, std::string> interfaces_;
    std::atomic<bool> ending_ = false;
    std::atomic<bool> paused_ = false;
    std::thread thread_;
};

}  // namespace velmo::desktop
