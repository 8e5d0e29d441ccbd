// Whether windows can be shown.
#pragma once

namespace packwise {

// Whether there is a display, or the user has named a platform of Qt's. To be asked before the
// application is made, as the next one.
bool hasDisplay();

// Makes the application paint its windows where nobody sees them.
void hideWindows();

}  // namespace packwise
