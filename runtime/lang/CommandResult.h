// CommandResult: the result of one statement of the command language: none, an int, a double,
// a string, or an array of ints, doubles or strings. Commands set it through
// HPxCommand::setResult; executeCommand and backquotes read it.
//
// A plain value. Reading it as another type converts only where nothing is lost (an int as a
// double, an int array as a double array); any other reading fails with kInvalidParameter and
// a message naming both types.
#pragma once

#include "HDoubleArray.h"
#include "HIntArray.h"
#include "HStatus.h"
#include "HString.h"
#include "HStringArray.h"

#include <variant>

namespace runtime {

class CommandResult {
public:
    enum Kind { kNone, kInt, kDouble, kString, kIntArray, kDoubleArray, kStringArray };

    CommandResult() = default;
    CommandResult(int value) : m_value(value) {}
    CommandResult(double value) : m_value(value) {}
    CommandResult(const HString& value) : m_value(value) {}
    CommandResult(const HIntArray& value) : m_value(value) {}
    CommandResult(const HDoubleArray& value) : m_value(value) {}
    CommandResult(const HStringArray& value) : m_value(value) {}

    Kind kind() const { return static_cast<Kind>(m_value.index()); }
    bool isNone() const { return kind() == kNone; }

    HStatus get(int& value) const;
    HStatus get(double& value) const;
    HStatus get(HString& value) const;
    HStatus get(HIntArray& value) const;
    HStatus get(HDoubleArray& value) const;
    HStatus get(HStringArray& value) const;

    // Numbers as HString::set(double) writes them, array elements separated by spaces, nothing
    // for no result.
    HString toText() const;
    // One text per element: what a backquoted command gives as arguments.
    HStringArray toTexts() const;

    static const char* describe(Kind kind);

private:
    HStatus mismatch(Kind wanted) const;
    template <typename T> HStatus exactly(Kind wanted, T& value) const;

    std::variant<std::monostate, int, double, HString, HIntArray, HDoubleArray, HStringArray>
        m_value;
};

} // namespace runtime
