// The display names that Packwise offers: the values of the section Sets of the user's settings.
#pragma once

#include <QString>
#include <QStringList>

namespace packwise::sets {

// In the order in which Packwise offers them.
QStringList registeredSets();

// Adds a name behind the others, unless it is there. False with a reason when another name leads
// to the same files, or when the settings cannot be written.
bool registerSet(const QString& displayName, QString& error);

// Takes a name off the list. False with a reason when the settings cannot be written.
bool unregisterSet(const QString& displayName, QString& error);

// The registered name, other than `displayName`, that leads to the same files; empty when none.
QString rivalOf(const QString& displayName);

// The file base of a display name: without blanks, cut to eight characters.
QString fileBase(const QString& displayName);

}  // namespace packwise::sets
