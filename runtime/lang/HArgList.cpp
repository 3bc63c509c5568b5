#include "HArgList.h"

namespace {

HStatus outOfRange(unsigned index, unsigned length) {
    HString text("Argument ");
    text += HString().set(static_cast<double>(index));
    text += " is past the end of ";
    text += HString().set(static_cast<double>(length));
    text += " arguments.";
    return HStatus(HS::kInvalidParameter, text);
}

void report(HStatus* status, const HStatus& value) {
    if (status)
        *status = value;
}

// The argument as read(text, value) reads it; a text it cannot read fails, naming what it
// should have been.
template <typename T, typename Read>
T readArgument(const HArgList& list, unsigned index, HStatus* status, const char* what, Read read) {
    HStatus found;
    HString text = list.asString(index, &found);
    if (!found) {
        report(status, found);
        return T();
    }
    T value = T();
    if (!read(text, value)) {
        report(status, HStatus(HS::kInvalidParameter, "\"" + text + "\" is not " + what + "."));
        return T();
    }
    report(status, HS::kSuccess);
    return value;
}

} // namespace

HArgList::HArgList() = default;
HArgList::HArgList(const HStringArray& arguments) : m_arguments(arguments) {}

unsigned HArgList::length(HStatus* status) const {
    report(status, HS::kSuccess);
    return m_arguments.length();
}

HString HArgList::asString(unsigned index, HStatus* status) const {
    if (index >= m_arguments.length()) {
        report(status, outOfRange(index, m_arguments.length()));
        return HString();
    }
    report(status, HS::kSuccess);
    return m_arguments[index];
}

int HArgList::asInt(unsigned index, HStatus* status) const {
    return readArgument<int>(*this, index, status, "an integer",
                             [](const HString& text, int& value) {
                                 value = text.asInt();
                                 return text.isInt();
                             });
}

double HArgList::asDouble(unsigned index, HStatus* status) const {
    return readArgument<double>(*this, index, status, "a number",
                                [](const HString& text, double& value) {
                                    value = text.asDouble();
                                    return text.isDouble();
                                });
}

bool HArgList::asBool(unsigned index, HStatus* status) const {
    return readArgument<bool>(*this, index, status, "a truth value",
                              [](const HString& text, bool& value) {
                                  if (text == "true" || text == "on" || text == "yes")
                                      value = true;
                                  else if (text == "false" || text == "off" || text == "no")
                                      value = false;
                                  else if (text.isDouble())
                                      value = text.asDouble() != 0.0;
                                  else
                                      return false;
                                  return true;
                              });
}

HStatus HArgList::addArg(const HString& argument) {
    return m_arguments.append(argument);
}

HStatus HArgList::addArg(int argument) {
    return m_arguments.append(HString().set(static_cast<double>(argument)));
}

HStatus HArgList::addArg(double argument) {
    return m_arguments.append(HString().set(argument));
}
