// HString: the host interface's text value, UTF-8 encoded.
//
// A plain value: copies are independent. Conversions to numbers report success through
// isInt()/isDouble() instead of failing; set(double) writes the shortest decimal text that
// reads back as the same double ("57", "0.1", "2.5"), which is how the host prints numbers in
// command strings and names.
#pragma once

#include <string>

class HStringArray;
class HStatus;

class HString {
public:
    HString();
    HString(const char* text);
    HString(const char* text, unsigned length);
    HString(const std::string& text);

    const char* asChar() const;
    // Length in bytes.
    unsigned length() const;
    bool isEmpty() const;

    HString operator+(const HString& other) const;
    HString operator+(const char* other) const;
    HString& operator+=(const HString& other);
    HString& operator+=(const char* other);
    HString& operator+=(char c);

    bool operator==(const HString& other) const;
    bool operator==(const char* other) const;
    bool operator!=(const HString& other) const;
    bool operator!=(const char* other) const;
    bool operator<(const HString& other) const;

    // Bytes from start to end, both included; an empty string when the range is empty or
    // lies outside the text.
    HString substring(int start, int end) const;
    // Position of the first (index) or last (rindex) occurrence of c, or -1.
    int index(char c) const;
    int rindex(char c) const;
    // Splits at every delimiter; empty pieces are dropped.
    HStatus split(char delimiter, HStringArray& pieces) const;

    // True when the whole text (surrounding blanks allowed) is a base-10 integer.
    bool isInt() const;
    int asInt() const;
    // True when the whole text (surrounding blanks allowed) is a decimal number.
    bool isDouble() const;
    double asDouble() const;

    HString& set(const char* text);
    // Shortest text that reads back as the same double, without a trailing ".0".
    HString& set(double value);
    // Fixed notation with the given number of decimals.
    HString& set(double value, int precision);

    const std::string& str() const { return m_text; }

private:
    std::string m_text;
};

HString operator+(const char* left, const HString& right);
