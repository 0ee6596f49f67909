// ScriptChecks: what scripts know as `test`:
//
//     test.Equal what, actual, expected    reports when the two aren't equal as texts
//     test.Argument(n)                     the script's n-th argument, from 1
//     test.Create(progId)                  an object of a component; as the language's own way to
//                                          create one, except that Wine's engines keep a class
//                                          factory then, and with it the library, for good
//     test.Codes("1 -2 3")                 an array of 16-bit integers, which no script can make
//     test.Through(object, id)             the object by another of its interfaces, which no script
//                                          can ask for
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/windows/support/ScriptedObject.h"

namespace krv::tests {

// `report` is given each difference.
[[nodiscard]] ScriptedPointer NewScriptChecks(std::vector<std::string> arguments,
                                              std::function<void(const std::string&)> report);

// Nothing, Empty, Null, True, a number or a text, as an automation caller reads it.
[[nodiscard]] std::string TextOfValue(const VARIANT& value);

}  // namespace krv::tests
