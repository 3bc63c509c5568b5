#include "files/JsonCursor.h"

#include "files/JsonInput.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace runtime {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

int hexValue(char c) {
    if (isDigit(c))
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

void appendUtf8(std::string& text, unsigned codePoint) {
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xC0 | (codePoint >> 6));
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        text += static_cast<char>(0xE0 | (codePoint >> 12));
        text += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | (codePoint >> 18));
        text += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
        text += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

// The length of the UTF-8 sequence at text (at most `left` bytes), 0 when it is not one: no
// overlong forms, no surrogates, nothing above U+10FFFF.
std::size_t utf8Length(const unsigned char* text, std::size_t left) {
    unsigned char lead = text[0];
    std::size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || length > left)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((text[i] & 0xC0) != 0x80)
            return 0;
    unsigned char second = text[1];
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
        (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
        return 0;
    return length;
}

} // namespace

bool JsonCursor::fail(const std::string& what) {
    return failAt(m_at, what);
}

bool JsonCursor::failAtValue(const std::string& what) {
    return failAt(m_valueStart, what);
}

bool JsonCursor::failAt(std::size_t offset, const std::string& what) {
    if (!m_problem.empty())
        return false;
    std::size_t line = 1, column = 1;
    for (std::size_t i = 0; i < offset && i < m_size; ++i) {
        if (m_text[i] == '\n') {
            ++line;
            column = 1;
        } else {
            ++column;
        }
    }
    m_problem = "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + what;
    return false;
}

bool JsonCursor::expect(char wanted, const char* what) {
    char c = 0;
    if (!peek(c))
        return false;
    if (c != wanted)
        return fail(std::string("expected ") + what);
    ++m_at;
    return true;
}

bool JsonCursor::enterObject() {
    return expect('{', "an object ('{')");
}

bool JsonCursor::enterArray() {
    return expect('[', "a list ('[')");
}

bool JsonCursor::next(char close, bool& first) {
    char c = 0;
    if (!peek(c))
        return false;
    if (c == close) {
        ++m_at;
        return false;
    }
    if (!first && c != ',')
        return fail(close == ']' ? "expected ',' or ']'" : "expected ',' or '}'");
    if (!first)
        ++m_at;
    first = false;
    if (close == ']')
        return true;
    // An object member follows: a comma must not be followed by the closing brace.
    return peek(c) && (c == '"' || fail("expected a key in double quotes"));
}

bool JsonCursor::readKey(std::string& key) {
    return readString(key) && expect(':', "':' after the key");
}

bool JsonCursor::readString(std::string& value) {
    char c = 0;
    if (!peek(c))
        return false;
    m_valueStart = m_at;
    if (!expect('"', "a string"))
        return false;
    value.clear();
    while (m_at < m_size) {
        char c = m_text[m_at];
        if (c == '"') {
            ++m_at;
            return true;
        }
        if (c == '\\') {
            if (!readEscape(value))
                return false;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            return fail("a control character inside a string");
        } else if (static_cast<unsigned char>(c) < 0x80) {
            value += c;
            ++m_at;
        } else if (!copyUtf8(value)) {
            return false;
        }
    }
    return fail("a string that does not end");
}

bool JsonCursor::copyUtf8(std::string& value) {
    std::size_t length =
        utf8Length(reinterpret_cast<const unsigned char*>(m_text + m_at), m_size - m_at);
    if (length == 0)
        return fail("text that is not UTF-8");
    value.append(m_text + m_at, length);
    m_at += length;
    return true;
}

bool JsonCursor::readEscape(std::string& value) {
    auto hex4 = [this](unsigned& unit) {
        if (m_size - m_at < 4)
            return fail("a \\u escape without four hexadecimal digits");
        unit = 0;
        for (int i = 0; i < 4; ++i) {
            int digit = hexValue(m_text[m_at + static_cast<std::size_t>(i)]);
            if (digit < 0)
                return fail("a \\u escape without four hexadecimal digits");
            unit = unit * 16 + static_cast<unsigned>(digit);
        }
        m_at += 4;
        return true;
    };
    const std::size_t start = m_at++;
    if (m_at >= m_size)
        return fail("a string that does not end");
    char c = m_text[m_at++];
    const char* simple = std::strchr("\"\\/bfnrt", c);
    if (c != '\0' && simple) {
        static const char kDecoded[] = "\"\\/\b\f\n\r\t";
        value += kDecoded[simple - "\"\\/bfnrt"];
        return true;
    }
    if (c != 'u')
        return failAt(start, std::string("an unknown escape \\") + c);
    unsigned unit = 0;
    if (!hex4(unit))
        return false;
    if (unit >= 0xDC00 && unit <= 0xDFFF)
        return fail("a \\u escape of a lone low surrogate");
    if (unit >= 0xD800 && unit <= 0xDBFF) {
        unsigned low = 0;
        if (m_size - m_at < 2 || m_text[m_at] != '\\' || m_text[m_at + 1] != 'u')
            return fail("a \\u escape of a high surrogate without its low one");
        m_at += 2;
        if (!hex4(low))
            return false;
        if (low < 0xDC00 || low > 0xDFFF)
            return fail("a \\u escape of a high surrogate without its low one");
        unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
    }
    appendUtf8(value, unit);
    return true;
}

