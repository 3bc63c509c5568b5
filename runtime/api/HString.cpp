#include "HString.h"

#include "HStatus.h"
#include "HStringArray.h"

#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <type_traits>

namespace {

// The text without leading and trailing blanks.
std::string trimmed(const std::string& text) {
    const char* blanks = " \t\r\n";
    size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return std::string();
    size_t last = text.find_last_not_of(blanks);
    return text.substr(first, last - first + 1);
}

// The whole text, blanks around it and one leading '+' allowed, as a number of type T; a
// floating-point number must be finite.
template <typename T> bool parseNumber(const std::string& text, T& value) {
    std::string t = trimmed(text);
    const char* begin = t.c_str();
    if (*begin == '+')
        ++begin;
    const char* end = t.c_str() + t.size();
    if (begin == end)
        return false;
    auto result = std::from_chars(begin, end, value);
    if (result.ec != std::errc() || result.ptr != end)
        return false;
    if constexpr (std::is_floating_point_v<T>)
        return std::isfinite(value);
    return true;
}

} // namespace

HString::HString() = default;
HString::HString(const char* text) : m_text(text ? text : "") {}
HString::HString(const char* text, unsigned length)
    : m_text(text ? std::string(text, length) : "") {}
HString::HString(const std::string& text) : m_text(text) {}

const char* HString::asChar() const {
    return m_text.c_str();
}
unsigned HString::length() const {
    return static_cast<unsigned>(m_text.size());
}
bool HString::isEmpty() const {
    return m_text.empty();
}

HString HString::operator+(const HString& other) const {
    return HString(m_text + other.m_text);
}
HString HString::operator+(const char* other) const {
    return HString(m_text + (other ? other : ""));
}
HString& HString::operator+=(const HString& other) {
    m_text += other.m_text;
    return *this;
}
HString& HString::operator+=(const char* other) {
    if (other)
        m_text += other;
    return *this;
}
HString& HString::operator+=(char c) {
    m_text += c;
    return *this;
}

bool HString::operator==(const HString& other) const {
    return m_text == other.m_text;
}
bool HString::operator==(const char* other) const {
    return m_text == (other ? other : "");
}
bool HString::operator!=(const HString& other) const {
    return !(*this == other);
}
bool HString::operator!=(const char* other) const {
    return !(*this == other);
}
bool HString::operator<(const HString& other) const {
    return m_text < other.m_text;
}

HString HString::substring(int start, int end) const {
    if (start < 0)
        start = 0;
    int last = static_cast<int>(m_text.size()) - 1;
    if (end > last)
        end = last;
    if (start > end)
        return HString();
    return HString(m_text.substr(static_cast<size_t>(start), static_cast<size_t>(end - start + 1)));
}

int HString::index(char c) const {
    size_t at = m_text.find(c);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int HString::rindex(char c) const {
    size_t at = m_text.rfind(c);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

HStatus HString::split(char delimiter, HStringArray& pieces) const {
    pieces.clear();
    size_t start = 0;
    while (start <= m_text.size()) {
        size_t end = m_text.find(delimiter, start);
        if (end == std::string::npos)
            end = m_text.size();
        if (end > start)
            pieces.append(HString(m_text.substr(start, end - start)));
        start = end + 1;
    }
    return HS::kSuccess;
}

bool HString::isInt() const {
    int value;
    return parseNumber(m_text, value);
}

int HString::asInt() const {
    int value = 0;
    return parseNumber(m_text, value) ? value : 0;
}

bool HString::isDouble() const {
    double value;
    return parseNumber(m_text, value);
}

double HString::asDouble() const {
    double value = 0.0;
    return parseNumber(m_text, value) ? value : 0.0;
}

HString& HString::set(const char* text) {
    m_text = text ? text : "";
    return *this;
}

HString& HString::set(double value) {
    char buffer[64];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    m_text.assign(buffer, result.ptr);
    return *this;
}

HString& HString::set(double value, int precision) {
    if (precision < 0)
        precision = 0;
    char buffer[512];
    int written = std::snprintf(buffer, sizeof buffer, "%.*f", precision, value);
    if (written < 0)
        m_text.clear();
    else if (static_cast<size_t>(written) < sizeof buffer)
        m_text.assign(buffer, static_cast<size_t>(written));
    else {
        std::string large(static_cast<size_t>(written) + 1, '\0');
        std::snprintf(&large[0], large.size(), "%.*f", precision, value);
        large.resize(static_cast<size_t>(written));
        m_text = large;
    }
    return *this;
}

HString operator+(const char* left, const HString& right) {
    return HString(left) + right;
}
