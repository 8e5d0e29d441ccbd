// A list box to walk through folders: the chain from the root down to the chosen folder, then the
// folders in it. A double click or Enter on a row goes there.
#pragma once

#include "widgets/listbox.h"

#include <QString>
#include <QStringList>

namespace packwise {

class DirListBox : public ListBox {
    Q_OBJECT
public:
    explicit DirListBox(QWidget* parent = nullptr);

    // The chosen folder, an absolute path.
    QString path() const { return path_; }
    // False for a path that is no folder; nothing has changed then.
    bool setPath(const QString& path);

    void openRow(int row);

Q_SIGNALS:
    void pathChanged();

private:
    QString path_;
    QStringList rowPaths_;
};

}  // namespace packwise
