// What comes of reading a program's command line.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace packwise {

template <class Options>
struct CommandLine {
    std::optional<Options> options;  // none when there is only something to tell
    QString text;                    // help, version, or what is wrong
    bool isError = false;
};

// The names of files that were typed. Windows' own shell leaves patterns to the program; there they
// are expanded, elsewhere the words stay as they are.
QStringList typedFiles(const QStringList& words);

// Puts in place of a word with "*" or "?" behind its last separator the files that it fits, by
// name. A word that fits none, or is a file itself, stays.
QStringList expandPatterns(const QStringList& words);

}  // namespace packwise
