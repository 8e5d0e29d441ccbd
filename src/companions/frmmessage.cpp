#include "companions/frmmessage.h"

#include "engine/chatfold.h"
#include "platform/codepage.h"
#include "platform/settings.h"
#include "protocol/messages.h"
#include "widgets/codepagevalidator.h"
#include "widgets/look.h"
#include "widgets/twips.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyle>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// Twips; sizes of the window with its nominal frame.
constexpr int kLeastWidth = 5895;
constexpr int kLeastHeight = 2385;
constexpr int kBesideMessages = 1560;  // window width less the width of lstMessage
constexpr int kOverlap = 15;
constexpr int kFrameWidth = 120;
constexpr int kAboveAndFrame = 765;  // window height less the height of the lists
constexpr int kSendHeight = 360;

constexpr int kLeastLines = 8;
constexpr int kLeastChars = 32;
constexpr int kSmallestFont = 8;  // pixels
constexpr int kLargestFont = 16;
constexpr int kMostStretch = 110;  // percent

// What goes out at once, in characters. The server lets go of a player whose message has no end.
constexpr int kMostTextSent = 1000;

const QString kActionPrefix = u"/me "_s;

// To the nearest whole number, a half to the even one.
int nearest(double value) {
    return static_cast<int>(std::lrint(value));
}

// What a list's frame and the margins of its rows take of its width.
double takenOfWidth(const ListBox& list) {
    const int margin = list.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &list) + 1;
    return 2.0 * (list.frameWidth() + margin);
}

// The font in its largest size, down from its own, of which a digit and a line fit. The last pixel
// of a line is its gap to the next.
QFont largestFont(QFont font, double width, int height) {
    const auto fits = [&] {
        const QFontMetricsF metrics(font);
        return metrics.horizontalAdvance(u'0') <= width && metrics.height() < height + 1.5;
    };
    for (int size = font.pixelSize(); size >= kSmallestFont; --size) {
        font.setPixelSize(size);
        if (fits()) {
            break;
        }
    }
    return font;
}

double takenOfHeight(const ListBox& list) {
    return 2.0 * list.frameWidth();
}

}  // namespace

FrmMessage::FrmMessage(Shell& shell, ClientLink& client)
    : Form(u"frmMessage"_s, u"Packwise Chats"_s, FormBorder::Sizable),
      txtSend(new QPlainTextEdit(this)),
      lstMessage(new ListBox(this)),
      lstNames(new ListBox(this)),
      shell_(shell),
      client_(client) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    nameControl(*txtSend, u"txtSend"_s, u"Chat line"_s);
    txtSend->setTabChangesFocus(true);
    txtSend->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtSend->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    txtSend->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    txtSend->document()->setDocumentMargin(3);
    txtSend->installEventFilter(this);
    connect(txtSend, &QPlainTextEdit::textChanged, this, &FrmMessage::removeLineBreaks);
    nameControl(*lstMessage, u"lstMessage"_s, u"Chat"_s);
    nameControl(*lstNames, u"lstNames"_s, u"Players"_s);
    for (ListBox* list : {lstMessage, lstNames}) {
        list->setShowOnly();
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    lstMessage->setTextElideMode(Qt::ElideNone);  // a line of full width is not too long
    chooseFonts();
    setMinimumSize(toPixels(kLeastWidth - kFrameWidth),
                   toPixels(kLeastHeight - kAboveAndFrame + kSendHeight));
    Form_Load();
}

// The smallest list shows 8 lines of 32 characters. The fonts are the largest that fit, and what is
// left of the width goes into and between the characters.
void FrmMessage::chooseFonts() {
    const double width = toPixels(kLeastWidth - kBesideMessages) - takenOfWidth(*lstMessage);
    const double height = toPixels(kLeastHeight - kAboveAndFrame) - takenOfHeight(*lstMessage);
    charWidth_ = width / kLeastChars;
    rowHeight_ = static_cast<int>(height) / kLeastLines;

    QFont lines = largestFont(fixedPitchFont(kLargestFont, true), charWidth_, rowHeight_);
    const double natural = QFontMetricsF(lines).horizontalAdvance(u'0');
    lines.setStretch(std::clamp(static_cast<int>(100 * charWidth_ / natural), 100, kMostStretch));
    lstMessage->setFont(lines);
    lstNames->setFont(largestFont(font(), rowHeight_, rowHeight_));
}

// Makes a character as wide as that, in device-independent pixels.
void FrmMessage::spaceLetters(double width) {
    QFont lines = lstMessage->font();
    lines.setLetterSpacing(QFont::AbsoluteSpacing, 0);
    const double advance = QFontMetricsF(lines).horizontalAdvance(u'0');
    lines.setLetterSpacing(QFont::AbsoluteSpacing, width - advance);
    lstMessage->setFont(lines);
}

void FrmMessage::Form_Load() {
    loaded_ = true;
    forgetLines();
    txtSend->setEnabled(true);
    int width = kLeastWidth;
    int height = kLeastHeight;
    readNumberPair(setting::messageSize.read(shell_.settings()), width, height);
    setSizeTwips(std::max(width, kLeastWidth), std::max(height, kLeastHeight));
    restorePlace(setting::messagePlace.read(shell_.settings()));
    fitIntoScreen();
    Form_Resize();
}

// The size may have been stored on a larger screen.
void FrmMessage::fitIntoScreen() {
    const QScreen* found = QGuiApplication::screenAt(pos());
    const QScreen* screen = found ? found : QGuiApplication::primaryScreen();
    if (screen) {
        const QSize frame(toPixels(kFrameWidth), toPixels(kAboveAndFrame - kSendHeight));
        resize(size().boundedTo(screen->availableSize() - frame));
    }
}

