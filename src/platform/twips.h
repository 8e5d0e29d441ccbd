// Places and sizes of windows and controls are told in twips: 15 to a device-independent pixel.
#pragma once

#include <QRect>

namespace packwise {

inline constexpr int kTwipsPerPixel = 15;

constexpr int toPixels(int twips) {
    return (twips >= 0 ? twips + kTwipsPerPixel / 2 : twips - kTwipsPerPixel / 2) / kTwipsPerPixel;
}

constexpr int toTwips(int pixels) {
    return pixels * kTwipsPerPixel;
}

inline QRect rectFromTwips(int left, int top, int width, int height) {
    return QRect(toPixels(left), toPixels(top), toPixels(width), toPixels(height));
}

}  // namespace packwise
