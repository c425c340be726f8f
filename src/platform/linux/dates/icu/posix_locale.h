#pragma once

#include <unicode/locid.h>

#include <string>

namespace velmo {

/// The locale with a name as POSIX writes it ("sr_RS.UTF-8@latin", "C"), with keywords
/// ("th_TH@calendar=gregorian") or as a language tag ("de-DE-u-ca-buddhist"). English where it names none.
icu::Locale localeFromPosixName(const std::string& name);

}  // namespace velmo
