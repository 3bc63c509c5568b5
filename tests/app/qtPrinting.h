// qtPrinting: lets test failures show Qt texts as texts rather than as arrays of characters.
#pragma once

#include <QString>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
