#include "deck/dirlistbox.h"

#include <QDir>

#include <algorithm>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

DirListBox::DirListBox(QWidget* parent) : ListBox(parent) {
    connect(this, &QListWidget::itemDoubleClicked, this,
            [this](const QListWidgetItem* item) { openRow(row(item)); });
    connect(this, &ListBox::enterPressed, this, [this] { openRow(currentRow()); });
}

bool DirListBox::setPath(const QString& path) {
    QDir folder(path);
    if (path.isEmpty() || !folder.exists()) {
        return false;
    }
    path_ = QDir::cleanPath(folder.absolutePath());

    QStringList chain;
    QDir step(path_);
    do {
        chain.prepend(step.absolutePath());
    } while (step.cdUp());
    rowPaths_ = chain;
    for (const QString& name :
         folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase)) {
        rowPaths_ += folder.absoluteFilePath(name);
    }

    clear();
    for (qsizetype row = 0; row < rowPaths_.size(); ++row) {
        const QDir folderOfRow(rowPaths_[row]);
        const QString name = folderOfRow.isRoot() ? rowPaths_[row] : folderOfRow.dirName();
        const qsizetype depth = std::min(row, chain.size());
        addItem(QString(2 * depth, u' ') + name);
    }
    const auto own = static_cast<int>(chain.size()) - 1;
    QFont bold = font();
    bold.setBold(true);
    item(own)->setFont(bold);
    setCurrentRow(own);
    scrollToItem(item(own));
    Q_EMIT pathChanged();
    return true;
}

void DirListBox::openRow(int row) {
    if (row >= 0 && row < rowPaths_.size()) {
        setPath(QString(rowPaths_[row]));
    }
}

}  // namespace packwise
