// Places and sizes of windows and controls are told in twips: 15 to a device-independent pixel.
#pragma once

namespace packwise {

inline constexpr int kTwipsPerPixel = 15;

constexpr int toPixels(int twips) {
    return (twips >= 0 ? twips + kTwipsPerPixel / 2 : twips - kTwipsPerPixel / 2) / kTwipsPerPixel;
}

constexpr int toTwips(int pixels) {
    return pixels * kTwipsPerPixel;
}

// A place within a window or a frame, in twips.
struct TwipRect {
    int left;
    int top;
    int width;
    int height;
};

}  // namespace packwise
