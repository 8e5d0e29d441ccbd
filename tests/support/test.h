// What nearly every test of windows, files and sockets needs.
#pragma once

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

inline QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

inline QPoint middleOf(const QListWidget* list, int row) {
    return list->visualItemRect(list->item(row)).center();
}

inline void clickRow(QListWidget* list, int row, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(list->viewport(), button, {}, middleOf(list, row));
}

inline void doubleClickRow(QListWidget* list, int row, Qt::MouseButton button = Qt::LeftButton) {
    clickRow(list, row, button);
    QTest::mouseDClick(list->viewport(), button, {}, middleOf(list, row));
}

}  // namespace packwise
