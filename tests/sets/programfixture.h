// The program as it is typed, in a process and with settings of its own.
#pragma once

#include "platform/settingsstore.h"
#include "sets/setstest.h"

#include <QProcess>

namespace packwise::sets {

class Program : public testing::Test {
protected:
    struct Ending {
        int status;
        std::string out;
        std::string err;
    };

    Ending run(const QStringList& arguments) const {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, dir_.filePath(u"config"_s));
        environment.insert(u"XDG_DATA_HOME"_s, dir_.filePath(u"data"_s));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(dir_.path());
        process.start(QString::fromUtf8(PACKWISE_SETS_PROGRAM), arguments);
        if (!process.waitForFinished(20000)) {
            process.kill();
            return {-1, {}, "did not end"};
        }
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    void put(const QString& file, const QByteArray& bytes) const {
        QFile out(dir_.filePath(file));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    static QByteArray setNamed(const QByteArray& name) {
        return "set " + name +
               "\npack 1 common\n== common blue\nTarn Fish :: U :: Creature :: 1/1\n";
    }
    SettingsStore store() const {
        return SettingsStore(dir_.filePath(u"config/Packwise/Packwise.ini"_s));
    }
    QStringList registered() const {
        QStringList names;
        for (const auto& [key, name] : store().readAll(u"Sets"_s)) {
            names.append(name);
        }
        return names;
    }
    QStringList files() const { return QDir(dir_.path()).entryList(QDir::Files); }

    QTemporaryDir dir_;
};

}  // namespace packwise::sets
