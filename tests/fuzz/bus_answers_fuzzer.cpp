#include "foreign_message.h"
#include "linux/dbus/application_service.h"
#include "linux/dbus/assistance.h"
#include "linux/dbus/color_scheme.h"
#include "linux/status_notifier/foreign_watcher.h"
#include "require.h"

#include <array>
#include <iterator>
#include <string>

namespace {

using namespace velmo;

/// What a desktop's portal says of dark and light windows, in as many variants as it takes.
void readScheme(fuzz::Bytes& bytes, std::endian order) {
    const auto scheme = static_cast<std::int32_t>(bytes.number(4));
    const bool isProper = bytes.below(2) == 0;
    fuzz::ForeignMessage answer(bytes, order);
    fuzz::ForeignMessage change(bytes, order);
    change.text("org.freedesktop.appearance");
    change.text("color-scheme");
    if (isProper) {
        answer.open('v', "v");
        for (auto* message : {&answer, &change}) {
            message->open('v', "i");
            message->integer(scheme);
            message->close();
        }
        answer.close();
    } else {
        answer.fillVariant({"v", "u"});
        answer.fill(answer.anyType());
        change.fillVariant({"u", "v"});
    }
    const auto sealedAnswer = answer.seal();
    const auto sealedChange = change.seal();
    const auto inAnswer = dbus::ColorScheme::schemeInAnswer(sealedAnswer.get());
    const auto inChange = dbus::ColorScheme::schemeInChange(sealedChange.get());
    fuzz::require(!isProper || (inAnswer == scheme && inChange == scheme));
}

/// What a session says of assistive programs.
void readAssistance(fuzz::Bytes& bytes, std::endian order) {
    static constexpr const char* names[] = {"IsEnabled", "ScreenReaderEnabled", "Other"};
    bool isOn = false;
    bool isProper = true;
    fuzz::ForeignMessage answer(bytes, order);
    answer.open('a', "{sv}");
    for (auto count = bytes.below(8); count > 0; --count) {
        const auto name = bytes.below(std::size(names));
        answer.open('e', "sv");
        answer.text(names[name]);
        if (bytes.below(4) == 0) {
            isProper = false;
            answer.fillVariant({"b"});
        } else {
            const bool value = bytes.below(2) == 1;
            answer.open('v', "b");
            answer.boolean(value);
            answer.close();
            isOn = isOn || (value && name < 2);
        }
        answer.close();
    }
    answer.close();
    const auto sealed = answer.seal();
    const bool isOnByAnswer = dbus::Assistance::isOnBy(sealed.get());
    fuzz::require(!isProper || isOnByAnswer == isOn);
}

/// The items of another watcher, one of them as it should be, and who knows what after it.
void readItems(fuzz::Bytes& bytes, std::endian order) {
    const bool isProper = bytes.below(4) > 0;
    fuzz::ForeignMessage answer(bytes, order);
    if (isProper) {
        answer.open('v', "as");
        answer.open('a', "s");
        answer.text(":1.7/Item");
        for (auto count = bytes.below(8); count > 0; --count)
            answer.text(bytes.text(bytes.byte()));
        answer.close();
        answer.close();
    } else {
        answer.fillVariant({"as", "av", "ao"});
    }
    int found = 0;
    const auto sealed = answer.seal();
    status_notifier::ForeignWatcher::readItems(sealed.get(), ":1.3", [&](const auto& item) {
        ++found;
        fuzz::require(sd_bus_service_name_is_valid(item.service.c_str()) > 0);
        fuzz::require(sd_bus_object_path_is_valid(item.path.c_str()) > 0);
    });
    fuzz::require(!isProper || found > 0);
}

/// A call of an action, of the type that the library lets through.
void readAction(fuzz::Bytes& bytes, std::endian order) {
    static constexpr const char* names[] = {"toggle", "toggle-all", "panel", "settings", "quit"};
    const auto choice = bytes.below(2 * std::size(names));
    const auto name = choice < std::size(names) ? names[choice] : bytes.text(bytes.byte());
    const auto parameters = bytes.below(3);
    fuzz::ForeignMessage call(bytes, order);
    call.text(name);
    call.open('a', "v");
    for (std::size_t count = 0; count < parameters; ++count)
        call.fillVariant({"s"});
    call.close();
    call.fill("a{sv}");
    sd_bus_error error{};
    const auto sealed = call.seal();
    const auto command = dbus::ApplicationService::commandIn(sealed.get(), &error);
    fuzz::require(command.has_value() != (sd_bus_error_is_set(&error) != 0));
    fuzz::require(!command || parameters == 0);
    fuzz::require(command || parameters > 0 || choice >= std::size(names));
    sd_bus_error_free(&error);
}

}  // namespace

/// Answers, signals and calls on the bus that are not about items' looks: what is as it should be is
/// understood in either byte order, whatever else comes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes bytes(data, size);
    const auto order = fuzz::ForeignMessage::anyOrder(bytes);
    constexpr std::array readers = {readAssistance, readScheme, readItems, readAction};
    readers.at(bytes.below(readers.size()))(bytes, order);
    return 0;
}
