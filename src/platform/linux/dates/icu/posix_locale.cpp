#include "posix_locale.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace velmo {

namespace {

constexpr const char* plainEnglish = "en_US_POSIX";

/// What a modifier says about the way of writing, as ICU says it.
constexpr std::pair<std::string_view, std::string_view> scripts[] = {
    {"latin", "Latn"}, {"cyrillic", "Cyrl"}, {"devanagari", "Deva"}, {"arabic", "Arab"}};

std::string withModifier(std::string base, std::string_view modifier) {
    if (modifier.find('=') != std::string_view::npos)
        return base.append("@").append(modifier);
    if (modifier == "valencia")
        return base.append("_VALENCIA");
    const auto* script = std::find_if(std::begin(scripts), std::end(scripts),
                                      [&](const auto& known) { return known.first == modifier; });
    if (script != std::end(scripts))
        base.insert(std::min(base.find('_'), base.size()), "_" + std::string(script->second));
    return base;
}

}  // namespace

icu::Locale localeFromPosixName(const std::string& name) {
    const auto modifierPlace = std::min(name.find('@'), name.size());
    std::string base = name.substr(0, std::min(name.find('.'), modifierPlace));
    if (base.empty() || base == "C" || base == "POSIX")
        return {plainEnglish};
    icu::Locale locale;
    if (base.find('-') != std::string::npos) {
        std::replace(base.begin(), base.end(), '_', '-');
        UErrorCode status = U_ZERO_ERROR;
        locale = icu::Locale::forLanguageTag(base, status);
        if (U_FAILURE(status))
            locale.setToBogus();
    } else {
        const auto modifier = std::string_view(name).substr(std::min(modifierPlace + 1, name.size()));
        locale = icu::Locale::createCanonical(withModifier(base, modifier).c_str());
    }
    return locale.isBogus() || *locale.getLanguage() == '\0' ? icu::Locale(plainEnglish) : locale;
}

}  // namespace velmo
