// Keeps the record of one draft in memory and puts it on the disk once the draft has ended, so that
// a host who plays along cannot look into it before. A slow disk holds nobody up.
#pragma once

#include "record/recorder.h"

#include <QObject>
#include <QString>

#include <functional>
#include <thread>

namespace packwise {

class RecordKeeper : public QObject {
    Q_OBJECT
public:
    // Takes a line for the host to read.
    using Tell = std::function<void(const QString& line)>;

    // Files go into `folder`, which is made where it is not there; with an empty one nothing is
    // kept. `tell` is called from the event loop and from finish().
    RecordKeeper(const QString& folder, Tell tell, QObject* parent = nullptr);
    ~RecordKeeper() override;

    // For the server's constructor; null when nothing is kept.
    DraftObserver* observer() { return folder_.isEmpty() ? nullptr : &recorder_; }
    Recorder& recorder() { return recorder_; }

    // Nobody goes on with the draft, if it has not ended.
    void giveUp() { recorder_.giveUp(); }
    // Gives up, and waits until all is on the disk. The destructor does so too, without a word.
    void finish();
    // Gives up, and is no more once all is on the disk.
    void retire();

private:
    void saveSoon();
    void save();
    void onWritten();
    void sayThatNot(const QString& reason);  // could be written
    void say(const QString& line);

    QString folder_;
    Tell tell_;
    Recorder recorder_;
    QString said_;            // the last line on what came of a writing
    bool isUnsaved_ = false;  // something has come since the last writing began
    bool isRetired_ = false;

    // One at a time. Of its own until it has been joined:
    std::thread writing_;
    QString path_;    // of the file, once it has one
    QString reason_;  // why it could not be written, or ""
};

}  // namespace packwise
