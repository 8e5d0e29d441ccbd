#include "companions/frmcard.h"

#include "engine/cardset.h"
#include "platform/codepage.h"
#include "widgets/look.h"
#include "widgets/twips.h"

#include <QDir>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kCardWidth = 3600;  // twips
constexpr int kCardHeight = 4350;

constexpr int kTextSize = 10;  // pixels
constexpr int kStrengthSize = 16;

const QString kTextRole = u"Rules text"_s;

const CardRecord kNoRecord{"END", ".", "", "", "", "", ""};

// The part of the screen that windows may use.
QRect workAreaNearestTo(const QPoint& point) {
    QRect nearest;
    int least = std::numeric_limits<int>::max();
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->geometry();
        const QPoint inside(std::clamp(point.x(), area.left(), area.right()),
                            std::clamp(point.y(), area.top(), area.bottom()));
        const int distance = (point - inside).manhattanLength();
        if (distance < least) {
            least = distance;
            nearest = screen->availableGeometry();
        }
    }
    return nearest;
}

QString rarityText(const std::string& mark) {
    if (mark == "-") {
        return u"Common"_s;
    }
    return mark == "=" ? u"Uncommon"_s : u"Rare"_s;
}

}  // namespace

FrmCard::FrmCard(Shell&)
    : Form(u"frmCard"_s, QString(), FormBorder::None),
      shaBorder(new Shape(ShapeKind::Rectangle, this)),
      lblName(new QLabel(this)),
      lblCost(new QLabel(this)),
      lblType(new QLabel(this)),
      lblText(new QLabel(this)),
      lblPT(new QLabel(this)),
      lblRarity(new QLabel(this)) {
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);  // though it is never the active window
    setAccessibleName(u"Card"_s);
    QPalette paper = palette();
    paper.setColor(QPalette::Window, Qt::white);
    setPalette(paper);
    layOut();
}

void FrmCard::layOut() {
    setClientSizeTwips(kCardWidth, kCardHeight);
    shaBorder->setObjectName(u"shaBorder"_s);
    shaBorder->setFilled(false);
    shaBorder->setBorderColor(QColor(192, 192, 192));
    shaBorder->setGeometry(rect());

    struct Look {
        QLabel* label;
        const char16_t* name;
        const char16_t* spoken;
        int pixelSize;  // 0: the application's
        bool bold;
        Qt::Alignment alignment;
    };
    const Look looks[] = {
        {lblName, u"lblName", u"Card name", 0, true, Qt::AlignLeft | Qt::AlignTop},
        {lblCost, u"lblCost", u"Cost", 0, false, Qt::AlignRight | Qt::AlignTop},
        {lblType, u"lblType", u"Type", 0, false, Qt::AlignLeft | Qt::AlignTop},
        {lblText, u"lblText", u"Rules text", kTextSize, false, Qt::AlignLeft | Qt::AlignTop},
        {lblPT, u"lblPT", u"Power and toughness", kStrengthSize, true,
         Qt::AlignRight | Qt::AlignBottom},
        {lblRarity, u"lblRarity", u"Rarity", kTextSize, false, Qt::AlignLeft | Qt::AlignBottom}};
    for (const Look& look : looks) {
        nameControl(*look.label, QString::fromUtf16(look.name));
        look.label->setAccessibleDescription(QString::fromUtf16(look.spoken));
        look.label->setTextFormat(Qt::PlainText);
        look.label->setAlignment(look.alignment);
        QFont font = look.label->font();
        font.setPixelSize(look.pixelSize > 0 ? look.pixelSize : font.pixelSize());
        font.setBold(look.bold);
        look.label->setFont(font);
    }
    for (QLabel* label : {lblName, lblType, lblText}) {
        label->setWordWrap(true);
    }
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(10, 10, 10, 8);
    grid->setVerticalSpacing(6);
    grid->addWidget(lblName, 0, 0);
    grid->addWidget(lblCost, 0, 1);
    grid->addWidget(lblType, 1, 0, 1, 2);
    grid->addWidget(lblText, 2, 0, 1, 2);
    grid->addWidget(lblRarity, 3, 0);
    grid->addWidget(lblPT, 3, 1);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(2, 1);
}

void FrmCard::Card(const QString& name, const QStringList& sets) {
    show();
    raise();
    lblName->setText(u"Scanning..."_s);
    tellMissing({});
    repaint();
    const std::filesystem::path folder = QDir::current().filesystemAbsolutePath();
    const std::string wanted = toBytes(name);
    QString before;
    QStringList missing;
    for (const QString& set : sets) {
        const bool again = set == before;
        before = set;
        if (again || set.isEmpty()) {
            continue;
        }
        // A file that cannot be opened does not hold the card.
        const auto file = setFilePath(folder, toBytes(set), kCardFileExtension);
        const std::optional<CardRecord> found = scanForCard(file, wanted);
        if (!found) {
            missing +=
                file.has_extension() ? QString::fromStdU16String(file.filename().u16string()) : set;
        }
        const CardRecord record = found.value_or(kNoRecord);
        showRecord(name, record);
        repaint();
        if (record.name == wanted) {
            return;
        }
    }
    tellMissing(missing);
}

void FrmCard::showRecord(const QString& name, const CardRecord& record) {
    const bool sound = record.rarity == "-" || record.rarity == "=" || record.rarity == "+" ||
                       record.rarity == ".";
    if (!sound) {
        lblName->setText(u"Error in datafile"_s);
    } else {
        lblName->setText(name);
        lblText->setText(fromBytes(record.text));
        lblType->setText(fromBytes(record.type));
        lblCost->setText(fromBytes(record.cost));
        lblPT->setText(fromBytes(record.pt));
        if (record.rarity != ".") {
            lblRarity->setText(rarityText(record.rarity));
        }
        if (record.name == "END") {
            lblText->setText(u"Card not found"_s);
        }
    }
}

void FrmCard::tellMissing(const QStringList& files) {
    const QString reason =
        files.isEmpty() ? QString()
                        : u"Not in the folder %1: %2"_s.arg(
                              QDir::toNativeSeparators(QDir::currentPath()), files.join(u", "_s));
    lblText->setToolTip(plainToolTip(reason));
    lblText->setAccessibleDescription(reason.isEmpty() ? kTextRole : reason);
}

void FrmCard::placeAt(int left, int top, const QRect& caller, const QRect& list) {
    const QRect area = workAreaNearestTo(caller.center());
    const int gap = toPixels(left) - caller.right();
    const QPoint beside[] = {{toPixels(left), toPixels(top)},
                             {caller.left() - gap - width(), toPixels(top)},
                             {caller.left(), caller.bottom() + 1},
                             {caller.left(), caller.top() - height()}};
    const auto covered = [](const QRect& place, const QRect& other) {
        const QRect both = place & other;
        return both.width() * both.height();
    };
    QPoint best;
    std::pair<int, int> least{std::numeric_limits<int>::max(), 0};
    for (const QPoint& corner : beside) {
        QRect place(corner, size());
        place.moveRight(std::min(place.right(), area.right()));
        place.moveBottom(std::min(place.bottom(), area.bottom()));
        place.moveLeft(std::max(place.left(), area.left()));
        place.moveTop(std::max(place.top(), area.top()));
        const std::pair covers{covered(place, list), covered(place, caller)};
        if (covers < least) {
            least = covers;
            best = place.topLeft();
        }
    }
    move(best);
}

// The labels let every press through to the window.
void FrmCard::mousePressEvent(QMouseEvent* event) {
    event->accept();
    Form_MouseDown();
}

void FrmCard::Form_MouseDown() {
    hide();
}

}  // namespace packwise
