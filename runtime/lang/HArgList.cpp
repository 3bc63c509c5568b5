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
    HString text = asString(index, status);
    if (index >= m_arguments.length())
        return 0;
    if (!text.isInt()) {
        report(status, HStatus(HS::kInvalidParameter, "\"" + text + "\" is not an integer."));
        return 0;
    }
    return text.asInt();
}

double HArgList::asDouble(unsigned index, HStatus* status) const {
    HString text = asString(index, status);
    if (index >= m_arguments.length())
        return 0.0;
    if (!text.isDouble()) {
        report(status, HStatus(HS::kInvalidParameter, "\"" + text + "\" is not a number."));
        return 0.0;
    }
    return text.asDouble();
}

bool HArgList::asBool(unsigned index, HStatus* status) const {
    HString text = asString(index, status);
    if (index >= m_arguments.length())
        return false;
    if (text == "true" || text == "on" || text == "yes")
        return true;
    if (text == "false" || text == "off" || text == "no")
        return false;
    if (text.isDouble())
        return text.asDouble() != 0.0;
    report(status, HStatus(HS::kInvalidParameter, "\"" + text + "\" is not a truth value."));
    return false;
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
