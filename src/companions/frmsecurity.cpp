#include "companions/frmsecurity.h"

#include "platform/settings.h"
#include "protocol/framing.h"
#include "widgets/look.h"
#include "widgets/twips.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// Twips.
constexpr int kMargin = 120;
constexpr int kLabelHeight = 240;
constexpr int kListTop = kMargin + kLabelHeight + 30;

struct Column {
    const char16_t* label;
    const char16_t* caption;
    const char16_t* list;
    int width;
};

constexpr Column kNames{u"lblName", u"Name", u"lstNames", 2400};
constexpr Column kAddresses{u"lblIP", u"IP Address", u"lstIP", 1920};
constexpr Column kCodes{u"lblCode", u"Security Code", u"lstCode", 1680};

}  // namespace

FrmSecurity::FrmSecurity(Shell& shell, ClientLink& client)
    : Form(u"frmSecurity"_s, u"Draft Information"_s, FormBorder::Fixed),
      lblName(new QLabel(this)),
      lstNames(new ListBox(this)),
      lblIP(new QLabel(this)),
      lstIP(new ListBox(this)),
      lblCode(new QLabel(this)),
      lstCode(new ListBox(this)),
      shell_(shell),
      client_(client) {
    placeControls();
    for (ListBox* list : {lstNames, lstIP, lstCode}) {
        keepTogether(*list);
    }
    lstIP->setToolTip(u"Double-click to copy to clipboard"_s);
    connect(lstIP, &QListWidget::itemDoubleClicked, this, &FrmSecurity::lstIP_DblClick);
    connect(lstIP, &ListBox::enterPressed, this, &FrmSecurity::lstIP_DblClick);
    restorePlace(setting::securityPlace.read(shell_.settings()));
}

void FrmSecurity::placeControls() {
    int left = kMargin;
    int bottom = 0;
    const auto place = [&](QLabel* label, ListBox* list, const Column& column) {
        label->setText(QString::fromUtf16(column.caption));
        label->setBuddy(list);
        placeControl(*label, {left, kMargin, column.width, kLabelHeight},
                     QString::fromUtf16(column.label));
        list->fill(kSeats, u" "_s);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        const int height = toTwips(list->heightForRows(kSeats));
        placeControl(*list, {left, kListTop, column.width, height}, QString::fromUtf16(column.list),
                     QString::fromUtf16(column.caption));
        left += column.width + kMargin / 2;
        bottom = kListTop + height;
    };
    place(lblName, lstNames, kNames);
    place(lblIP, lstIP, kAddresses);
    place(lblCode, lstCode, kCodes);
    setClientSizeTwips(left + kMargin / 2, bottom + kMargin);
}

void FrmSecurity::keepTogether(ListBox& list) {
    const auto copy = [this, &list] { selectRowOf(list); };
    connect(&list, &QListWidget::currentRowChanged, this, copy);
    connect(&list, &ListBox::mouseDown, this, copy);
    connect(&list, &ListBox::mouseDragged, this, copy);
}

void FrmSecurity::selectRowOf(const ListBox& list) {
    for (ListBox* other : {lstNames, lstIP, lstCode}) {
        other->setCurrentRow(list.currentRow());
    }
}

void FrmSecurity::lstIP_DblClick() {
    if (lstIP->currentRow() >= 0) {
        QClipboard* clipboard = QGuiApplication::clipboard();
        clipboard->clear();
        clipboard->setText(lstIP->text(lstIP->currentRow()));
    }
}

bool FrmSecurity::queryUnload(UnloadMode mode) {
    if (mode != UnloadMode::User) {
        return true;
    }
    if (shell_.isVisible(FormId::DeckBuild) || shell_.isVisible(FormId::Server)) {
        return false;
    }
    client_.closeConnection();
    shell_.saveForms();
    shell_.end();
    return true;
}

}  // namespace packwise
