// The demonstration's command line.
#pragma once

#include "platform/commandline.h"

#include <QString>
#include <QStringList>

#include <cstdint>

namespace packwise {

struct DemoOptions {
    QString into = QStringLiteral("demo-output");  // the folder of decks and pictures
    bool rochester = false;
    bool watched = true;     // the windows are on a display
    std::uint64_t seed = 0;  // of every draw and every taste
};

// `arguments` begins with the program's name.
CommandLine<DemoOptions> readDemoCommandLine(const QStringList& arguments);

// Whether these arguments, or the lack of a display, ask for windows that nobody sees. To be known
// before there is a QApplication.
bool playsOffscreen(int argc, const char* const* argv);

}  // namespace packwise
