#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>

/// Readable texts in the failures of the tests.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
    *out << '"' << bytes.toStdString() << '"';
}
