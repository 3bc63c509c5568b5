// weightRows: the encoding of the weight table's body, shared by the model and the commands.
//
// A table row is a list of doubles: element 0 is the row marker (a shape header row holds
// kShapeRow, or kUnnormalisedShapeRow when one of its vertices does not sum to one; a vertex
// row holds its shape's index), element c + 1 holds column c: a weight from 0 to 1,
// kMissingInfluence where the row's skin cluster lacks the column's influence, kHeaderCell in
// every cell of a shape header row. The sentinels are compared exactly.
//
// Rows are implicitly shared Qt vectors, kept in a list of shared blocks (weightRowList.h):
// copying the whole list shares the rows, and an edit detaches only what it changes. The helpers
// here are pure and cannot fail.
#pragma once

#include "weightRowList.h"

#include <QString>
#include <QVector>
#include <cmath>

namespace weightRows {

constexpr double kShapeRow = -1.0;
constexpr double kUnnormalisedShapeRow = -5.0;
constexpr double kHeaderCell = -1.0;
constexpr double kMissingInfluence = -2.0;

// A marker of 0 or more is a vertex row of the shape with that index.
inline bool isVertexRow(const WeightRow& row) {
    return !row.isEmpty() && row[0] >= 0.0;
}

// 10^exponent; a table for the exponents rounding uses (the values equal std::pow's, which is
// exact for these), since rounding runs for every weight of large tables.
inline double powerOfTen(int exponent) {
    static const double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                     1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                     1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (exponent >= 0 && exponent <= 22)
        return kPowers[exponent];
    if (exponent < 0 && exponent >= -22)
        return 1.0 / kPowers[-exponent];
    return std::pow(10.0, exponent);
}

// The display rounding: ceil(w * 10^precision - 0.49) / 10^precision, in plain double
// arithmetic, so that the results match the weights users have always seen.
inline double roundToPrecision(double weight, int precision) {
    const double scale = powerOfTen(precision);
    return std::ceil(weight * scale - 0.49) / scale;
}

// How far a vertex's sum may stray from one and still count as normalised.
inline double normalisedTolerance(int precision) {
    return std::pow(0.1, precision);
}

// The sum of a vertex row's weights, leaving out the columns its skin cluster lacks.
inline double weightSum(const WeightRow& row) {
    double sum = 0.0;
    for (int i = 1; i < row.size(); ++i)
        if (row[i] != kMissingInfluence)
            sum += row[i];
    return sum;
}

inline bool isNormalised(double sum, int precision) {
    return std::fabs(sum - 1.0) < normalisedTolerance(precision);
}

// The shape a row belongs to: its marker, when the row is a vertex row and the marker names
// one of the `shapeCount` loaded shapes; -1 otherwise. Every index taken from a marker passes
// here, so that a list that does not fit the loaded shapes never reads past them.
inline int shapeOfRow(const WeightRow& row, unsigned shapeCount) {
    if (!isVertexRow(row) || row[0] >= static_cast<double>(shapeCount))
        return -1;
    return static_cast<int>(row[0]);
}

// Per loaded shape, its vertex rows in table order: the rows whose marker is the shape's index.
// A shape's rows are found by their marker, never by its name, which the scene may change.
inline QVector<QVector<int>> vertexRowsByShape(const WeightRows& rows, unsigned shapeCount) {
    QVector<QVector<int>> found(static_cast<int>(shapeCount));
    for (int r = 0; r < rows.size(); ++r) {
        const int shape = shapeOfRow(rows[r], shapeCount);
        if (shape != -1)
            found[shape].append(r);
    }
    return found;
}

// The vertex index of a vertex row's header text "vtx[N]": the text without its first four
// and its last character, read as a number. False when that is not a number.
inline bool vertexIndexOfRowName(const QString& name, int& vertex) {
    bool ok = false;
    double value = name.mid(4, name.size() - 5).toDouble(&ok);
    if (ok)
        vertex = static_cast<int>(value);
    return ok;
}

// The same for a name in 8-bit text; "vtx[" followed by up to nine digits and "]" is read
// without the general number conversion, which costs more than the rest of a row's refresh.
inline bool vertexIndexOfRowName(const char* text, int length, int& vertex) {
    if (length >= 6 && length <= 14 && text[length - 1] == ']') {
        int value = 0;
        bool digits = true;
        for (int i = 4; i < length - 1 && digits; ++i) {
            digits = text[i] >= '0' && text[i] <= '9';
            value = value * 10 + (text[i] - '0');
        }
        if (digits) {
            vertex = value;
            return true;
        }
    }
    return vertexIndexOfRowName(QString::fromUtf8(text, length), vertex);
}

} // namespace weightRows
