#include "rowQuery.h"

#include <QHash>

namespace rowQuery {

namespace {

// Deeper nesting than any query a person writes; it keeps reading and testing off the end of
// the stack whatever the text.
constexpr int kMaxDepth = 64;

struct Token {
    enum class Type { kWord, kQuoted, kNumber, kComparison, kOpen, kClose } type;
    QString text;
};

bool isWordStart(QChar c) {
    return c.isLetter() || c == '_';
}

bool isWordPart(QChar c) {
    return c.isLetterOrNumber() || c == '_' || c == ':' || c == '|' || c == '.';
}

bool isNumberStart(const QString& text, int at) {
    const QChar c = text[at];
    if (c.isDigit() || c == '.')
        return true;
    return (c == '-' || c == '+') && at + 1 < text.size() &&
           (text[at + 1].isDigit() || text[at + 1] == '.');
}

// Splits the text into tokens; false, with the reason, at a character no token starts with.
bool tokenize(const QString& text, std::vector<Token>& tokens, QString& error) {
    int at = 0;
    while (at < text.size()) {
        const QChar c = text[at];
        const int start = at;
        if (c.isSpace()) {
            ++at;
        } else if (c == '(' || c == ')') {
            tokens.push_back({c == '(' ? Token::Type::kOpen : Token::Type::kClose, QString(c)});
            ++at;
        } else if (c == '"') {
            const int end = text.indexOf('"', at + 1);
            if (end < 0) {
                error =
                    QString("The row query has a quote that does not end: %1").arg(text.mid(at));
                return false;
            }
            tokens.push_back({Token::Type::kQuoted, text.mid(at + 1, end - at - 1)});
            at = end + 1;
        } else if (QString("<>=!").contains(c)) {
            // All signs in a row make one token, so that "=>" is named whole when refused.
            while (at < text.size() && QString("<>=!").contains(text[at]))
                ++at;
            tokens.push_back({Token::Type::kComparison, text.mid(start, at - start)});
        } else if (isNumberStart(text, at)) {
            ++at;
            while (at < text.size() &&
                   (text[at].isLetterOrNumber() || text[at] == '.' ||
                    ((text[at] == '-' || text[at] == '+') && text[at - 1].toLower() == 'e')))
                ++at;
            tokens.push_back({Token::Type::kNumber, text.mid(start, at - start)});
        } else if (isWordStart(c)) {
            while (at < text.size() && isWordPart(text[at]))
                ++at;
            tokens.push_back({Token::Type::kWord, text.mid(start, at - start)});
        } else {
            error = QString("The row query cannot read \"%1\".").arg(c);
            return false;
        }
    }
    return true;
}

// Recursive descent over the tokens: or-terms of and-terms of unary terms.
class Reader {
public:
    Reader(const std::vector<Token>& tokens, const QStringList& columnNames,
           std::vector<Query::Node>& nodes)
        : tokens(tokens), nodes(nodes) {
        for (int c = 0; c < columnNames.size(); ++c)
            columns.insert(columnNames[c], c);
    }

    bool readAll(QString& error) {
        const int root = readOr(0);
        if (root >= 0 && at < tokens.size())
            fail(QString("The row query cannot read \"%1\".").arg(tokens[at].text));
        error = failure;
        return failure.isEmpty();
    }

private:
    int readOr(int depth) { return readChain(depth, "or", Query::Kind::kOr); }
    int readAnd(int depth) { return readChain(depth, "and", Query::Kind::kAnd); }

    // Terms joined by `word`; the and-chain reads unary terms, the or-chain and-chains.
    int readChain(int depth, const char* word, Query::Kind kind) {
        const bool isOr = kind == Query::Kind::kOr;
        int left = isOr ? readAnd(depth) : readUnary(depth);
        while (left >= 0 && isWord(word)) {
            ++at;
            const int right = isOr ? readAnd(depth) : readUnary(depth);
            if (right < 0)
                return -1;
            left = add({kind, {}, 0.0, -1, left, right});
        }
        return left;
    }

    int readUnary(int depth) {
        if (depth > kMaxDepth)
            return fail(QString("The row query nests too deeply at \"%1\".").arg(current()));
        if (isWord("not")) {
            ++at;
            const int operand = readUnary(depth + 1);
            return operand < 0 ? -1 : add({Query::Kind::kNot, {}, 0.0, -1, operand, -1});
        }
        if (at < tokens.size() && tokens[at].type == Token::Type::kOpen) {
            ++at;
            const int inner = readOr(depth + 1);
            if (inner < 0)
                return -1;
            if (at >= tokens.size() || tokens[at].type != Token::Type::kClose)
                return expected("\")\"");
            ++at;
            return inner;
        }
        return readTerm();
    }

