// The sample sets that the program carries in itself.
#pragma once

#include <QString>
#include <QStringList>

namespace packwise {

// Builds their card files in that folder. Gives their display names; fewer than two when something
// could not be written.
QStringList buildSampleSets(const QString& folder);

}  // namespace packwise
