// JsonCursor: reads untrusted JSON text front to back without building a document, for files
// too large for one (a weights file holds millions of numbers), checking the grammar of
// RFC 8259 as it goes.
//
// The reader of a format walks its layout with the calls below; each returns false once the
// text breaks the grammar or the caller gives up with fail(), and the first problem stays,
// prefixed with its line and column ("line 3, column 14: expected ',' or ']'"). Numbers are
// converted with std::from_chars, so a decimal written by std::to_chars reads back as the very
// same double. Strings must be UTF-8; escapes (\uXXXX with surrogate pairs too) are decoded.
// Values the caller does not read are skipped with skipValue(), which checks them as well and
// refuses nesting deeper than kMaxJsonDepth. Never throws.
//
// Lists and objects are walked with next(): after enterArray() or enterObject(), each call
// moves to the next element (taking the comma before it) and returns true, or takes the
// closing bracket and returns false; `first` is the caller's, set to true on entering.
//
//     bool first = true;
//     if (!cursor.enterArray()) return false;
//     while (cursor.next(']', first)) { ... read one element ... }
//     if (!cursor.ok()) return false;
#pragma once

#include <cstddef>
#include <string>

namespace runtime {

class JsonCursor {
public:
    JsonCursor(const char* text, std::size_t size) : m_text(text), m_size(size) {}

    bool ok() const { return m_problem.empty(); }
    // The first problem, with its place; empty while there is none.
    const std::string& problem() const { return m_problem; }
    // Records what is wrong at the current place (when nothing was wrong before); false.
    bool fail(const std::string& what);
    // The same at the start of the key or value read last, for values that are well formed but
    // wrong.
    bool failAtValue(const std::string& what);

    bool enterObject();
    bool enterArray();
    // See above; close is '}' or ']'.
    bool next(char close, bool& first);
    // A member's key and the colon after it.
    bool readKey(std::string& key);

    bool readString(std::string& value);
    bool readNumber(double& value);
    // A number whose value is a whole number from minimum to maximum.
    bool readInteger(long long minimum, long long maximum, long long& value);
    bool readBool(bool& value);
    bool skipValue();

    // Whether only white space is left; fails otherwise.
    bool atEnd();

    // Where the cursor is, to come back to with seek() (a value skipped before the reader knew
    // how to read it).
    std::size_t offset() const { return m_at; }
    void seek(std::size_t offset) { m_at = offset; }

private:
    // Inline: they run several times for every number of a large file.
    void skipSpace() {
        while (m_at < m_size) {
            const char c = m_text[m_at];
            if (c != ' ' && c != '\n' && c != '\r' && c != '\t')
                return;
            ++m_at;
        }
    }
    bool peek(char& c) {
        skipSpace();
        if (m_at >= m_size)
            return fail("the text ends too early");
        c = m_text[m_at];
        return ok();
    }
    bool failAt(std::size_t offset, const std::string& what);
    bool expect(char wanted, const char* what);
    bool skipValue(int depth);
    bool readEscape(std::string& value);
    bool copyUtf8(std::string& value);

    const char* m_text;
    std::size_t m_size;
    std::size_t m_at = 0;
    // Where the key or value read last began.
    std::size_t m_valueStart = 0;
    std::string m_problem;
};

} // namespace runtime
