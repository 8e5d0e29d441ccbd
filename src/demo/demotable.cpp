#include "demo/demotable.h"

#include "client/cardlist.h"
#include "platform/codepage.h"
#include "platform/freeport.h"
#include "platform/settings.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <algorithm>
#include <array>
#include <filesystem>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatience = 20'000;  // milliseconds
constexpr int kBeat = 5;           // milliseconds between two looks at what is awaited
constexpr int kPacks = 3;

const std::array kNames = {u"Ada"_s,  u"Bruno"_s, u"Clara"_s, u"Dario"_s,
                           u"Edda"_s, u"Felix"_s, u"Greta"_s, u"Hugo"_s};
static_assert(kNames.size() == kSeats);

// Where a player's windows stand on a display, in twips: a grid of clients, the chats below.
void arrange(SettingsStore& settings, int seat) {
    constexpr int kColumn = 5900;
    constexpr int kRow = 5600;
    const auto place = [](int top, int left) { return u"%1 %2"_s.arg(top).arg(left); };
    setting::clientPlace.write(settings, place(seat / 4 * kRow, seat % 4 * kColumn));
    setting::messagePlace.write(settings, place(2 * kRow + seat * 300, seat % 4 * kColumn));
    setting::securityPlace.write(settings, place(seat / 4 * kRow + 600, seat % 4 * kColumn + 600));
    setting::serverPlace.write(settings, place(2 * kRow, 2 * kColumn));
}

}  // namespace

DemoSeat::DemoSeat(const QString& playerName, const QString& settingsFile, std::uint64_t seed)
    : name(playerName), program(settingsFile, seed), picker(seed) {
    picker.setDraftLength(kPacks * static_cast<int>(kMostCardsInPack));
}

DemoTable::DemoTable(const DemoOptions& options, const QString& workFolder, const QStringList& sets,
                     const QString& deckFolder, const Pictures& pictures, Narrator& narrator)
    : options_(options),
      sets_(sets),
      deckFolder_(deckFolder),
      pictures_(pictures),
      narrator_(narrator),
      book_(std::filesystem::path(workFolder.toStdU16String())) {
    QObject::connect(&interrupt_, &Interrupt::interrupted, [this] { interrupted_ = true; });
    std::vector<std::string> names;
    for (const QString& set : sets_) {
        names.push_back(toBytes(set));
    }
    book_.setSets(names);
    for (const QString& name : kNames) {
        const auto number = static_cast<int>(seats_.size());
        seats_.push_back(std::make_unique<DemoSeat>(
            name, workFolder + u'/' + name + u".ini"_s,
            options_.seed * kSeats + static_cast<std::uint64_t>(number)));
        Program& program = seats_.back()->program;
        setting::savePath.write(program.settings(), deckFolder_);
        setting::messageSize.write(program.settings(), u"6600 3300"_s);
        if (options_.watched) {
            arrange(program.settings(), number);
        }
        program.boxes().setHook([this, name](const Box& box) {
            trouble_ = name + u": "_s + box.text;
            return false;
        });
    }
}

DemoTable::~DemoTable() {
    for (const auto& seat : seats_) {
        seat->program.end();
    }
}

void DemoTable::play() {
    join();
    say(1, u"hello from Bruno's desk"_s);
    say(4, u"good luck, all"_s);
    draft();
    say(7, u"good game"_s);
    waitFor(u"the chat reaches everybody"_s, [this] {
        return forAll([](DemoSeat& seat) {
            return seat.program.frmMessage->lstMessage->texts().contains(u"<Hugo> good game"_s);
        });
    });
    takePicture(shown().program.frmMessage(), u"chat"_s);
    buildDecks();
    checkCodes();
    takePicture(host().program.frmSecurity(), u"information"_s);
}

void DemoTable::linger() {
    if (options_.watched) {
        narrator_.tell(u"The windows stay for five seconds; Ctrl+C ends them now."_s);
        pause(5000);
    }
}

bool DemoTable::forAll(const std::function<bool(DemoSeat&)>& condition) const {
    return std::all_of(seats_.begin(), seats_.end(),
                       [&](const auto& seat) { return condition(*seat); });
}

void DemoTable::waitFor(const QString& what, const std::function<bool()>& condition) {
    QElapsedTimer clock;
    clock.start();
    QTimer beat;  // wakes the loop when nothing else happens
    beat.start(kBeat);
    while (!condition()) {
        checkAlive();
        if (clock.elapsed() > kPatience) {
            throw DemoFailure(u"waited in vain: "_s + what);
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    checkAlive();
}

void DemoTable::checkAlive() const {
    if (!trouble_.isEmpty()) {
        throw DemoFailure(trouble_);
    }
    if (interrupted_) {
        throw DemoFailure(u"broken off"_s);
    }
    for (const auto& seat : seats_) {
        if (seat->program.ended()) {
            throw DemoFailure(seat->name + u"'s program has ended"_s);
        }
    }
}

void DemoTable::pause(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    waitFor(u"a pause"_s, [&] { return clock.elapsed() >= milliseconds; });
}

void DemoTable::join() {
    const quint16 port = freePort();
    if (port == 0) {
        throw DemoFailure(u"no port is free"_s);
    }
    openPort(port);
    narrator_.tell(u"%1 opens port %2 and plays along."_s.arg(host().name).arg(port));
    for (const auto& seat : seats_) {
        if (seat.get() != &host()) {
            connectSeat(*seat, port);
        }
        const auto row = static_cast<int>(&seat - seats_.data());
        waitFor(seat->name + u" has a seat"_s,
                [&] { return console().lstNames->text(row) == seat->name; });
        narrator_.tell(u"%1 has seat %2."_s.arg(seat->name).arg(row + 1));
    }
    takePicture(console(), u"console"_s);
}

void DemoTable::openPort(quint16 port) {
    Program& program = host().program;
    for (int i = 0; i < sets_.size(); ++i) {
        program.settings().write(QString::fromUtf16(setting::kSetsSection), QString::number(i + 1),
                                 sets_.at(i));
    }
    program.start();
    takePicture(program.frmMain(), u"start"_s);
    program.frmMain->cmdServer->click();
    FrmServer& server = console();
    (options_.rochester ? server.optRochester : server.optBooster)->click();
    for (int pack = 0; pack < kPacks; ++pack) {
        server.cboPack.at(static_cast<std::size_t>(pack))
            ->setCurrentText(sets_.at(pack % sets_.size()));
    }
    server.txtPort->setText(QString::number(port));
    server.txtName->setText(host().name);
    server.cmdOpenPort->click();
}

void DemoTable::connectSeat(DemoSeat& seat, quint16 port) {
    seat.program.start();
    seat.program.frmMain->cmdClient->click();
    FrmConnect& dialog = seat.program.frmConnect();
    dialog.txtName->setText(seat.name);
    dialog.txtIP->setText(u"127.0.0.1"_s);
    dialog.txtPort->setText(QString::number(port));
    dialog.cmdConnect->click();
}

void DemoTable::say(std::size_t seat, const QString& line) {
    FrmMessage& chat = seats_[seat]->program.frmMessage();
    chat.txtSend->setPlainText(line);
    chat.Form_KeyPress(Qt::Key_Return);
    narrator_.tell(u"%1 says: %2"_s.arg(seats_[seat]->name, line));
}

void DemoTable::takePicture(QWidget& window, const QString& name) {
    QCoreApplication::processEvents();
    if (!pictures_.take(window, name)) {
        throw DemoFailure(u"cannot write %1/%2.png"_s.arg(pictures_.folder(), name));
    }
}

}  // namespace packwise