void FrmMessage::forgetLines() {
    lstMessage->clear();
    lstNames->fill(kSeats, u" "_s);
    for (int row = 0; row < kSeats; ++row) {
        lstNames->item(row)->setSizeHint(QSize(1, rowHeight_));
    }
}

void FrmMessage::Form_Resize() {
    if (isMinimized()) {
        return;
    }
    const int listWidth = widthTwips() - kBesideMessages;
    const int listHeight = heightTwips() - kAboveAndFrame;
    const int namesLeft = listWidth - kOverlap;
    placeControl(*txtSend, {0, 0, widthTwips() - kFrameWidth, kSendHeight});
    placeControl(*lstMessage, {0, kSendHeight, listWidth, listHeight});
    placeControl(*lstNames,
                 {namesLeft, kSendHeight, widthTwips() - kFrameWidth - namesLeft, listHeight});
    maxLines = nearest((lstMessage->height() - takenOfHeight(*lstMessage)) / rowHeight_);
    const double width = lstMessage->width() - takenOfWidth(*lstMessage);
    maxChars = nearest(width / charWidth_);
    spaceLetters(std::min(charWidth_, width / maxChars));
    while (lstMessage->count() > maxLines) {
        lstMessage->removeRow(0);
    }
    lstMessage->scrollToBottom();
}

void FrmMessage::resizeEvent(QResizeEvent* event) {
    Form::resizeEvent(event);
    Form_Resize();
}

void FrmMessage::Receive(std::string_view message) {
    showText(screenText(message));
}

void FrmMessage::showNote(const QString& note) {
    showText(u"* "_s + note);
}

void FrmMessage::showText(const QString& text) {
    if (!loaded_) {
        Form_Load();
    }
    show();
    // One byte for each character, which need not be in the code page.
    std::string shape(static_cast<std::size_t>(text.size()), 'x');
    std::transform(text.begin(), text.end(), shape.begin(),
                   [](QChar character) { return character == u' ' ? ' ' : 'x'; });
    const std::vector<std::string> lines = foldChat(shape, maxChars);
    qsizetype at = 0;
    auto left = std::ssize(lines);
    for (const std::string& line : lines) {
        const auto length = static_cast<qsizetype>(line.size());
        // Of a text that is longer than the list, the start would only be pushed out again.
        if (left <= std::max(maxLines, 1)) {
            addLine(text.mid(at, length));
        }
        at += length;
        --left;
    }
    lstMessage->scrollToBottom();
}

void FrmMessage::addLine(const QString& line) {
    if (lstMessage->count() >= maxLines) {
        lstMessage->removeRow(0);
    }
    lstMessage->addItem(line);
    lstMessage->item(lstMessage->count() - 1)->setSizeHint(QSize(1, rowHeight_));
}

bool FrmMessage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtSend && event->type() == QEvent::KeyRelease) {
        held_.isRepeated(*static_cast<QKeyEvent*>(event));
    }
    if (watched == txtSend && event->type() == QEvent::KeyPress) {
        const auto* press = static_cast<QKeyEvent*>(event);
        if (takeKey(*press)) {
            return true;
        }
        // A character that the wire cannot carry is not taken; whole input is left to the box.
        const bool refused = press->text().size() == 1 && !fitsCodePage(press->text());
        if (refused) {
            tellOutsideCodePage(*txtSend);
        }
        return refused;
    }
    return Form::eventFilter(watched, event);
}

void FrmMessage::keyPressEvent(QKeyEvent* event) {
    takeKey(*event);
    Form::keyPressEvent(event);
}

// True for Enter. One that is held down sends its line once.
bool FrmMessage::takeKey(const QKeyEvent& press) {
    const bool enter = press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter;
    const bool repeated = held_.isRepeated(press);
    if (!enter || !repeated) {
        Form_KeyPress(press.key());
    }
    return enter;
}

void FrmMessage::keyReleaseEvent(QKeyEvent* event) {
    held_.isRepeated(*event);
    Form::keyReleaseEvent(event);
}

void FrmMessage::Form_KeyPress(int key) {
    removeLineBreaks();
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && txtSend->isEnabled()) {
        send();
    }
}

void FrmMessage::removeLineBreaks() {
    const QString text = txtSend->toPlainText();
    QString line = text;
    line.remove(u'\r').remove(u'\n');
    if (line.size() != text.size()) {
        const QString before = text.left(txtSend->textCursor().position());
        const auto place = before.size() - before.count(u'\r') - before.count(u'\n');
        const QSignalBlocker still(txtSend);
        txtSend->setPlainText(line);
        QTextCursor cursor = txtSend->textCursor();
        cursor.setPosition(static_cast<int>(place));
        txtSend->setTextCursor(cursor);
    }
}

void FrmMessage::send() {
    QString text = txtSend->toPlainText();
    if (text.startsWith(kActionPrefix)) {
        text = u'*' + client_.clientName() + u' ' + text.mid(kActionPrefix.size());
    } else {
        text = u'<' + client_.clientName() + u"> " + text;
    }
    if (text.contains(QLatin1Char(kTerminator))) {
        shell_.boxes().error(this, u"Character ~ reserved"_s);
        if (shell_.ended()) {
            return;
        }
    } else {
        client_.send(to_server::Chat{{toBytes(text.left(kMostTextSent))}}.write());
    }
    txtSend->clear();
    txtSend->setFocus();
}

bool FrmMessage::queryUnload(UnloadMode) {
    if (shell_.isVisible(FormId::Client)) {
        return false;
    }
    // The next line finds a window as if it were new.
    loaded_ = false;
    forgetLines();
    txtSend->clear();
    return true;
}

}  // namespace packwise
