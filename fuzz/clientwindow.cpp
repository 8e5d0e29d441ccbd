// The draft client's window under a fuzzer: any bytes of a server, in any pieces, and in between
// what its player does. Nothing goes over a network or onto a disk.
//
// The bytes are what the server says. A byte below 32 ends a piece, and with the byte behind it is
// a step: see Table::step().
#include "app/program.h"
#include "client/cardlist.h"
#include "client/colorbars.h"
#include "platform/display.h"
#include "protocol/messages.h"
#include "readers.h"
#include "widgets/look.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr unsigned char kFirstLetter = 32;
// Steps of one run that have the windows painted, which costs more than all others together.
constexpr int kMostTurns = 3;
// What one piece grows to by doubling, in bytes; two messages of the greatest length.
constexpr std::size_t kMostDoubled = 2 * kMostMessageLength;

void need(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", rule);
        std::abort();
    }
}

// Counts the messages that a server understands.
struct Listener {
    int heard = 0;
    void on(const auto&) { ++heard; }
};

// A connection whose other end is the fuzzer.
class Link : public Socket {
public:
    using Socket::Socket;

    void connectAtOnce() { setState(Connected); }
    void lose(State state) { setState(state); }
    void breakAtNextWrite() { breaks_ = true; }
    void arrive(std::string_view bytes) { arrived_ += bytes; }

    void sendData(std::string_view data) override {
        if (state() != Connected) {
            return;
        }
        need(data.ends_with(kTerminator) && std::ranges::count(data, kTerminator) == 1,
             "one message at a time");
        Listener listener;
        to_server::dispatch(data.substr(0, data.size() - 1), listener);
        need(listener.heard == 1, "a message that servers know");
        if (std::exchange(breaks_, false)) {
            setState(Failed);
        }
    }
    std::string getData(std::size_t most) override {
        std::string data = arrived_.substr(0, most);
        arrived_.erase(0, data.size());
        return data;
    }
    void close() override {
        arrived_.clear();
        setState(Closed);
    }
    bool hasArrived() const { return !arrived_.empty() && state() == Connected; }

private:
    std::string arrived_;
    bool breaks_ = false;
};

void press(QAbstractButton& button) {
    if (button.isVisible()) {
        button.click();
    }
}

// One program with its client at a table.
class Table {
public:
    explicit Table(std::string_view bytes) : bytes_(bytes) {
        client_.wskClient = link_;
        program_.boxes().setHook([this](const Box&) { return answer(); });
        for (QTimer* clock : client_.findChildren<QTimer*>()) {
            clock->setInterval(24 * 3600 * 1000);  // they tick in clock()
        }
        client_.clientName = u"Ann"_s;
        {
            // The card popup, which reads the folder at each card, is a step away.
            const QSignalBlocker unstored(client_.chkInfo);
            client_.chkInfo->setChecked(false);
        }
        client_.show();
        link_->connectAtOnce();
    }

    void play() {
        while (!bytes_.empty() && !program_.ended()) {
            hear();
            if (!program_.ended() && !bytes_.empty()) {
                const unsigned what = next();
                step(what, next());
            }
            if (!program_.ended()) {
                check();
            }
        }
    }

private:
    unsigned next() {
        const auto byte = bytes_.empty() ? 0U : static_cast<unsigned char>(bytes_.front());
        bytes_.remove_prefix(bytes_.empty() ? 0 : 1);
        return byte;
    }

    // The server says all up to the next step.
    void hear() {
        const auto isLetter = [](char byte) {
            return static_cast<unsigned char>(byte) >= kFirstLetter;
        };
        const auto end = std::ranges::find_if_not(bytes_, isLetter);
        const auto length = static_cast<std::size_t>(end - bytes_.begin());
        piece_ += bytes_.substr(0, length);
        bytes_.remove_prefix(length);
        if (link_->state() == Socket::Connected) {
            link_->arrive(std::exchange(piece_, {}));
        }
        piece_.clear();
        while (link_->hasArrived() && !program_.ended()) {
            client_.wskClient_DataArrival();
        }
    }

    // How the next box is answered; while it stands, the server may go on.
    bool answer() {
        const unsigned how = std::exchange(answer_, 0);
        if ((how & 2U) != 0) {
            hear();
        }
        return (how & 1U) != 0;
    }

