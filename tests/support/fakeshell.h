// The program as one window under test sees it: settings of its own, boxes answered by a script,
// and notes of what was asked.
#pragma once

#include "support/boxscript.h"
#include "widgets/shell.h"

namespace packwise {

class FakeShell : public Shell {
public:
    SettingsStore& settings() override { return settings_; }
    MessageBoxes& boxes() override { return boxes_; }
    QString startFolder() const override { return QDir::currentPath(); }
    bool isVisible(FormId form) const override { return visible.contains(form); }
    void saveForms() override { ++savedForms; }
    void end() override { ended_ = true; }
    bool ended() const override { return ended_; }

    std::set<FormId> visible;
    int savedForms = 0;

private:
    QTemporaryDir folder_;
    SettingsStore settings_{folder_.filePath(QStringLiteral("Packwise.ini"))};
    MessageBoxes boxes_;
    bool ended_ = false;

public:
    BoxScript script{boxes_};
};

}  // namespace packwise
