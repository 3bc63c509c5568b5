// rowQuery: the small language of the row query box, which picks the vertex rows of the table
// that the view keeps shown. A query is read once into a tree and then tested against every
// vertex row, so that 100,000 rows take one pass over the weights.
//
// Terms:
//   unnormalised          the row's weights do not sum to one at the table's precision
//   locked                the row is locked, or one of its cells is locked on its own
//   influences OP N       the number of non-zero weights
//   sum OP V              the sum of the row's weights
//   JOINT OP V            that influence's weight (0 where the row's cluster lacks it); a
//                         joint whose name is a word of the language is written in quotes
// with OP one of < <= > >= == !=, combined with and, or, not and parentheses (not binds
// tightest, then and, then or). Comparisons read the weights as the table holds them, rounded
// at its precision, so that "joint1 == 0.25" finds the cells that show 0.250.
//
// Reading never fails silently: an unknown joint or a word that does not fit gives false and
// a sentence naming the word. Testing a row cannot fail.
#pragma once

#include "weightRows.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace rowQuery {

// What a row is tested against besides its weights.
struct RowFacts {
    const WeightRow& row;
    bool locked = false;
    int precision = 3;
};

class Query {
public:
    // Reads `text` with the table's column names (the influences' short names); false, with
    // the reason in `error`, when the text is not a query. An empty or blank text reads as the
    // query that every row matches.
    bool read(const QString& text, const QStringList& columnNames, QString& error);

    bool matchesEveryRow() const { return nodes.empty(); }
    bool matches(const RowFacts& facts) const;

    enum class Kind { kUnnormalised, kLocked, kInfluences, kSum, kJoint, kNot, kAnd, kOr };
    enum class Comparison { kLess, kLessOrEqual, kGreater, kGreaterOrEqual, kEqual, kNotEqual };
    struct Node {
        Kind kind = Kind::kUnnormalised;
        Comparison comparison = Comparison::kEqual;
        double value = 0.0;
        int column = -1;
        int left = -1;
        int right = -1;
    };

private:
    bool matchesNode(int node, const RowFacts& facts) const;

    // The tree in one list; children are indices into it, the root is the last node.
    std::vector<Node> nodes;
};

} // namespace rowQuery
