#pragma once

#include "platform/macos/macos_test.h"
#include "scenarios/scenario_desktop.h"

namespace velmo::macos {

/// The whole program on the doubles of macOS, but for its windows.
class MacosScenarioDesktop : public ScenarioDesktop {
public:
    void run(const std::function<void()>& user) override;
    int endings() override;
    std::vector<std::string> leftBehind() override;

    void store(const std::string& key, const DefaultsValue& value) override;
    bool isStored(const std::string& key) override;
    bool storedFlag(const std::string& key) override;
    double storedNumber(const std::string& key) override;
    std::string storedText(const std::string& key) override;
    Data storedData(const std::string& key) override;

    Date now() override { return currentTime(); }
    void setHoursFromUtc(int hours) override;
    void wait(Seconds seconds) override;
    testing::AssertionResult happensAfter(Seconds seconds, const std::function<bool()>& condition) override;
    bool happensWithin(Seconds seconds, const std::function<bool()>& condition) override;

    bool hasItem(const std::string& item) override;
    bool isVisible(const std::string& item) override;
    double length(const std::string& item) override;
    bool isEnabled(const std::string& item) override;
    std::string title(const std::string& item) override;
    std::string toolTip(const std::string& item) override;
    std::string symbol(const std::string& item) override;
    void click(const std::string& item, ModifierFlags flags) override;

    void openMenu(const std::string& item, const std::function<void()>& whileOpen) override;
    std::vector<std::string> menuTitles() override;
    void choose(const std::string& title) override;
    void setOtherMenuOpen(bool isOpen) override;

    void movePointer(Place place) override;
    void clickWithPointer() override;
    void scroll(double deltaX, double deltaY) override;
    bool pressShortcut(std::uint16_t keyCode, std::uint32_t modifiers) override;
    std::vector<std::string> openedAddresses() override;
    void setMayCapture(bool may) override;
    int captureQuestions() override;
    void setTrusted(bool isTrusted) override;
    int trustQuestions() override;
    bool startsAtLogin() override;
    void setLoginError(const std::string& error) override;
    std::optional<double> iconSpacing() override;
    int logOuts() override;
    void setHiddenIcons(const std::vector<std::string>& names) override;
    std::string clickedIcon() override;

    void startAgain() override;

    /// Where the next wait counts from. Whatever does something tells it at its beginning: the machine may
    /// pause before that returns.
    void countFromNow() { countsFrom_ = currentTime(); }

protected:
    /// False where it takes more than some seconds.
    virtual bool waitUntil(const std::function<bool()>& condition) = 0;
    /// Lets happen what happens at once.
    void settle();

private:
    static Date currentTime();
    static Object itemOf(const std::string& item);
    static Object buttonOf(const std::string& item);
    void clickWith(const Object& button, const Event& event);

    bool isRunning_ = false;
    Date countsFrom_ = 0;
    std::vector<std::string> hiddenIcons_;
};

}  // namespace velmo::macos
