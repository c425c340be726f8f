#include "foreign_message.h"
#include "linux/dbus/assistance.h"
#include "linux/dbus/color_scheme.h"

#include <cstdlib>
#include <iterator>

namespace {

using namespace velmo;

void require(bool condition) {
    if (!condition)
        std::abort();
}

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
    require(!isProper || (inAnswer == scheme && inChange == scheme));
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
    require(!isProper || isOnByAnswer == isOn);
}

}  // namespace

/// Answers and signals of services on the bus that are not items: what is as it should be is understood in
/// either byte order, whatever else comes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes bytes(data, size);
    const auto order = fuzz::ForeignMessage::anyOrder(bytes);
    readAssistance(bytes, order);
    readScheme(bytes, order);
    return 0;
}
