// Everything the program remembers between runs: one row a value, with its section, its key and
// the value it has when it was never stored.
#pragma once

#include "platform/settingsstore.h"

#include <QString>

namespace packwise::setting {

struct Key {
    const char16_t* section;
    const char16_t* key;
    const char16_t* fallback;

    QString read(const SettingsStore& store) const {
        return store.read(QString::fromUtf16(section), QString::fromUtf16(key),
                          QString::fromUtf16(fallback));
    }
    // The value as a whole number; 0 for a text that is none.
    int readInt(const SettingsStore& store) const { return read(store).toInt(); }
    void write(SettingsStore& store, const QString& value) const { store.write({entry(value)}); }
    // For a write of several values in one go.
    SettingsStore::Entry entry(const QString& value) const {
        return {QString::fromUtf16(section), QString::fromUtf16(key), value};
    }
    SettingsStore::Entry entry(int value) const { return entry(QString::number(value)); }
    void write(SettingsStore& store, int value) const { write(store, QString::number(value)); }
};

inline constexpr Key serverPort{u"Server", u"Port", u"5252"};
inline constexpr Key runClient{u"Server", u"RunClient", u"1"};
inline constexpr Key draftType{u"Server", u"DraftType", u"B"};
inline constexpr Key timed{u"Server", u"Timed", u"1"};
inline constexpr Key time{u"Server", u"Time", u"25"};
inline constexpr Key fixSeats{u"Server", u"FixSeats", u"0"};
inline constexpr Key packCount{u"Server", u"PackCount", u"3"};
inline constexpr Key pack[] = {{u"Server", u"Pack1", u""}, {u"Server", u"Pack2", u""},
                               {u"Server", u"Pack3", u""}, {u"Server", u"Pack4", u""},
                               {u"Server", u"Pack5", u""}, {u"Server", u"Pack6", u""}};
inline constexpr Key silence{u"Server", u"Silence", u"0"};
inline constexpr Key halt{u"Server", u"Halt", u"0"};
inline constexpr Key reality{u"Server", u"Reality", u"0"};

inline constexpr Key clientName{u"Client", u"Name", u""};
inline constexpr Key clientPort{u"Client", u"Port", u"5252"};
inline constexpr Key showInfo{u"Client", u"ShowInfo", u"1"};
inline constexpr Key savePath{u"Client", u"SavePath", u""};  // "" stands for the current directory
inline constexpr Key savePicks{u"Client", u"SavePicks", u"0"};
inline constexpr Key saveExport{u"Client", u"SaveExport", u"0"};

inline constexpr Key serverPlace{u"Forms", u"Server", u"0 0"};
inline constexpr Key clientPlace{u"Forms", u"Client", u"0 0"};
inline constexpr Key messagePlace{u"Forms", u"Message", u"0 0"};
inline constexpr Key messageSize{u"Forms", u"MessageSize", u"5895 2385"};
inline constexpr Key securityPlace{u"Forms", u"Security", u"0 0"};

inline constexpr const char16_t* kSetsSection = u"Sets";

}  // namespace packwise::setting
