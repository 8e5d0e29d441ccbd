#include "widgets/look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>
#include <QTextDocument>
#include <QWidget>

#include <algorithm>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kLongestTip = 400;  // characters
constexpr int kLongestTipLine = 60;

QPalette lightPalette() {
    QPalette colors;
    const QColor face(240, 240, 240);
    const QColor faded(128, 128, 128);
    colors.setColor(QPalette::Window, face);
    colors.setColor(QPalette::WindowText, Qt::black);
    colors.setColor(QPalette::Base, Qt::white);
    colors.setColor(QPalette::AlternateBase, QColor(247, 247, 247));
    colors.setColor(QPalette::Text, Qt::black);
    colors.setColor(QPalette::PlaceholderText, faded);
    colors.setColor(QPalette::Button, face);
    colors.setColor(QPalette::ButtonText, Qt::black);
    colors.setColor(QPalette::BrightText, Qt::white);
    colors.setColor(QPalette::ToolTipBase, QColor(255, 255, 225));
    colors.setColor(QPalette::ToolTipText, Qt::black);
    colors.setColor(QPalette::Highlight, QColor(48, 110, 190));
    colors.setColor(QPalette::HighlightedText, Qt::white);
    colors.setColor(QPalette::Link, QColor(0, 0, 238));
    colors.setColor(QPalette::Light, Qt::white);
    colors.setColor(QPalette::Midlight, QColor(227, 227, 227));
    colors.setColor(QPalette::Mid, QColor(160, 160, 160));
    colors.setColor(QPalette::Dark, QColor(140, 140, 140));
    colors.setColor(QPalette::Shadow, QColor(105, 105, 105));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(QPalette::Disabled, role, faded);
    }
    colors.setColor(QPalette::Disabled, QPalette::Base, face);
    return colors;
}

}  // namespace

void chooseEventLoop() {
    qputenv("QT_NO_GLIB", "1");
}

void applyLook(QApplication& application) {
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setPalette(lightPalette());
    QFont font = QApplication::font();
    font.setPixelSize(12);
    QApplication::setFont(font);
    application.setQuitOnLastWindowClosed(false);
}

QFont fixedPitchFont(int pixelSize, bool bold) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!QFontInfo(font).fixedPitch()) {  // without a display, Windows' own is not known
        const QStringList families = QFontDatabase::families();
        const auto fixed = std::find_if(families.begin(), families.end(), [](const auto& family) {
            return QFontDatabase::isFixedPitch(family);
        });
        font.setFamily(fixed == families.end() ? font.family() : *fixed);
    }
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    return font;
}

void nameControl(QWidget& control, const QString& name, const QString& spoken) {
    control.setObjectName(name);
    if (!spoken.isEmpty()) {
        control.setAccessibleName(spoken);
    }
}

void placeControl(QWidget& control, const TwipRect& place, const QString& name,
                  const QString& spoken) {
    if (!name.isEmpty()) {
        nameControl(control, name, spoken);
    }
    control.setGeometry(toPixels(place.left), toPixels(place.top), toPixels(place.width),
                        toPixels(place.height));
}

QString plainToolTip(const QString& text) {
    if (text.size() <= kLongestTipLine && !Qt::mightBeRichText(text)) {
        return text;
    }
    // Rich text is wrapped.
    return u"<span>"_s + text.left(kLongestTip).toHtmlEscaped() + u"</span>"_s;
}

QString tipForCut(const QString& caption, const QWidget& control, int width) {
    return control.fontMetrics().horizontalAdvance(caption) <= width ? QString()
                                                                     : plainToolTip(caption);
}

}  // namespace packwise
