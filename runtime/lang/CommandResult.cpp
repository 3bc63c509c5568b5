#include "lang/CommandResult.h"

namespace runtime {

namespace {

HString numberText(double value) {
    return HString().set(value);
}

template <typename Array, typename Convert>
HStringArray textsOf(const Array& array, Convert convert) {
    HStringArray texts;
    texts.reserve(array.length());
    for (const auto& element : array)
        texts.append(convert(element));
    return texts;
}

} // namespace

const char* CommandResult::describe(Kind kind) {
    switch (kind) {
    case kNone:
        return "no result";
    case kInt:
        return "an int";
    case kDouble:
        return "a double";
    case kString:
        return "a string";
    case kIntArray:
        return "an int array";
    case kDoubleArray:
        return "a double array";
    case kStringArray:
        return "a string array";
    }
    return "no result";
}

HStatus CommandResult::mismatch(Kind wanted) const {
    return HStatus(HS::kInvalidParameter, HString("The command gave ") + describe(kind()) +
                                              " where " + describe(wanted) + " was asked for.");
}

template <typename T> HStatus CommandResult::exactly(Kind wanted, T& value) const {
    if (kind() != wanted)
        return mismatch(wanted);
    value = std::get<T>(m_value);
    return HS::kSuccess;
}

HStatus CommandResult::get(int& value) const {
    return exactly(kInt, value);
}

HStatus CommandResult::get(double& value) const {
    if (kind() == kInt)
        value = std::get<int>(m_value);
    else if (kind() == kDouble)
        value = std::get<double>(m_value);
    else
        return mismatch(kDouble);
    return HS::kSuccess;
}

HStatus CommandResult::get(HString& value) const {
    return exactly(kString, value);
}

HStatus CommandResult::get(HIntArray& value) const {
    return exactly(kIntArray, value);
}

HStatus CommandResult::get(HDoubleArray& value) const {
    if (kind() == kIntArray) {
        const HIntArray& ints = std::get<HIntArray>(m_value);
        value.clear();
        value.reserve(ints.length());
        for (int element : ints)
            value.append(element);
    } else if (kind() == kDoubleArray)
        value = std::get<HDoubleArray>(m_value);
    else
        return mismatch(kDoubleArray);
    return HS::kSuccess;
}

HStatus CommandResult::get(HStringArray& value) const {
    return exactly(kStringArray, value);
}

HStringArray CommandResult::toTexts() const {
    switch (kind()) {
    case kNone:
        return HStringArray();
    case kInt:
        return HStringArray(1, numberText(std::get<int>(m_value)));
    case kDouble:
        return HStringArray(1, numberText(std::get<double>(m_value)));
    case kString:
        return HStringArray(1, std::get<HString>(m_value));
    case kIntArray:
        return textsOf(std::get<HIntArray>(m_value), numberText);
    case kDoubleArray:
        return textsOf(std::get<HDoubleArray>(m_value), numberText);
    case kStringArray:
        return std::get<HStringArray>(m_value);
    }
    return HStringArray();
}

HString CommandResult::toText() const {
    HString text;
    bool first = true;
    for (const HString& element : toTexts()) {
        if (!first)
            text += ' ';
        text += element;
        first = false;
    }
    return text;
}

} // namespace runtime
