#include "companions/fakeclient.h"
#include "companions/frmmessage.h"
#include "platform/settings.h"
#include "support/fakeshell.h"

#include <QFontMetricsF>
#include <QStyle>

namespace packwise {
namespace {

using testing::ElementsAre;

class Chat : public testing::Test {
protected:
    std::vector<std::string> lines() const {
        std::vector<std::string> all;
        for (const QString& line : window.lstMessage->texts()) {
            all.push_back(line.toStdString());
        }
        return all;
    }

    // What goes out for a typed line.
    std::string sendLine(const QString& typed) {
        client.sent.clear();
        window.txtSend->setPlainText(typed);
        QTest::keyClick(window.txtSend, Qt::Key_Return);
        return client.sent.empty() ? "" : client.sent.front();
    }

    FakeShell shell;
    FakeClient client;
    FrmMessage window{shell, client};
};

TEST_F(Chat, SmallestWindowHoldsEightLinesOfThirtyTwoCharacters) {
    EXPECT_EQ(window.widthTwips(), 5895);
    EXPECT_EQ(window.heightTwips(), 2385);
    EXPECT_EQ(window.maxLines, 8);
    EXPECT_EQ(window.maxChars, 32);
    for (int line = 0; line < 10; ++line) {
        window.Receive("line " + std::to_string(line));
    }
    ASSERT_EQ(window.lstMessage->count(), 8);
    EXPECT_EQ(window.lstMessage->text(0), u"line 2"_s);
    // What counts as fitting is really on the screen.
    const QRect last = window.lstMessage->visualItemRect(window.lstMessage->item(7));
    const QRect view = window.lstMessage->viewport()->rect();
    EXPECT_TRUE(view.contains(last.bottomLeft()));
    EXPECT_TRUE(
        view.contains(window.lstMessage->visualItemRect(window.lstMessage->item(0)).topLeft()));
    EXPECT_GE(window.lstNames->viewport()->height(),
              window.lstNames->visualItemRect(window.lstNames->item(7)).bottom());
}

TEST_F(Chat, FoldsAtTheWidthAndPushesOutTheOldest) {
    window.Receive(std::string(31, 'a'));
    window.Receive("two four " + std::string(35, 'b'));
    EXPECT_THAT(lines(),
                ElementsAre(std::string(31, 'a'), "two four ", std::string(32, 'b'), "bbb"));
    for (int line = 0; line < 4; ++line) {
        window.Receive("x");
    }
    window.Receive(std::string(32, 'c') + std::string(32, 'd'));
    EXPECT_THAT(lines(), ElementsAre("bbb", "x", "x", "x", "x", std::string(32, 'c'),
                                     std::string(32, 'd'), ""));
    window.Receive("caf\xE9");
    EXPECT_EQ(lines().back(), "caf\xC3\xA9");
}

TEST_F(Chat, ALineOfTheFullWidthIsSeenToItsEnd) {
    const ListBox& list = *window.lstMessage;
    EXPECT_EQ(list.textElideMode(), Qt::ElideNone);
    window.show();
    for (int wider = 0; wider < 100; ++wider) {
        window.setSizeTwips(5895 + wider * 15, 2385);
        const double line =
            QFontMetricsF(list.font()).horizontalAdvance(QString(window.maxChars, u'W'));
        const int margin = list.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &list);
        EXPECT_LE(line, list.viewport()->width() - 2 * (margin + 1)) << wider;
    }
}

TEST_F(Chat, ResizingChangesWhatFits) {
    window.show();
    window.setSizeTwips(9000, 5000);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.maxLines > 20; }));
    EXPECT_GT(window.maxChars, 50);
    for (int line = 0; line < 20; ++line) {
        window.Receive("line " + std::to_string(line));
    }
    EXPECT_EQ(window.lstMessage->count(), 20);
    window.setSizeTwips(100, 100);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.maxLines == 8; }));
    EXPECT_EQ(window.maxChars, 32);
    EXPECT_EQ(window.widthTwips(), 5895);
    EXPECT_EQ(window.heightTwips(), 2385);
    EXPECT_EQ(lines().front(), "line 12");
}