bool JsonCursor::readNumber(double& value) {
    char c = 0;
    if (!peek(c))
        return false;
    const std::size_t start = m_at;
    m_valueStart = start;
    const char* const digits = m_text + start + (c == '-' ? 1 : 0);
    const char* const end = m_text + m_size;
    if (digits >= end || !isDigit(*digits))
        return fail("expected a number");
    // std::from_chars takes a little more than JSON does ("01", "1.", "1.e5"): the text it took
    // is checked against JSON's rules afterwards, which costs less than a scan of its own.
    const std::from_chars_result result = std::from_chars(m_text + start, end, value);
    const char* const last = result.ptr;
    if (*digits == '0' && digits + 1 < last && isDigit(digits[1]))
        return fail("a number with a leading zero");
    const void* dot = std::memchr(digits, '.', static_cast<std::size_t>(last - digits));
    const char* const afterDot = dot ? static_cast<const char*>(dot) + 1 : nullptr;
    if (afterDot && (afterDot == end || !isDigit(*afterDot)))
        return fail("a number without digits after its '.'");
    if (last < end && (*last == 'e' || *last == 'E'))
        return fail("a number without digits in its exponent");
    if (result.ec != std::errc())
        return fail("a number too large or too small for a double");
    m_at = static_cast<std::size_t>(last - m_text);
    return true;
}

bool JsonCursor::readInteger(long long minimum, long long maximum, long long& value) {
    char c = 0;
    if (!peek(c))
        return false;
    // A plain whole number of up to 18 digits, the usual case, is read without a double.
    std::size_t at = m_at + (c == '-' ? 1 : 0);
    const std::size_t first = at;
    long long whole = 0;
    while (at < m_size && at - first < 18 && isDigit(m_text[at]))
        whole = whole * 10 + (m_text[at++] - '0');
    const char after = at < m_size ? m_text[at] : ' ';
    const bool plain = at > first && (at == first + 1 || m_text[first] != '0') &&
                       !isDigit(after) && after != '.' && after != 'e' && after != 'E';
    if (plain) {
        m_valueStart = m_at;
        m_at = at;
        value = c == '-' ? -whole : whole;
        if (value < minimum || value > maximum)
            return failAtValue("expected a whole number from " + std::to_string(minimum) +
                               " to " + std::to_string(maximum));
        return true;
    }
    double number = 0.0;
    if (!readNumber(number))
        return false;
    if (number != std::floor(number) || number < static_cast<double>(minimum) ||
        number > static_cast<double>(maximum))
        return failAtValue("expected a whole number from " + std::to_string(minimum) + " to " +
                           std::to_string(maximum));
    value = static_cast<long long>(number);
    return true;
}

bool JsonCursor::readBool(bool& value) {
    char c = 0;
    if (!peek(c))
        return false;
    m_valueStart = m_at;
    for (const char* word : {"true", "false"}) {
        std::size_t length = std::strlen(word);
        if (m_size - m_at >= length && std::memcmp(m_text + m_at, word, length) == 0) {
            value = word[0] == 't';
            m_at += length;
            return true;
        }
    }
    return fail("expected true or false");
}

bool JsonCursor::skipValue() {
    return skipValue(0);
}

bool JsonCursor::skipValue(int depth) {
    char c = 0;
    if (!peek(c))
        return false;
    if (c == '{' || c == '[') {
        if (depth >= kMaxJsonDepth)
            return fail("values nested more than " + std::to_string(kMaxJsonDepth) +
                        " levels deep");
        ++m_at;
        const char close = c == '{' ? '}' : ']';
        std::string key;
        for (bool first = true; next(close, first);)
            if ((close == '}' && !readKey(key)) || !skipValue(depth + 1))
                return false;
        return ok();
    }
    if (c == '"') {
        std::string text;
        return readString(text);
    }
    if (c == 't' || c == 'f') {
        bool flag = false;
        return readBool(flag);
    }
    if (c == 'n') {
        if (m_size - m_at >= 4 && std::memcmp(m_text + m_at, "null", 4) == 0) {
            m_at += 4;
            return true;
        }
        return fail("expected a value");
    }
    double number = 0.0;
    return readNumber(number);
}

bool JsonCursor::atEnd() {
    skipSpace();
    return m_at == m_size || fail("text after the end of the JSON value");
}

} // namespace runtime
