// pastedText: reads the text a spreadsheet or a copy of the table puts on the clipboard into
// a block of fields: tab-separated when the text holds a tab, comma-separated otherwise
// (fields in double quotes may hold the separator, "" stands for a quote). A first line whose
// value fields are not numbers names the block's columns; a first field of the form
// "SHAPE.vtx[N]" or "vtx[N]" on every other line names the rows. Blank fields stay blank: a
// paste leaves those cells alone. Reading is pure and cannot fail; what the fields mean is the
// model's business.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace pastedText {

struct Block {
    QStringList columnNames; // empty when the text has no header line
    QStringList rowNames;    // empty when its lines have no name field
    QVector<QStringList> values;
};

Block read(const QString& text);

// A field as a number; a decimal comma, as spreadsheets of many languages write it, is read as
// a point. False when the field is not a number.
bool readNumber(const QString& field, double& value);

// "SHAPE.vtx[N]" or "vtx[N]" split into SHAPE (empty for the second form) and N; false for
// any other text.
bool splitRowName(const QString& name, QString& shape, int& vertex);

} // namespace pastedText
