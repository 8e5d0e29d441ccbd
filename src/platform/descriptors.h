// The system's limit of open files and sockets.
#pragma once

namespace packwise {

// Raises the process's limit so that so many more can be open beside what a program needs itself.
// False when the system does not allow it; the limit is then as high as it may be.
bool allowDescriptors(int count);

}  // namespace packwise
