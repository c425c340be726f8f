#pragma once

#include "macos/foundation/ns_dictionary.h"
#include "macos/foundation/ns_number.h"

#include <string>

namespace velmo::macos::doubles {

/// A class whose objects keep whatever they are given, by name. Register it once it has its methods.
RawClass makeRecordClass(const char* name);

/// A new object of such a class.
Object makeRecord(const char* className);

void setMember(const Object& record, const char* name, const Object& value);
void setMember(const Object& record, const char* name, double value);
Object member(const Object& record, const char* name);
/// 0 for none of that name.
double numberMember(const Object& record, const char* name);

}  // namespace velmo::macos::doubles
