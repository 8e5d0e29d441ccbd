// What comes of reading a program's command line.
#pragma once

#include <QString>

#include <optional>

namespace packwise {

template <class Options>
struct CommandLine {
    std::optional<Options> options;  // none when there is only something to tell
    QString text;                    // help, version, or what is wrong
    bool isError = false;
};

}  // namespace packwise
