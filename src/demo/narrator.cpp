#include "demo/narrator.h"

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kBarWidth = 40;

}  // namespace

Narrator::Narrator() : terminal_(writesToTerminal()) {
    clock_.start();
}

Narrator::~Narrator() {
    eraseBar();
}

void Narrator::tell(const QString& line) {
    const QString bar = bar_;
    eraseBar();
    out_ << line << u'\n' << bar;
    out_.flush();
    bar_ = bar;
}

void Narrator::progress(int done, int all) {
    if (!terminal_) {
        return;
    }
    eraseBar();
    const int filled = kBarWidth * done / all;
    bar_ = u"[%1%2] %3%"_s.arg(QString(filled, u'#'), QString(kBarWidth - filled, u'.'))
               .arg(100 * done / all);
    out_ << bar_;
    out_.flush();
}

void Narrator::eraseBar() {
    if (!bar_.isEmpty()) {
        out_ << u'\r' << QString(bar_.size(), u' ') << u'\r';
        out_.flush();
        bar_.clear();
    }
}

}  // namespace packwise
