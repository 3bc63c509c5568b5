#include "lang/ScriptParser.h"

#include <string>

namespace runtime {

namespace {

bool isNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isNameChar(char c) {
    return isNameStart(c) || (c >= '0' && c <= '9');
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

// Reads one script. A failure records the first problem and its line; every read function
// returns false from then on, so parsing unwinds without looking further.
class Parser {
public:
    Parser(const std::string& text, unsigned firstLine) : m_text(text), m_line(firstLine) {}

    bool parse(Script& script) {
        while (skipSeparators()) {
            ScriptStatement statement;
            if (!parseStatement(statement))
                return false;
            script.statements.push_back(std::move(statement));
        }
        return m_error.empty();
    }

    const std::string& error() const { return m_error; }
    unsigned errorLine() const { return m_errorLine; }

private:
    bool atEnd() const { return m_pos >= m_text.size(); }
    char peek(size_t ahead = 0) const {
        return m_pos + ahead < m_text.size() ? m_text[m_pos + ahead] : '\0';
    }
    bool atComment() const { return peek() == '/' && peek(1) == '/'; }

    bool fail(const std::string& reason) {
        if (m_error.empty()) {
            m_error = reason;
            m_errorLine = m_line;
        }
        return false;
    }

    void skipComment() {
        while (!atEnd() && peek() != '\n')
            ++m_pos;
    }

    void skipBlanks() {
        while (isBlank(peek()))
            ++m_pos;
    }

    // Blanks, line ends and comments (inside a procedure call's parentheses).
    void skipSpace() {
        for (;;) {
            skipBlanks();
            if (atComment())
                skipComment();
            else if (peek() == '\n') {
                ++m_pos;
                ++m_line;
            } else
                return;
        }
    }

    // Skips what lies between statements; false at the end of the text.
    bool skipSeparators() {
        for (;;) {
            skipSpace();
            if (peek() == ';')
                ++m_pos;
            else
                return !atEnd();
        }
    }

    bool atStatementEnd() const {
        return atEnd() || peek() == '\n' || peek() == ';' || atComment();
    }

    bool parseStatement(ScriptStatement& statement) {
        size_t start = m_pos;
        statement.line = m_line;
        std::string word = readWord(false);
        if (word.empty()) {
            char c = peek();
            if (c == '(' || c == ')')
                return fail(std::string("unexpected \"") + c + "\"");
            return fail("a statement must start with a command name");
        }
        if (!isNameStart(word[0]))
            return fail("a statement must start with a command name, not \"" + word + "\"");
        for (char c : word)
            if (!isNameChar(c))
                return fail("\"" + word + "\" is not a command name");
        statement.command = HString(word);
        m_lastEnd = m_pos;
        skipBlanks();
        bool ok = peek() == '(' ? parseCall(statement) : parseCommandArguments(statement);
        if (!ok)
            return false;
        statement.text = HString(m_text.substr(start, m_lastEnd - start));
        return true;
    }

    bool parseCommandArguments(ScriptStatement& statement) {
        for (skipBlanks(); !atStatementEnd(); skipBlanks()) {
            char c = peek();
            if (c == '(' || c == ')')
                return fail(std::string("unexpected \"") + c + "\"");
            ScriptArgument argument;
            if (!parseArgument(argument, false))
                return false;
            statement.arguments.push_back(std::move(argument));
        }
        return true;
    }

    bool parseCall(ScriptStatement& statement) {
        const std::string name = statement.command.str();
        statement.procedureCall = true;
        ++m_pos; // "("
        skipSpace();
        if (peek() != ')') {
            for (;;) {
                if (atEnd())
                    return fail("the call of " + name + " is not closed");
                char c = peek();
                if (c == '(')
                    return fail("unexpected \"(\"");
                if (c == ',' || c == ')' || c == ';')
                    return fail("missing argument in the call of " + name);
                ScriptArgument argument;
                if (!parseArgument(argument, true))
                    return false;
                statement.arguments.push_back(std::move(argument));
                skipSpace();
                if (peek() == ',') {
                    ++m_pos;
                    skipSpace();
                    continue;
                }
                if (peek() == ')')
                    break;
                if (atEnd())
                    return fail("the call of " + name + " is not closed");
                return fail("expected \",\" or \")\" in the call of " + name);
            }
        }
        ++m_pos; // ")"
        m_lastEnd = m_pos;
        skipBlanks();
        if (!atStatementEnd())
            return fail("unexpected text after the call of " + name);
        return true;
    }

    bool parseArgument(ScriptArgument& argument, bool inCall) {
        char c = peek();
        if (c == '"') {
            argument.kind = ScriptArgument::kString;
            if (!readString(argument.text))
                return false;
        } else if (c == '`') {
            argument.kind = ScriptArgument::kSubstitution;
            if (!readSubstitution(argument))
                return false;
        } else {
            argument.kind = ScriptArgument::kWord;
            argument.text = HString(readWord(inCall));
        }
        m_lastEnd = m_pos;
        return true;
    }

    std::string readWord(bool inCall) {
        size_t start = m_pos;
        for (; !atEnd(); ++m_pos) {
            char c = peek();
            if (isBlank(c) || c == '\n' || c == ';' || c == '"' || c == '`' || c == '(' ||
                c == ')' || atComment() || (inCall && c == ','))
                break;
        }
        return m_text.substr(start, m_pos - start);
    }

    bool readString(HString& value) {
        std::string text;
        ++m_pos; // opening quote
        for (;;) {
            if (atEnd() || peek() == '\n')
                return fail("unterminated string");
            char c = m_text[m_pos++];
            if (c == '"')
                break;
            if (c != '\\') {
                text += c;
                continue;
            }
            if (atEnd() || peek() == '\n')
                return fail("unterminated string");
            char escaped = m_text[m_pos++];
            switch (escaped) {
            case 'n':
                text += '\n';
                break;
            case 't':
                text += '\t';
                break;
            case 'r':
                text += '\r';
                break;
            default:
                text += escaped;
            }
        }
        value = HString(text);
        return true;
    }

    // The backquoted text runs to the next backquote that is not inside a string of its own.
    bool readSubstitution(ScriptArgument& argument) {
        size_t start = ++m_pos;
        bool inString = false;
        for (;; ++m_pos) {
            if (atEnd() || peek() == '\n')
                return fail("unterminated backquote");
            char c = peek();
            if (inString && c == '\\' && m_pos + 1 < m_text.size() && m_text[m_pos + 1] != '\n')
                ++m_pos;
            else if (c == '"')
                inString = !inString;
            else if (c == '`' && !inString)
                break;
        }
        std::string inner = m_text.substr(start, m_pos - start);
        ++m_pos; // closing backquote
        auto script = std::make_shared<Script>();
        Parser nested(inner, m_line);
        if (!nested.parse(*script))
            return fail(nested.error());
        if (script->statements.empty())
            return fail("empty backquotes");
        argument.text = HString(inner);
        argument.script = std::move(script);
        return true;
    }

    const std::string& m_text;
    size_t m_pos = 0;
    size_t m_lastEnd = 0;
    unsigned m_line;
    std::string m_error;
    unsigned m_errorLine = 0;
};

} // namespace

ParsedScript parseScript(const HString& text) {
    ParsedScript parsed;
    Parser parser(text.str(), 1);
    if (!parser.parse(parsed.script)) {
        parsed.script.statements.clear();
        parsed.error = HString("Syntax error in line " + std::to_string(parser.errorLine()) + ": " +
                               parser.error() + ".");
    }
    return parsed;
}

} // namespace runtime
