// Value: one stored attribute value: a bool, an int, a double, a string or a string array.
// std::monostate stands for "no value" (message and compound attributes hold none).
//
// Numbers convert into each other on request (convertValue); text never converts to a number
// or back: asking for that fails, which is how a wrong value type is refused.
#pragma once

#include <string>
#include <variant>
#include <vector>

namespace runtime {

using StringList = std::vector<std::string>;
using Value = std::variant<std::monostate, bool, int, double, std::string, StringList>;

// The value types an attribute can hold.
enum class ValueType { kNone, kBool, kInt, kDouble, kString, kStringArray };

ValueType valueTypeOf(const Value& value);
// The zero value of a type (false, 0, 0.0, "", {}).
Value zeroValue(ValueType type);
bool isNumeric(ValueType type);
// Converts between numeric types (bool: nonzero; int: rounded to nearest); a value of the
// same type passes unchanged. False when the conversion does not exist.
bool convertValue(const Value& from, ValueType to, Value& result);

} // namespace runtime
