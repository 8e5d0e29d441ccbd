#include "platform/display.h"
#include "support/test.h"
#include "widgets/look.h"

#include <QSettings>

// The main of every test program with windows: no display, and settings of its own.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        packwise::hideWindows();
    }
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    packwise::applyLook(application);
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings.path()));  // of the programs that it runs
    qputenv("XDG_DATA_HOME", QFile::encodeName(settings.path()));
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    return RUN_ALL_TESTS();
}
