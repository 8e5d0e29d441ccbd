// What a program without windows may ask of its terminal.
#pragma once

namespace packwise {

// Whether the standard output goes to a terminal, not to a file or a pipe.
bool writesToTerminal();

}  // namespace packwise
