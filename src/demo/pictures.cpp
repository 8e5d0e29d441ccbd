#include "demo/pictures.h"

#include "platform/wholefile.h"

#include <QBuffer>
#include <QImage>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>
#include <vector>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kScale = 2;
constexpr std::size_t kMostColors = 256;
constexpr int kSmallestFile = 0;  // the quality of a PNG is how fast it is written

int distance(QRgb one, QRgb two) {
    return std::abs(qRed(one) - qRed(two)) + std::abs(qGreen(one) - qGreen(two)) +
           std::abs(qBlue(one) - qBlue(two));
}

// The picture in its most frequent colours, each other one replaced by the nearest of them: a third
// of the file for what no eye tells from the picture.
QImage withFewColors(const QImage& picture) {
    std::unordered_map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    std::vector<std::pair<QRgb, int>> palette(counts.begin(), counts.end());
    std::sort(palette.begin(), palette.end(), [](const auto& one, const auto& two) {
        return std::pair(two.second, one.first) < std::pair(one.second, two.first);
    });
    palette.resize(std::min(palette.size(), kMostColors));

    std::unordered_map<QRgb, uint> indexes;
    for (const auto& [color, count] : counts) {
        const auto nearest = std::min_element(
            palette.begin(), palette.end(), [color = color](const auto& one, const auto& two) {
                return distance(one.first, color) < distance(two.first, color);
            });
        indexes[color] = static_cast<uint>(nearest - palette.begin());
    }
    QImage few(picture.size(), QImage::Format_Indexed8);
    QList<QRgb> colors;
    for (const auto& [color, count] : palette) {
        colors += color;
    }
    few.setColorTable(colors);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            few.setPixel(x, y, indexes[picture.pixel(x, y)]);
        }
    }
    return few;
}

}  // namespace

bool Pictures::take(QWidget& window, const QString& name) const {
    QImage picture(window.size() * kScale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(kScale);
    window.render(&picture);
    QBuffer file;
    return file.open(QIODevice::WriteOnly) &&
           withFewColors(picture).save(&file, "PNG", kSmallestFile) &&
           writeWholeFile(folder_ + u'/' + name + u".png"_s, file.data()).isEmpty();
}

}  // namespace packwise
