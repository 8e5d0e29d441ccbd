// What a program without windows may ask of its terminal.
#pragma once

namespace packwise {

// Whether the standard output goes to a terminal, not to a file or a pipe.
bool writesToTerminal();

// The same of the standard error.
bool reportsToTerminal();

}  // namespace packwise
