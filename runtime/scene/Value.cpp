#include "scene/Value.h"

#include <cmath>
#include <limits>

namespace runtime {

ValueType valueTypeOf(const Value& value) {
    switch (value.index()) {
    case 1:
        return ValueType::kBool;
    case 2:
        return ValueType::kInt;
    case 3:
        return ValueType::kDouble;
    case 4:
        return ValueType::kString;
    case 5:
        return ValueType::kStringArray;
    default:
        return ValueType::kNone;
    }
}

Value zeroValue(ValueType type) {
    switch (type) {
    case ValueType::kBool:
        return false;
    case ValueType::kInt:
        return 0;
    case ValueType::kDouble:
        return 0.0;
    case ValueType::kString:
        return std::string();
    case ValueType::kStringArray:
        return StringList();
    case ValueType::kNone:
        break;
    }
    return std::monostate();
}

bool isNumeric(ValueType type) {
    return type == ValueType::kBool || type == ValueType::kInt || type == ValueType::kDouble;
}

namespace {

bool numberOf(const Value& value, double& number) {
    if (const bool* b = std::get_if<bool>(&value))
        number = *b ? 1.0 : 0.0;
    else if (const int* i = std::get_if<int>(&value))
        number = *i;
    else if (const double* d = std::get_if<double>(&value))
        number = *d;
    else
        return false;
    return true;
}

} // namespace

bool convertValue(const Value& from, ValueType to, Value& result) {
    ValueType fromType = valueTypeOf(from);
    if (fromType == to) {
        result = from;
        return true;
    }
    double number = 0.0;
    if (!isNumeric(to) || !numberOf(from, number))
        return false;
    switch (to) {
    case ValueType::kBool:
        result = number != 0.0;
        return true;
    case ValueType::kInt: {
        if (!std::isfinite(number) || std::fabs(number) > std::numeric_limits<int>::max())
            return false;
        result = static_cast<int>(std::lround(number));
        return true;
    }
    default:
        result = number;
        return true;
    }
}

} // namespace runtime