TEST_F(Chat, EnterSendsTheLineWithTheSpeaker) {
    const std::pair<QString, std::string> cases[] = {
        {u"hello"_s, "MESG<Fox> hello~"},
        {u""_s, "MESG<Fox> ~"},
        {u"/me waves"_s, "MESG*Fox waves~"},
        {u"/me "_s, "MESG*Fox ~"},
        {u"/Me waves"_s, "MESG<Fox> /Me waves~"},
        {u"/mewaves"_s, "MESG<Fox> /mewaves~"},
        {u"one\r\ntwo\nthree"_s, "MESG<Fox> onetwothree~"},
        {u"caf\u00E9 \u20AC \u4E2D"_s, "MESG<Fox> caf\xE9 \x80 ?~"}};
    for (const auto& [typed, sent] : cases) {
        EXPECT_EQ(sendLine(typed), sent);
        EXPECT_EQ(window.txtSend->toPlainText(), QString());
        EXPECT_EQ(window.focusWidget(), window.txtSend);
    }
    EXPECT_EQ(window.lstMessage->count(), 0) << "the line comes back from the server";
    // A paste that would fill the wire.
    EXPECT_EQ(sendLine(QString(70000, u'x')), "MESG<Fox> " + std::string(994, 'x') + "~");
    for (const QString& key : {u"a"_s, u"\u4E2D"_s, u"b"_s}) {
        QTest::sendKeyEvent(QTest::Click, window.txtSend, Qt::Key_unknown, key, Qt::NoModifier);
    }
    EXPECT_EQ(window.txtSend->toPlainText(), u"ab"_s);
    window.txtSend->moveCursor(QTextCursor::Left);
    QGuiApplication::clipboard()->setText(u"12\n3"_s);
    window.txtSend->paste();
    QTest::keyClick(window.txtSend, Qt::Key_X);
    EXPECT_EQ(window.txtSend->toPlainText(), u"a123xb"_s);
    client.sent.clear();
    for (const bool flagged : {true, false}) {  // else the same time tells
        for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
            QKeyEvent held(type, Qt::Key_Return, Qt::NoModifier, {}, flagged);
            held.setTimestamp(2501);
            QCoreApplication::sendEvent(window.txtSend, &held);
        }
    }
    EXPECT_TRUE(client.sent.empty());
}

TEST_F(Chat, RefusesTheTerminatorInLineAndName) {
    for (const auto& [name, typed] : {std::pair{u"Fox"_s, u"a~b"_s}, {u"F~x"_s, u"ab"_s}}) {
        client.name = name;
        shell.script.expect(u"Character ~ reserved"_s);
        EXPECT_EQ(sendLine(typed), "");
        EXPECT_EQ(window.txtSend->toPlainText(), QString());
        EXPECT_EQ(shell.script.last().title, u"Error"_s);
        EXPECT_EQ(shell.script.last().icon, BoxIcon::Exclamation);
    }
}

TEST_F(Chat, SendsNothingOnceTheLinkIsClosed) {
    window.txtSend->setPlainText(u"left"_s);
    window.txtSend->setEnabled(false);
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_TRUE(client.sent.empty());
    EXPECT_EQ(window.txtSend->toPlainText(), u"left"_s);
}

TEST_F(Chat, StaysDuringADraftAndComesBackEmptyAfterIt) {
    window.Receive("old");
    window.lstNames->setText(3, u"Bear"_s);
    shell.visible.insert(FormId::Client);
    EXPECT_FALSE(window.closeByUser());
    EXPECT_TRUE(window.isVisible());
    shell.visible.clear();
    EXPECT_TRUE(window.closeByUser());
    EXPECT_FALSE(window.isVisible());
    setting::messageSize.write(shell.settings(), u"7500 3000"_s);
    window.txtSend->setEnabled(false);
    Form other(u"frmOther"_s, u"Other"_s, FormBorder::Fixed);
    other.setSizeTwips(3000, 3000);
    other.show();
    window.Receive("new");
    EXPECT_FALSE(window.geometry().intersects(other.geometry()));
    EXPECT_TRUE(window.txtSend->isEnabled());
    EXPECT_TRUE(window.isVisible());
    window.showNote(u"\u0141\u00F3d\u017A"_s);
    EXPECT_THAT(lines(), ElementsAre("new", "* \u0141\u00F3d\u017A"));
    EXPECT_EQ(window.lstNames->texts(), QStringList(8, u" "_s));
    EXPECT_EQ(window.widthTwips(), 7500);
}

TEST(ChatSize, TakesAnyStoredText) {
    const QSize space = QGuiApplication::primaryScreen()->availableSize();
    const std::tuple<QString, int, int> cases[] = {
        {u"nonsense"_s, 5895, 2385},
        {u"7500"_s, 7500, 2385},
        {u"7500 x"_s, 7500, 2385},
        {u"1 2"_s, 5895, 2385},
        {u"900000 60000"_s, space.width() * 15, space.height() * 15},
        {u"7500 3000"_s, 7500, 3000}};
    for (const auto& [stored, width, height] : cases) {
        FakeShell shell;
        FakeClient client;
        setting::messageSize.write(shell.settings(), stored);
        const FrmMessage window(shell, client);
        EXPECT_EQ(window.widthTwips(), width) << stored.toStdString();
        EXPECT_EQ(window.heightTwips(), height) << stored.toStdString();
    }
}

}  // namespace
}  // namespace packwise
