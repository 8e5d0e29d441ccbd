#include "sets/registry.h"

#include "engine/cardset.h"
#include "platform/codepage.h"
#include "platform/settings.h"
#include "platform/settingsstore.h"

#include <algorithm>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kSection = QString::fromUtf16(setting::kSetsSection);

}  // namespace

QStringList registeredSets() {
    QStringList names;
    for (const auto& [key, name] : SettingsStore().readAll(kSection)) {
        names.append(name);
    }
    return names;
}

bool registerSet(const QString& displayName, QString& error) {
    const QString rival = rivalOf(displayName);
    if (!rival.isEmpty()) {
        error = u"\"%1\" leads to the same files as the registered set \"%2\""_s.arg(displayName,
                                                                                     rival);
        return false;
    }
    if (registeredSets().contains(displayName)) {
        return true;
    }
    SettingsStore store;
    uint last = 0;
    for (const auto& [key, name] : store.readAll(kSection)) {
        last = std::max(last, key.toUInt());
    }
    store.write(kSection, u"%1"_s.arg(last + 1, 3, 10, QLatin1Char('0')), displayName);
    if (!registeredSets().contains(displayName)) {
        error = u"cannot write the settings, "_s + SettingsStore::userFile();
        return false;
    }
    return true;
}

bool unregisterSet(const QString& displayName, QString& error) {
    SettingsStore store;
    for (const auto& [key, name] : store.readAll(kSection)) {
        if (name == displayName) {
            store.remove(kSection, key);
        }
    }
    if (registeredSets().contains(displayName)) {
        error = u"cannot write the settings, "_s + SettingsStore::userFile();
        return false;
    }
    return true;
}

QString rivalOf(const QString& displayName) {
    const QString base = fileBase(displayName);
    for (const QString& name : registeredSets()) {
        if (name != displayName && fileBase(name).compare(base, Qt::CaseInsensitive) == 0) {
            return name;
        }
    }
    return {};
}

QString fileBase(const QString& displayName) {
    return fromBytes(setFileBase(toBytes(displayName)));
}

}  // namespace packwise::sets
