// How the program looks, whatever the desktop's theme: a light palette and fonts whose sizes fit
// the windows' fixed places.
#pragma once

#include "widgets/twips.h"

#include <QFont>

class QApplication;
class QWidget;

namespace packwise {

// Chooses Qt's own event loop, which serves sockets with half the delay of the desktop library's.
// To be called before the application is made.
void chooseEventLoop();

// Style, palette and font for all windows of the process.
void applyLook(QApplication& application);

QFont fixedPitchFont(int pixelSize = 13, bool bold = false);

// Gives a control its name, and for one without a caption the name that a screen reader speaks.
void nameControl(QWidget& control, const QString& name, const QString& spoken = {});

// Puts a control to its place in its parent; with a name, nameControl() gives it that, too.
void placeControl(QWidget& control, const TwipRect& place, const QString& name = {},
                  const QString& spoken = {});

// A tool tip that shows a text as it stands, whatever tags it seems to hold: its start, wrapped
// when it is long.
QString plainToolTip(const QString& text);

// plainToolTip() of a caption that the control cuts. Empty for one that fits into the width, in
// device-independent pixels.
QString tipForCut(const QString& caption, const QWidget& control, int width);

}  // namespace packwise
