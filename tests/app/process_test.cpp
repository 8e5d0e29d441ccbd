// The program itself, from its start to its exit status.
#include "app/draftparty.h"
#include "platform/version.h"

namespace packwise {
namespace {

constexpr int kPatience = 20'000;  // milliseconds; only a failing test waits that long

class Packwise : public testing::Test {
protected:
    QTemporaryDir home;
    QProcess process;

    SettingsStore store() const {
        return SettingsStore(home.filePath(u"config/Packwise/Packwise.ini"_s));
    }

    // The exit status after these steps of a person; -1 when the program does not end by itself.
    int run(const QStringList& arguments, const QString& platform, const QString& steps) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, platform);
        environment.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"hand"_s);
        environment.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(PACKWISE_TEST_PLUGINS));
        environment.insert(u"PACKWISE_STEPS"_s, steps);
        environment.insert(u"XDG_CONFIG_HOME"_s, home.filePath(u"config"_s));
        environment.insert(u"XDG_DATA_HOME"_s, home.filePath(u"data"_s));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(home.path());
        process.start(QStringLiteral(PACKWISE_PROGRAM), arguments);
        if (!process.waitForFinished(kPatience)) {
            process.kill();
            process.waitForFinished();
            return -1;
        }
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
};

TEST_F(Packwise, TellsItsVersionAndItsUseWithoutADisplay) {
    const QByteArray title = versionLine(u"packwise"_s).toUtf8();
    EXPECT_EQ(run({u"--version"_s}, u"none"_s, {}), 0);
    EXPECT_EQ(process.readAllStandardOutput(), title);
    EXPECT_EQ(run({u"draft"_s, u"--help"_s}, u"none"_s, {}), 0);
    EXPECT_TRUE(process.readAllStandardOutput().startsWith(title));
    EXPECT_TRUE(QDir(home.path()).isEmpty());
}

TEST_F(Packwise, EndsByEveryWindowThatCanEndIt) {
    store().write(u"Server"_s, u"Port"_s, QString::number(freePort()));
    store().write(u"Client"_s, u"Name"_s, u"Ann"_s);
    for (const QString& steps : {
             u"frmMain"_s,
             u"cmdClient frmConnect"_s,
             u"cmdServer frmServer"_s,
             u"cmdServer cmdOpenPort frmClient Yes frmServer"_s,
         }) {
        EXPECT_EQ(run({u"--nonsense"_s, u"draft"_s}, u"offscreen"_s, steps), 0)
            << steps.toStdString();
        EXPECT_EQ(store().readAll(u"Forms"_s).isEmpty(), !steps.contains(u"frmServer"_s));
    }
    EXPECT_EQ(store().readAll(u"Sets"_s).size(), 2) << "as when a menu starts it";
}

}  // namespace
}  // namespace packwise
