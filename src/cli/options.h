#pragma once

#include <QHash>
#include <QStringList>

namespace tavik::cli {

// A verb's arguments split into plain ones and "--name VALUE" options. An option the verb
// does not know, or one without its value, leaves `problem` set.
struct Options {
    QStringList plain;
    QHash<QString, QStringList> values; // every value an option was given, in order
    QString problem;
};

Options parseOptions(const QStringList& args, const QStringList& known);

} // namespace tavik::cli
