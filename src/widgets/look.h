// How the program looks, whatever the desktop's theme: a light palette and fonts whose sizes fit
// the windows' fixed places.
#pragma once

#include "widgets/twips.h"

#include <QFont>

#include <span>

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

// A control, the names that nameControl() gives it, and its place.
struct ControlRow {
    QWidget* control;
    const char16_t* name;
    const char16_t* spoken;
    TwipRect place;
};

void placeControls(std::span<const ControlRow> rows);

// A tool tip that shows a text as it stands, whatever tags it seems to hold: its start, wrapped
// when it is long.
QString plainToolTip(const QString& text);

// plainToolTip() of a caption that the control cuts. Empty for one that fits into the width, in
// device-independent pixels.
QString tipForCut(const QString& caption, const QWidget& control, int width);

}  // namespace packwise
