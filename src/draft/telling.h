// A record in words.
#pragma once

#include "record/replay.h"

#include <QString>
#include <QTextStream>

namespace packwise {

// The format, the time and the end; the sets; who sat where, the losses and the codes; what is
// not as it should be.
void tellDraft(const DraftRecord& record, QTextStream& out);

// "Round 2, pick 3: Ada has ..."
QString wordsFor(const Finding& finding);

// Each card that a table position took, of the pack number `pack` or of all when that is 0.
void tellPicks(const DraftRecord& record, int position, int pack, QTextStream& out);

// The packs of a round, or the Rochester pack of that number, with who took each card and when.
// False when the draft has none of that number.
bool tellPacks(const DraftRecord& record, int pack, QTextStream& out);

}  // namespace packwise
