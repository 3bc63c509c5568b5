#include "pastedText.h"

namespace pastedText {

namespace {

QStringList splitLine(const QString& line, QChar separator) {
    QStringList fields;
    QString field;
    bool quoted = false;
    for (int at = 0; at < line.size(); ++at) {
        const QChar c = line[at];
        if (quoted) {
            if (c == '"' && at + 1 < line.size() && line[at + 1] == '"') {
                field += '"';
                ++at;
            } else if (c == '"') {
                quoted = false;
            } else {
                field += c;
            }
        } else if (c == '"' && field.isEmpty()) {
            quoted = true;
        } else if (c == separator) {
            fields.append(field.trimmed());
            field.clear();
        } else {
            field += c;
        }
    }
    fields.append(field.trimmed());
    return fields;
}

bool isNumber(const QString& field) {
    double value = 0.0;
    return readNumber(field, value);
}

} // namespace

bool readNumber(const QString& field, double& value) {
    bool ok = false;
    value = field.toDouble(&ok);
    if (!ok && field.count(',') == 1 && !field.contains('.'))
        value = QString(field).replace(',', '.').toDouble(&ok);
    return ok;
}

bool splitRowName(const QString& name, QString& shape, int& vertex) {
    const int open = name.lastIndexOf("vtx[");
    if (open < 0 || !name.endsWith(']') || (open > 0 && name[open - 1] != '.') || open == 1)
        return false;
    bool ok = false;
    vertex = name.mid(open + 4, name.size() - open - 5).toInt(&ok);
    if (!ok || vertex < 0)
        return false;
    shape = open > 0 ? name.left(open - 1) : QString();
    return true;
}

Block read(const QString& text) {
    const QChar separator = text.contains('\t') ? '\t' : ',';
    QVector<QStringList> lines;
    for (const QString& line : text.split('\n')) {
        QString trimmed = line;
        if (trimmed.endsWith('\r'))
            trimmed.chop(1);
        lines.append(splitLine(trimmed, separator));
    }
    // The line break after the last line leaves an empty line.
    while (!lines.isEmpty() && lines.last().size() == 1 && lines.last().first().isEmpty())
        lines.removeLast();
    Block block;
    if (lines.isEmpty())
        return block;
    QString shape;
    int vertex = 0;
    // A header line has a name among its fields; its first field may be a corner or a row name.
    const QStringList& first = lines.first();
    const bool firstIsRowName = splitRowName(first.first(), shape, vertex);
    bool header = false;
    for (int f = firstIsRowName ? 1 : 0; f < first.size(); ++f)
        header = header || (!first[f].isEmpty() && !isNumber(first[f]));
    const int dataStart = header ? 1 : 0;
    bool named = dataStart < lines.size();
    for (int l = dataStart; l < lines.size() && named; ++l)
        named = splitRowName(lines[l].first(), shape, vertex);
    if (header) {
        block.columnNames = first;
        if (named)
            block.columnNames.removeFirst();
    }
    for (int l = dataStart; l < lines.size(); ++l) {
        QStringList fields = lines[l];
        if (named)
            block.rowNames.append(fields.takeFirst());
        block.values.append(fields);
    }
    return block;
}

} // namespace pastedText