    void step(unsigned what, unsigned which) {
        switch (what) {
            case 0:
                return;
            case 1:
                choose(*client_.lstPack, which);
                return;
            case 2:
                press(*client_.cmdDraft);
                return;
            case 3:
                takeCard(which);
                return;
            case 4:
                clock(which);
                return;
            case 5:
                press(*client_.cmdOK);
                return;
            case 6:
                press(which % 2 == 0 ? *client_.chkSort : *client_.chkInfo);
                return;
            case 7:
                chooseColor(which);
                return;
            case 8:
                choose(which % 2 == 0 ? *client_.lstPicked : *client_.lstPickedNS, which / 2);
                return;
            case 9:
                chat(which);
                return;
            case 10:
                copyAddress(which);
                return;
            case 11:
                buildDeck(which);
                return;
            case 12:
                closeWindow(which);
                return;
            case 13:
                answer_ = which;
                return;
            case 14:
                loseLink(which);
                return;
            case 15:
                takeTurn();
                return;
            case 16:
                piece_ += static_cast<char>(which);  // a byte that means nothing else
                return;
            case 17:
                doublePiece(which);
                return;
            default:
                pressKey(which);
        }
    }

    void choose(CardList& list, unsigned row) {
        if (list.isVisible() && list.count() > 0) {
            list.setCurrentRow(static_cast<int>(row) % list.count());
            Q_EMIT list.mouseDown(Qt::LeftButton);
        }
    }

    void takeCard(unsigned row) {
        choose(*client_.lstPack, row);
        if (client_.lstPack->isVisible()) {
            client_.lstPack_DblClick();
        }
    }

    void clock(unsigned which) {
        const std::pair<QTimer*, void (FrmClient::*)()> clocks[] = {
            {client_.tmrMisc, &FrmClient::tmrMisc_Timer},
            {client_.tmrClose, &FrmClient::tmrClose_Timer},
            {client_.tmrSilence, &FrmClient::tmrSilence_Timer},
            {client_.tmrRoch, &FrmClient::tmrRoch_Timer},
            {client_.tmrReview, &FrmClient::tmrReview_Timer}};
        const auto& [timer, tick] = clocks[which % std::size(clocks)];
        for (std::size_t left = 1 + which / std::size(clocks); left > 0; --left) {
            if (timer->isActive()) {
                (client_.*tick)();
            }
        }
    }

    void chooseColor(unsigned which) {
        if (client_.fraColors->isVisible()) {
            client_.fraColors_MouseDown(which % 2 == 0 ? Qt::LeftButton : Qt::RightButton,
                                        static_cast<int>(which) * 8, 60);
        }
    }

    void chat(unsigned which) {
        const QString lines[] = {u"Hello"_s, u"/me waves"_s, u"a ~ b"_s, u""_s,
                                 QString(1500, u'x')};
        FrmMessage* const window = program_.frmMessage.ifLoaded();
        if (window && window->isVisible() && window->txtSend->isEnabled()) {
            window->txtSend->setPlainText(lines[which % std::size(lines)]);
            window->Form_KeyPress(Qt::Key_Return);
        }
    }

    void copyAddress(unsigned row) {
        if (program_.frmSecurity.isVisible()) {
            program_.frmSecurity->lstNames->setCurrentRow(static_cast<int>(row % kSeats));
            program_.frmSecurity->lstIP_DblClick();
        }
    }

    void buildDeck(unsigned which) {
        if (!program_.frmDeckBuild.isVisible()) {
            return;
        }
        FrmDeckBuild& window = program_.frmDeckBuild();
        ListBox& list = which % 2 == 0 ? *window.lstSB : *window.lstDeck;
        const int row = static_cast<int>(which / 16);
        switch (which / 2 % 8) {
            case 0:
                list.setCurrentRow(row % std::max(list.count(), 1));
                return;
            case 1:
                list.selectAll();
                return;
            case 2:
                window.cmdAdd_Click();
                return;
            case 3:
                window.cmdTake_Click();
                return;
            case 4:
                press(*window.cmdLand.at(which / 16 % window.cmdLand.size()));
                return;
            case 5:
                press(*window.chkSnow);
                return;
            case 6:
                press(which % 2 == 0 ? *window.cmdTextSB : *window.cmdTextDeck);
                return;
            default:
                for (int land = 0; land < 102; ++land) {
                    press(*window.cmdLand[0]);
                }
        }
    }

