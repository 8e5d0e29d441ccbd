// Tells on the standard output what happens, with a progress bar under it on a terminal.
#pragma once

#include "platform/terminal.h"

#include <QElapsedTimer>
#include <QString>
#include <QTextStream>

namespace packwise {

class Narrator {
public:
    Narrator();
    ~Narrator();  // takes the bar away

    Narrator(const Narrator&) = delete;
    Narrator& operator=(const Narrator&) = delete;

    void tell(const QString& line);

    // Draws the bar anew; `done` of `all` is done.
    void progress(int done, int all);

    double seconds() const { return static_cast<double>(clock_.elapsed()) / 1000.0; }

private:
    void eraseBar();

    StandardStream output_{stdout};
    QTextStream out_{&output_};
    bool terminal_;
    QString bar_;
    QElapsedTimer clock_;
};

}  // namespace packwise
