// The table as a spreadsheet sees it: which rows a row query keeps shown, the text a copy puts
// on the clipboard, and the meshes or vertices that the "Weights" menu's commands work on.
#include "HDagPath.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "rowQuery.h"
#include "weightTableModel.h"

#include <QMap>
#include <QSet>
#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

void append(QByteArray& text, const HString& name) {
    text.append(name.asChar(), static_cast<int>(name.length()));
}

// `value` in fixed notation with `places` decimals, as the table shows it. The table's weights
// are rounded to its places already, so they are written from their whole number of steps;
// a value that lies near half a step is left to the exact conversion.
void appendFixed(QByteArray& text, double value, int places) {
    char digits[400];
    const double steps = value * weightRows::powerOfTen(places);
    const double whole = std::round(steps);
    if (value < 0.0 || steps > 1e15 || std::fabs(steps - whole) > 0.49) {
        const auto written =
            std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, places);
        text.append(digits, static_cast<int>(written.ptr - digits));
        return;
    }
    // The whole number's digits, padded with zeros to more than `places`, then the point put
    // in before the last `places` of them.
    char number[32];
    const auto written =
        std::to_chars(number, number + sizeof number, static_cast<long long>(whole));
    const int length = static_cast<int>(written.ptr - number);
    const int padding = std::max(0, places + 1 - length);
    char* out = digits;
    out = std::fill_n(out, padding, '0');
    out = std::copy(number, number + length, out);
    if (places > 0) {
        std::copy_backward(out - places, out, out + 1);
        *(out - places) = '.';
        ++out;
    }
    text.append(digits, static_cast<int>(out - digits));
}

} // namespace

bool weightTableModel::rowsMatchingQuery(const QString& text, QVector<bool>& shown) const {
    QStringList columnNames;
    for (unsigned c = 0; c < influenceNames.length(); ++c)
        columnNames.append(HQtUtil::toQString(influenceNames[c]));
    rowQuery::Query query;
    QString error;
    if (!query.read(text, columnNames, error)) {
        HGlobal::displayError(error.toStdString().c_str());
        return false;
    }
    QSet<int> lockedVertexRows(lockedRows.begin(), lockedRows.end());
    for (const QList<int>& cell : lockedCells)
        lockedVertexRows.insert(cell[0]);
    shown.fill(false, weightRows.size());
    int headerRow = -1;
    for (int r = 0; r < weightRows.size(); ++r) {
        const WeightRow& row = weightRows[r];
        if (!weightRows::isVertexRow(row)) {
            headerRow = r;
            shown[r] = query.matchesEveryRow();
            continue;
        }
        if (!query.matches({row, lockedVertexRows.contains(r), precision}))
            continue;
        shown[r] = true;
        if (headerRow >= 0)
            shown[headerRow] = true;
    }
    return true;
}

QByteArray weightTableModel::copiedText(const QItemSelection& selection,
                                        const QVector<bool>& hiddenRows,
                                        const QVector<bool>& hiddenColumns) const {
    if (selection.isEmpty() || weightRows.isEmpty())
        return QByteArray();
    int top = weightRows.size(), bottom = -1, left = columnCount(), right = -1;
    for (const QItemSelectionRange& range : selection) {
        top = std::min(top, range.top());
        bottom = std::max(bottom, range.bottom());
        left = std::min(left, range.left());
        right = std::max(right, range.right());
    }
    bottom = std::min(bottom, weightRows.size() - 1);
    right = std::min(right, columnCount() - 1);
    if (top > bottom || left > right)
        return QByteArray();
    const int width = right - left + 1;
    std::vector<char> selected(static_cast<size_t>(bottom - top + 1) * width, 0);
    for (const QItemSelectionRange& range : selection)
        for (int r = std::max(range.top(), top); r <= std::min(range.bottom(), bottom); ++r)
            for (int c = std::max(range.left(), left); c <= std::min(range.right(), right); ++c)
                selected[static_cast<size_t>(r - top) * width + (c - left)] = 1;
    auto shownColumn = [&](int c) { return c >= hiddenColumns.size() || !hiddenColumns[c]; };

    QByteArray text;
    // Most weights of a large table are zeros, written alike.
    const QByteArray zero = QByteArray::number(0.0, 'f', precision);
    text.reserve((bottom - top + 1) * (width * (precision + 3) + 24));
    for (int c = left; c <= right; ++c)
        if (shownColumn(c)) {
            text.append('\t');
            append(text, influenceNames[static_cast<unsigned>(c)]);
        }
    text.append('\n');
    // The shape of the first row is named by the closest header row above it.
    HString shapeName;
    for (int r = top; r >= 0; --r)
        if (!weightRows::isVertexRow(weightRows[r])) {
            shapeName = rowNames[static_cast<unsigned>(r)];
            break;
        }
    for (int r = top; r <= bottom; ++r) {
        const WeightRow& row = weightRows[r];
        if (!weightRows::isVertexRow(row)) {
            shapeName = rowNames[static_cast<unsigned>(r)];
            continue;
        }
        if (r < hiddenRows.size() && hiddenRows[r])
            continue;
        append(text, shapeName);
        text.append('.');
        append(text, rowNames[static_cast<unsigned>(r)]);
        const char* rowSelected = &selected[static_cast<size_t>(r - top) * width];
        for (int c = left; c <= right; ++c) {
            if (!shownColumn(c))
                continue;
            text.append('\t');
            const double value = c + 1 < row.size() ? row[c + 1] : weightRows::kMissingInfluence;
            if (!rowSelected[c - left] || value == weightRows::kMissingInfluence ||
                value == weightRows::kHeaderCell)
                continue;
            if (value == 0.0)
                text.append(zero);
            else
                appendFixed(text, value, precision);
        }
        text.append('\n');
    }
    return text;
}

QString weightTableModel::weightTargets(const QItemSelection& selection) const {
    QMap<int, QList<int>> verticesByShape;
    for (const QItemSelectionRange& range : selection)
        for (int r = std::max(range.top(), 0); r <= std::min(range.bottom(), weightRows.size() - 1);
             ++r) {
            const int shape = weightRows::shapeOfRow(weightRows[r], shapePaths.length());
            int vertex = 0;
            if (shape >= 0 && weightRows::vertexIndexOfRowName(
                                  HQtUtil::toQString(rowNames[static_cast<unsigned>(r)]), vertex))
                verticesByShape[shape].append(vertex);
        }
    QStringList targets;
    if (verticesByShape.isEmpty()) {
        for (unsigned shape = 0; shape < shapePaths.length(); ++shape)
            targets.append(HQtUtil::toQString(shapePaths[shape].fullPathName()));
        return targets.join(' ');
    }
    // Each shape's vertices as runs "shape.vtx[a:b]", so that the text stays short.
    for (auto shape = verticesByShape.begin(); shape != verticesByShape.end(); ++shape) {
        QList<int>& vertices = shape.value();
        std::sort(vertices.begin(), vertices.end());
        vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
        const QString path =
            HQtUtil::toQString(shapePaths[static_cast<unsigned>(shape.key())].fullPathName());
        for (int first = 0; first < vertices.size();) {
            int last = first;
            while (last + 1 < vertices.size() && vertices[last + 1] == vertices[last] + 1)
                ++last;
            targets.append(
                first == last
                    ? QString("%1.vtx[%2]").arg(path).arg(vertices[first])
                    : QString("%1.vtx[%2:%3]").arg(path).arg(vertices[first]).arg(vertices[last]));
            first = last + 1;
        }
    }
    return targets.join(' ');
}