    void closeWindow(unsigned which) {
        Form* const windows[] = {&client_, program_.frmMessage.ifLoaded(),
                                 program_.frmSecurity.ifLoaded(), program_.frmDeckBuild.ifLoaded(),
                                 program_.frmCard.ifLoaded()};
        Form* const window = windows[which % std::size(windows)];
        if (window && window->isVisible()) {
            window->closeByUser();
        }
    }

    void loseLink(unsigned which) {
        if (link_->state() != Socket::Connected) {
            return;
        }
        switch (which % 3) {
            case 0:
                link_->breakAtNextWrite();
                return;
            case 1:
                link_->lose(Socket::Closing);
                client_.wskClient_Close();
                return;
            default:
                link_->lose(Socket::Failed);
                client_.wskClient_Error();
        }
    }

    void takeTurn() {
        if (turns_ < kMostTurns) {
            ++turns_;
            QCoreApplication::processEvents();
        }
    }

    void doublePiece(unsigned times) {
        for (; times > 0 && piece_.size() <= kMostDoubled / 2; --times) {
            piece_ += std::string(piece_);
        }
    }

    void pressKey(unsigned which) {
        const Qt::Key keys[] = {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape, Qt::Key_Up,
                                Qt::Key_Down,   Qt::Key_Tab,   Qt::Key_Left,   Qt::Key_Right};
        Form* const windows[] = {&client_, program_.frmDeckBuild.ifLoaded(),
                                 program_.frmSecurity.ifLoaded(), program_.frmMessage.ifLoaded()};
        Form* const window = windows[which / 8 % std::size(windows)];
        if (!window || !window->isVisible()) {
            return;
        }
        QWidget* const focus = window->focusWidget();
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, keys[which % 8], Qt::NoModifier);
            QCoreApplication::sendEvent(focus ? focus : window, &event);
        }
    }

    void check() {
        need(client_.lstPack->count() <= kMostCardsInPack, "cards in a pack");
        need(client_.lstHistory->count() == 2, "lines of history");
        need(link_->state() != Socket::Closed || client_.shaLight->fillColor() == shade::red,
             "no light without a link");
        if (const FrmMessage* chat = program_.frmMessage.ifLoaded()) {
            need(chat->lstMessage->count() <= std::max(chat->maxLines, 1), "lines of chat");
            need(chat->lstNames->count() == kSeats, "names beside the chat");
        }
        const FrmDeckBuild* const deck = program_.frmDeckBuild.ifLoaded();
        const QStringList picked = client_.lstPickedNS->texts();
        // A card that is called like a heading of the sideboard is none there.
        if (deck && std::ranges::all_of(picked, &FrmDeckBuild::isCardLine)) {
            const QStringList side = deck->lstSB->texts();
            need(deck->lblSBCount->text().toInt() ==
                     (deck->wasShown() ? std::ranges::count_if(side, &FrmDeckBuild::isCardLine)
                                       : picked.size()),
                 "cards in the sideboard");
            need(deck->lblDeckCount->text().toInt() == deck->lstDeck->count(), "cards in the deck");
        }
    }

    std::string_view bytes_;
    std::string piece_;  // what the server says next
    unsigned answer_ = 0;
    int turns_ = 0;
    Program program_{u":/nowhere.ini"_s, 1};
    FrmClient& client_ = program_.frmClient();
    Link* link_ = new Link(&client_);
};

// The application, made at the first run and never ended: no display, and nothing said of settings
// that cannot be written.
void needApplication() {
    static int argc = 1;
    static char name[] = "fuzz_client";
    static char* argv[] = {name, nullptr};
    [[maybe_unused]] static const QApplication* const application = [] {
        hideWindows();
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        chooseEventLoop();
        auto* const made = new QApplication(argc, argv);
        applyLook(*made);
        return made;
    }();
}

void fuzzClient(std::string_view bytes) {
    needApplication();
    Table(bytes).play();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

}  // namespace

std::span<const sets::FuzzedReader> sets::fuzzedReaders() {
    static constexpr FuzzedReader kClient[] = {{"client", fuzzClient, 0}};
    return kClient;
}

}  // namespace packwise
