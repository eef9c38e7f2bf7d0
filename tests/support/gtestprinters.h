#pragma once

// Lets GoogleTest print Qt's strings as text in its failure messages, instead of their bytes.
// Every test file sees it (the test targets include it first).
#include <QString>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}
