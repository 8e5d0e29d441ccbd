// The sample sets that the programs carry in themselves.
#pragma once

#include <QString>
#include <QStringList>

namespace packwise::sets {

// Builds their card files in that folder. Gives their display names; none when something could not
// be written.
QStringList buildSampleSets(const QString& folder);

}  // namespace packwise::sets