    int readTerm() {
        if (at >= tokens.size())
            return expected("a term");
        const Token& token = tokens[at];
        if (token.type == Token::Type::kWord && token.text == "unnormalised") {
            ++at;
            return add({Query::Kind::kUnnormalised, {}, 0.0, -1, -1, -1});
        }
        if (token.type == Token::Type::kWord && token.text == "locked") {
            ++at;
            return add({Query::Kind::kLocked, {}, 0.0, -1, -1, -1});
        }
        Query::Node node;
        if (token.type == Token::Type::kWord && token.text == "influences") {
            node.kind = Query::Kind::kInfluences;
        } else if (token.type == Token::Type::kWord && token.text == "sum") {
            node.kind = Query::Kind::kSum;
        } else if (token.type == Token::Type::kWord || token.type == Token::Type::kQuoted) {
            if (isKeyword(token.text) && token.type == Token::Type::kWord)
                return fail(QString("The row query cannot read \"%1\".").arg(token.text));
            const auto column = columns.constFind(token.text);
            if (column == columns.constEnd())
                return fail(QString("Unknown joint \"%1\" in the row query.").arg(token.text));
            node.kind = Query::Kind::kJoint;
            node.column = column.value();
        } else {
            return fail(QString("The row query cannot read \"%1\".").arg(token.text));
        }
        ++at;
        if (!readComparison(node.comparison) || !readNumber(node.value))
            return -1;
        return add(node);
    }

    bool readComparison(Query::Comparison& comparison) {
        static const QHash<QString, Query::Comparison> kComparisons{
            {"<", Query::Comparison::kLess},    {"<=", Query::Comparison::kLessOrEqual},
            {">", Query::Comparison::kGreater}, {">=", Query::Comparison::kGreaterOrEqual},
            {"==", Query::Comparison::kEqual},  {"!=", Query::Comparison::kNotEqual}};
        if (at >= tokens.size())
            return expected("a comparison") >= 0;
        const auto found = kComparisons.constFind(tokens[at].text);
        if (tokens[at].type != Token::Type::kComparison || found == kComparisons.constEnd())
            return fail(QString("The row query cannot read \"%1\".").arg(tokens[at].text)) >= 0;
        comparison = found.value();
        ++at;
        return true;
    }

    bool readNumber(double& value) {
        if (at >= tokens.size())
            return expected("a number") >= 0;
        bool ok = false;
        if (tokens[at].type == Token::Type::kNumber)
            value = tokens[at].text.toDouble(&ok);
        if (!ok || !std::isfinite(value))
            return fail(QString("The row query cannot read \"%1\".").arg(tokens[at].text)) >= 0;
        ++at;
        return true;
    }

    static bool isKeyword(const QString& word) {
        return word == "and" || word == "or" || word == "not";
    }

    bool isWord(const char* word) const {
        return at < tokens.size() && tokens[at].type == Token::Type::kWord &&
               tokens[at].text == QLatin1String(word);
    }

    QString current() const { return at < tokens.size() ? tokens[at].text : QString(); }

    // The text ended, or stopped making sense, where `what` should have come.
    int expected(const char* what) {
        if (at < tokens.size())
            return fail(QString("The row query cannot read \"%1\".").arg(tokens[at].text));
        return fail(QString("The row query needs %1 after \"%2\".")
                        .arg(QLatin1String(what), tokens.back().text));
    }

    int fail(const QString& message) {
        if (failure.isEmpty())
            failure = message;
        return -1;
    }

    int add(const Query::Node& node) {
        nodes.push_back(node);
        return static_cast<int>(nodes.size()) - 1;
    }

    const std::vector<Token>& tokens;
    std::vector<Query::Node>& nodes;
    QHash<QString, int> columns;
    size_t at = 0;
    QString failure;
};

bool compare(double value, Query::Comparison comparison, double against) {
    switch (comparison) {
    case Query::Comparison::kLess:
        return value < against;
    case Query::Comparison::kLessOrEqual:
        return value <= against;
    case Query::Comparison::kGreater:
        return value > against;
    case Query::Comparison::kGreaterOrEqual:
        return value >= against;
    case Query::Comparison::kEqual:
        return value == against;
    case Query::Comparison::kNotEqual:
        return value != against;
    }
    return false;
}

int nonZeroCount(const WeightRow& row) {
    int count = 0;
    for (int i = 1; i < row.size(); ++i)
        count += row[i] > 0.0 ? 1 : 0;
    return count;
}

} // namespace

bool Query::read(const QString& text, const QStringList& columnNames, QString& error) {
    std::vector<Token> tokens;
    std::vector<Node> read;
    if (!tokenize(text, tokens, error))
        return false;
    if (!tokens.empty() && !Reader(tokens, columnNames, read).readAll(error))
        return false;
    nodes = std::move(read);
    return true;
}

bool Query::matches(const RowFacts& facts) const {
    return nodes.empty() || matchesNode(static_cast<int>(nodes.size()) - 1, facts);
}

bool Query::matchesNode(int index, const RowFacts& facts) const {
    const Node& node = nodes[static_cast<size_t>(index)];
    switch (node.kind) {
    case Kind::kUnnormalised:
        return !weightRows::isNormalised(weightRows::weightSum(facts.row), facts.precision);
    case Kind::kLocked:
        return facts.locked;
    case Kind::kInfluences:
        return compare(nonZeroCount(facts.row), node.comparison, node.value);
    case Kind::kSum:
        return compare(weightRows::weightSum(facts.row), node.comparison, node.value);
    case Kind::kJoint: {
        const int element = node.column + 1;
        const double weight = element < facts.row.size() ? facts.row[element] : 0.0;
        return compare(weight == weightRows::kMissingInfluence ? 0.0 : weight, node.comparison,
                       node.value);
    }
    case Kind::kNot:
        return !matchesNode(node.left, facts);
    case Kind::kAnd:
        return matchesNode(node.left, facts) && matchesNode(node.right, facts);
    case Kind::kOr:
        return matchesNode(node.left, facts) || matchesNode(node.right, facts);
    }
    return false;
}

} // namespace rowQuery
