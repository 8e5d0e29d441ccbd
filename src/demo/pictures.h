// Pictures of windows, as PNG files in a folder.
#pragma once

#include <QString>

class QWidget;

namespace packwise {

class Pictures {
public:
    explicit Pictures(QString folder) : folder_(std::move(folder)) {}

    const QString& folder() const { return folder_; }

    // Writes NAME.png, at twice the size that the window has on the screen. False when it cannot be
    // written.
    bool take(QWidget& window, const QString& name) const;

private:
    QString folder_;
};

}  // namespace packwise
