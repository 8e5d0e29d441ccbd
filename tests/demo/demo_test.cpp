// The demonstration as a process of its own.
#include "engine/deckfile.h"
#include "support/test.h"

#include <QImage>

namespace packwise {
namespace {

constexpr int kPatience = 60'000;  // milliseconds; only a failing test waits that long

class Demo : public testing::Test {
protected:
    QTemporaryDir home;  // everything that the program could leave behind lies in here
    QProcess process;

    // The exit status; -1 when the program does not end by itself.
    int run(const QStringList& arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& name :
             {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s, u"XDG_RUNTIME_DIR"_s,
              u"XDG_CONFIG_HOME"_s, u"XDG_CACHE_HOME"_s}) {
            environment.remove(name);
        }
        for (const QString& name : {u"HOME"_s, u"TMPDIR"_s}) {
            environment.insert(name, home.path());
        }
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(home.path());
#ifdef Q_OS_WIN
        const QStringList hidden{u"--offscreen"_s};  // there is always a display
#else
        const QStringList hidden;
#endif
        process.start(QStringLiteral(PACKWISE_DEMO), hidden + arguments);
        const bool ended = process.waitForFinished(kPatience);
        EXPECT_TRUE(ended);
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QStringList entries(const QString& folder) const {
        return QDir(home.filePath(folder))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    }
};

TEST_F(Demo, PlaysBothFormatsToEightSoundDecksAndLeavesNothingElse) {
    const QStringList common{u"card.png"_s,        u"chat.png"_s,        u"console.png"_s,
                             u"deckbuilder.png"_s, u"information.png"_s, u"start.png"_s};
    struct Case {
        QStringList arguments;
        QString table;  // the picture that only this format has
    };
    for (const Case& c : {Case{{}, u"draft.png"_s}, Case{{u"--rochester"_s}, u"rochester.png"_s}}) {
        ASSERT_EQ(run(QStringList{u"--into"_s, u"out"_s, u"--seed"_s, u"5"_s} + c.arguments), 0)
            << process.readAllStandardError().toStdString();
        EXPECT_EQ(process.readAllStandardError().toStdString(), "");
        const QString told = QString::fromUtf8(process.readAllStandardOutput());
        EXPECT_FALSE(told.contains(u'\r')) << "a progress bar in a pipe";

        std::set<QString> codes;
        for (const QString& name : entries(u"out/decks"_s)) {
            QFile file(home.filePath(u"out/decks/"_s + name));
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            const std::string text = file.readAll().toStdString();
            const QString code = QString::number(codeOfDeckFile(text).value());
            EXPECT_TRUE(told.contains(u"decks/"_s + name) && told.contains(code));
            codes.insert(code);
        }
        EXPECT_EQ(codes.size(), 8U);

        QStringList pictures = common + QStringList{c.table};
        pictures.sort();
        EXPECT_EQ(entries(u"out/pictures"_s), pictures);
        for (const QString& name : pictures) {
            EXPECT_FALSE(QImage(home.filePath(u"out/pictures/"_s + name)).isNull());
        }
        EXPECT_EQ(entries(u"."_s), QStringList{u"out"_s});
        ASSERT_TRUE(QDir(home.filePath(u"out"_s)).removeRecursively());
    }
}

TEST_F(Demo, TellsInOneLineWhatItCannotDo) {
    QFile inTheWay(home.filePath(u"file"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    for (const QStringList& arguments :
         {QStringList{u"--seed"_s, u"x"_s}, QStringList{u"--nonsense"_s}, QStringList{u"word"_s},
          QStringList{u"--into"_s, u"file/out"_s}}) {
        EXPECT_EQ(run(arguments), 1) << arguments.join(u' ').toStdString();
        EXPECT_EQ(process.readAllStandardError().count('\n'), 1);
        EXPECT_EQ(entries(u"."_s), QStringList{u"file"_s});
    }
    EXPECT_EQ(run({u"--help"_s}), 0);
    EXPECT_TRUE(process.readAllStandardOutput().contains("--rochester"));
}

}  // namespace
}  // namespace packwise
