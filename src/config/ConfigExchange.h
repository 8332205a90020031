#pragma once

#include "platform/Settings.h"
#include "plist/Value.h"
#include "support/ErrorOr.h"

#include <string>
#include <string_view>
#include <vector>

// The whole configuration (the five menu lists and the preferences a person sets) as one
// property-list file, to keep or to carry to another machine.
namespace px::exchange {

// The suite keys an exchange file holds, lists first.
const std::vector<std::string>& configurationKeys();

// The configuration as it is stored now: a dictionary of the keys above that the suite has.
plist::Value currentConfiguration(platform::Settings& suite);

// The dictionary unchanged when it has the shape of a configuration: a dictionary holding at
// least one menu list, every list an array of dictionaries whose text fields are texts and whose
// flags are booleans or numbers, every preference of its type. Otherwise an error naming the
// first fault; keys it does not know are left out of the result.
ErrorOr<plist::Value> checkedConfiguration(const plist::Value& root);

ErrorOr<void> exportConfiguration(platform::Settings& suite, const std::string& path);

// Reads and checks the file first, and only then replaces every configuration key of the suite
// (a key the file lacks is removed): a damaged file or one of the wrong shape changes nothing.
ErrorOr<void> importConfiguration(platform::Settings& suite, const std::string& path);

} // namespace px::exchange
